#pragma once

#include <string>
#include <vector>

#include "masters/master_kinds.h"

namespace orva {

/// Which master is imported.
struct MasterChoice {
  MasterKindId kind = MasterKindId::kDepartment;
  /// Key of the miscellaneous master ("M1", ...); empty for the others.
  std::string master = {};
};

/// The miscellaneous masters of a company in the order of their numbers. Throws `ProviderError`.
std::vector<std::string> miscellaneousMasters(Connection& connection);

/// Checks every row of the results grid and records findings. Throws `ProviderError`.
void validateMasters(ImportRun& run, const MasterChoice& choice);

/// Adds one record a row. Throws nothing for a failed row: the result tells it.
PostResult postMasters(ImportRun& run, const MasterChoice& choice);

}  // namespace orva
