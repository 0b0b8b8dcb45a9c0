#pragma once

#include <vector>

#include "imports/transactions/child_row.h"

namespace orva {

using ChildRule = Rule<ChildRow>;

/// The checks of a child row in the order in which they run within their columns.
std::vector<ChildRule> childRules();

}  // namespace orva
