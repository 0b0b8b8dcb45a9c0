#pragma once

namespace orva {

/// What can be imported by the transaction wizard.
enum class ImportKindId {
  kAcquired,
  kClosing,
  kDepreciation,
  kDepChild,
  kDepChildFx,
  kCostBreakup,
  kUdf,
  kSale,
  kAmc,
  kInsurance,
  kChangeCategory
};

enum class AssetMode { kAdd, kModifyByAssetId, kModifyByPhysicalId };

/// The user's choice on the selection page, as the catalogue was built for it.
/// Validators and posters read it and never change it.
struct Selection {
  ImportKindId kind = ImportKindId::kAcquired;
  AssetMode mode = AssetMode::kAdd;
  bool autoCalcDepRate = false;
  bool backdated = false;
  bool leaseHold = false;
  bool multipleAssetIds = false;
  bool shiftedIn = false;

  bool isAcquisition() const { return kind == ImportKindId::kAcquired; }
  bool isClosing() const { return kind == ImportKindId::kClosing; }
  bool isAdd() const { return mode == AssetMode::kAdd; }
  bool isModify() const { return mode != AssetMode::kAdd; }
};

}  // namespace orva
