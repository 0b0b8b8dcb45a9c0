#pragma once

#include <span>

#include "imports/transactions/child_row.h"

namespace orva {

using ChildRule = Rule<ChildRow>;

/// The checks of a child row in the order in which they run.
std::span<const ChildRule> childRules();

}  // namespace orva
