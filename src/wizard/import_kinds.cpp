#include "wizard/import_kinds.h"

#include <algorithm>

namespace orva {
namespace {

constexpr ImportKindNames kNames[] = {
    {ImportKindId::kAcquired, "optAsset", "Acquired Assets", "acquired"},
    {ImportKindId::kClosing, "optClosing", "Assets with closing balances", "closing"},
    {ImportKindId::kDepreciation, "optDep", "Depreciation", ""},
    {ImportKindId::kDepChild, "optDepChild", "Dep Child", "dep-child"},
    {ImportKindId::kDepChildFx, "optDepChildFx", "Dep Child (Foreign Ex)", "dep-child-fx"},
    {ImportKindId::kCostBreakup, "OptCostBrkup", "Cost BreakUp", "cost-breakup"},
    {ImportKindId::kUdf, "optUDF", "UDF", "udf"},
    {ImportKindId::kSale, "optSaleEntries", "Sale Entries", "sale"},
    {ImportKindId::kAmc, "optAMCDet", "AMC Details", "amc"},
    {ImportKindId::kInsurance, "optInsurDet", "Insurance Details", "insurance"},
    {ImportKindId::kChangeCategory, "optChangeOfAssetCat", "Change of Asset Category", "change-category"},
};

constexpr bool standInOrderOfTheirNumbers() {
  for (std::size_t index = 0; index < std::size(kNames); ++index) {
    if (kNames[index].id != static_cast<ImportKindId>(index)) return false;
  }
  return std::size(kNames) == static_cast<std::size_t>(ImportKindId::kChangeCategory) + 1;
}
static_assert(standInOrderOfTheirNumbers());

}  // namespace

std::span<const ImportKindNames> importKindNames() { return kNames; }

const ImportKindNames& namesOf(ImportKindId kind) { return kNames[static_cast<std::size_t>(kind)]; }

std::optional<ImportKindId> importKindByBatchName(std::string_view name) {
  for (const ImportKindNames& names : kNames) {
    if (!name.empty() && names.batchName == name) return names.id;
  }
  return std::nullopt;
}

const ImportProcedures* findProcedures(const ImportRegistry& registry, ImportKindId kind) {
  const auto found =
      std::find_if(registry.begin(), registry.end(), [kind](const auto& entry) { return entry.kind == kind; });
  return found == registry.end() ? nullptr : &*found;
}

}  // namespace orva
