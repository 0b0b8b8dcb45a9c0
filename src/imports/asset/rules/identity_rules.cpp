#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

using namespace checks;

bool hasNoAsset(AssetRow& row, const Cell&, const AssetRule&) { return !row.existing(); }

bool isDoubledAsset(AssetRow& row, const Cell&, const AssetRule&) {
  return row.existing() && row.existing()->isDoubled;
}

constexpr Query kClosedAccountingYear = {
    "select accyear from accyear where accyear='{asset accounting year}' and closed={true}"};
constexpr Query kClosedFinancialYear = {
    "select finyear from finyear where finyear='{asset financial year}' and closed={true}"};
constexpr Query kSold = {"Select * from assetout where assetid ='{asset id}'"};
constexpr Query kTransferredOut = {
    .access = "Select * from shift where assetid ='{asset id}' and tfrout = true and  sameloc = false",
    .sqlServer = "Select * from shift where assetid ='{asset id}' and tfrout = 1 and  sameloc = 0"};

// A row whose asset is not known ends its identity rules there: every later one asks about that asset.
constexpr AssetRule kRules[] = {
    {.column = "ASSETID",
     .fails = isBlank,
     .text = "AssetID should not be blank",
     .mode = AppliesIn::kModifyByAssetId,
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "ASSETID",
     .fails = isTooLong,
     .text = "{value} exceeds the maximum length {size}",
     .mode = AppliesIn::kModifyByAssetId},
    {.column = "ASSETID",
     .fails = hasNoAsset,
     .text = "Asset Id : {value} does not exist in Acquistion of Assets in ORVA.",
     .mode = AppliesIn::kModifyByAssetId,
     .flavour = Flavour::kAcquisition,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "ASSETID",
     .fails = hasNoAsset,
     .text = "Asset Id : {value} does not exist in Closing balance in ORVA.",
     .mode = AppliesIn::kModifyByAssetId,
     .flavour = Flavour::kClosing,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "ASSETID",
     .fails = found,
     .text = "Asset Id : {value}'s accounting year : {asset accounting year} is closed. Can't import",
     .lookup = kClosedAccountingYear,
     .mode = AppliesIn::kModifyByAssetId},
    {.column = "ASSETID",
     .fails = found,
     .text = "Asset Id : {value}'s Financial year : {asset financial year} is closed. Can't import",
     .lookup = kClosedFinancialYear,
     .mode = AppliesIn::kModifyByAssetId},
    {.column = "ASSETID",
     .fails = found,
     .text = "Asset Id : {value} is sold / Discarded. Can't import",
     .lookup = kSold,
     .mode = AppliesIn::kModifyByAssetId},
    {.column = "ASSETID",
     .fails = found,
     .text = "Asset Id : {value} is Transferred out. Can't import",
     .lookup = kTransferredOut,
     .mode = AppliesIn::kModifyByAssetId},

    {.column = "PHYID",
     .fails = isBlank,
     .text = "Physical id should not be blank",
     .mode = AppliesIn::kModifyByPhysicalId,
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "PHYID",
     .fails = isTooLong,
     .text = "Phy id : {value} exceeds its maximum length {size}",
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = "PHYID",
     .fails = isDoubledAsset,
     .text = "Physical id : {value} is duplicated more than once in ORVA.",
     .mode = AppliesIn::kModifyByPhysicalId,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "PHYID",
     .fails = hasNoAsset,
     .text = "Physical id : {value} does not exist Closing balance in ORVA.",
     .mode = AppliesIn::kModifyByPhysicalId,
     .flavour = Flavour::kClosing,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "PHYID",
     .fails = hasNoAsset,
     .text = "Physical id : {value} does not exist Acquistion of Assets in ORVA.",
     .mode = AppliesIn::kModifyByPhysicalId,
     .flavour = Flavour::kAcquisition,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "PHYID",
     .fails = found,
     .text = "Physical Id : {value}'s accounting year : {asset accounting year} is closed. Can't import",
     .lookup = kClosedAccountingYear,
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = "PHYID",
     .fails = found,
     .text = "Physical Id : {value}'s Financial year : {asset financial year} is closed. Can't import",
     .lookup = kClosedFinancialYear,
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = "PHYID",
     .fails = found,
     .text = "Physical Id : {value} is sold / Discarded. Can't import",
     .lookup = kSold,
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = "PHYID",
     .fails = found,
     .text = "Physical Id : {value} is Transferred out. Can't import",
     .lookup = kTransferredOut,
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = "PHYID",
     .fails = isTooLong,
     .text = "Phy id : {value} exceeds its maximum length {size}",
     .mode = AppliesIn::kNotByPhysicalId},
    {.column = "PHYID",
     .fails = isBlank,
     .text = "Phy id : {value} can not be empty",
     .mode = AppliesIn::kNotByPhysicalId,
     .namesBlank = true},
};

}  // namespace

std::span<const AssetRule> identityRules() { return kRules; }

}  // namespace orva
