#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "masters/master_row.h"
#include "wizard/catalogue/field_row.h"

namespace orva {

/// The masters that can be imported.
enum class MasterKindId { kDepartment, kCostCentre, kLocation, kUser, kVendor, kMiscellaneous };

/// What one master is called, reads, checks and writes.
struct MasterKind {
  MasterKindId id;
  std::string_view control;
  std::string_view caption;
  std::string_view batchName;
  std::span<const MasterRule> rules;
  PostingPlan<MasterRow> plan;
};

/// All masters in the order of the selection page.
std::span<const MasterKind> masterKinds();
const MasterKind& masterKind(MasterKindId id);
std::optional<MasterKindId> masterKindByBatchName(std::string_view name);

/// The field catalogue of a master; every line is ticked.
Catalogue masterCatalogue(MasterKindId id);

/// The Excel names of the catalogue that are read and that the company has no place for.
std::vector<std::string> namesNotKept(MasterKindId id);

}  // namespace orva
