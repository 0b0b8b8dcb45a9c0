#include "imports/asset/asset_import.h"

#include "imports/asset/asset_columns.h"
#include "imports/asset/posting/post.h"
#include "imports/asset/validate.h"

namespace orva {

ImportProcedures acquiredAssetProcedures() {
  return {
      .kind = ImportKindId::kAcquired, .ownColumns = kAssetOwnColumns, .validate = validateAssets, .post = postAssets};
}

ImportProcedures closingBalanceProcedures() {
  ImportProcedures procedures = acquiredAssetProcedures();
  procedures.kind = ImportKindId::kClosing;
  return procedures;
}

}  // namespace orva
