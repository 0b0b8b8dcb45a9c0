#include "imports/asset/rules/asset_rules.h"

namespace orva {

std::vector<AssetRule> assetRules() {
  std::vector<AssetRule> rules;
  for (const auto table : {identityRules(), documentRules(), calendarRules(), categoryRules(), masterRules(),
                           locationRules(), amountRules(), overrideRules(), otherRules()}) {
    rules.insert(rules.end(), table.begin(), table.end());
  }
  return rules;
}

}  // namespace orva
