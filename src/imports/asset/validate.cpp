#include "imports/asset/validate.h"

#include "imports/asset/rules/asset_rules.h"

namespace orva {

void validateAssets(ImportRun& run) {
  AssetRow row(run);
  const std::vector<AssetRule> rules = assetRules();
  walkRows(row, std::span<const AssetRule>(rules), WalkPolicy::kAllRules, endAssetRow);
}

}  // namespace orva
