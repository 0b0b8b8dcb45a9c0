#pragma once

#include <string>

#include "platform/embedded/sqlite_handle.h"

namespace orva::embedded {

/// Opens an SQLite database with the collations and functions of the engine. A
/// quoted name that names nothing is an error there, not a text. Throws kUnspecified.
DatabaseHandle openEngine(const std::string& file, int flags);

}  // namespace orva::embedded
