#include "startup/schema/upgrade_table.h"

#include "startup/schema/upgrade_steps.h"

namespace orva {

std::vector<UpgradeRow> upgradeRows() {
  std::vector<UpgradeRow> rows;
  for (const auto part :
       {upgradeSteps1To3(), upgradeSteps4To6(), upgradeSteps7To8(), upgradeSteps9To11(), upgradeSteps12To13()}) {
    rows.insert(rows.end(), part.begin(), part.end());
  }
  return rows;
}

}  // namespace orva
