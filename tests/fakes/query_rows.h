#pragma once

#include <string>

#include "platform/database.h"

namespace orva {

/// Rows of a query: values joined by "|", rows by "/".
std::string rowsOf(Connection& connection, const std::string& sql);

}  // namespace orva
