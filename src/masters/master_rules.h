#pragma once

#include <span>

#include "masters/master_row.h"

namespace orva {

inline constexpr std::string_view kExceedsMaximumLength = " exceeds its maximum length ";

/// The checks of each master in the order in which they run.
std::span<const MasterRule> departmentRules();
std::span<const MasterRule> costCentreRules();
std::span<const MasterRule> locationMasterRules();
std::span<const MasterRule> userRules();
std::span<const MasterRule> vendorRules();
std::span<const MasterRule> miscellaneousRules();

/// A permanent account number: five capital letters, the fourth of them one of "ABCFGHJLPT", four digits, a letter.
bool ValidPanPattern(std::string_view pan);

}  // namespace orva
