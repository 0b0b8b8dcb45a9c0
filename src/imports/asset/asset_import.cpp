#include "imports/asset/asset_import.h"

#include "imports/asset/asset_columns.h"
#include "imports/asset/control_plan.h"
#include "imports/asset/posting/closing_guard.h"
#include "imports/asset/posting/post.h"
#include "imports/asset/validate.h"

namespace orva {

ImportProcedures acquiredAssetProcedures() {
  return {.kind = ImportKindId::kAcquired,
          .ownColumns = kAssetOwnColumns,
          .validate = validateAssets,
          .post = postAssets,
          .controlPlan = &assetControlPlan()};
}

ImportProcedures closingBalanceProcedures() {
  ImportProcedures procedures = acquiredAssetProcedures();
  procedures.kind = ImportKindId::kClosing;
  procedures.obstacle = closingBalanceObstacle;
  return procedures;
}

}  // namespace orva
