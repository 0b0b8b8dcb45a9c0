#pragma once

#include "platform/controls.h"
#include "wizard/selection.h"

namespace orva {

/// What the transaction wizard has on its selection page besides the controls of every wizard.
struct ImportControls {
  OptionButton optAsset{"optAsset", "Acquired Assets"};
  OptionButton optClosing{"optClosing", "Assets with closing balances"};
  OptionButton optDep{"optDep", "Depreciation"};
  OptionButton optDepChild{"optDepChild", "Dep Child"};
  OptionButton optDepChildFx{"optDepChildFx", "Dep Child (Foreign Ex)"};
  OptionButton OptCostBrkup{"OptCostBrkup", "Cost BreakUp"};
  OptionButton optUDF{"optUDF", "UDF"};
  OptionButton optSaleEntries{"optSaleEntries", "Sale Entries"};
  OptionButton optAMCDet{"optAMCDet", "AMC Details"};
  OptionButton optInsurDet{"optInsurDet", "Insurance Details"};
  OptionButton optChangeOfAssetCat{"optChangeOfAssetCat", "Change of Asset Category"};
  /// The asset modes.
  Frame Frame1{"Frame1"};
  OptionButton optAssetId{"optAssetId", "Add Assets "};
  OptionButton optUpdAssetId{"optUpdAssetId", "Modify Asset Details Based on Asset ID"};
  OptionButton optPhyId{"optPhyId", "Modify Asset Details Based on Physical Id"};
  Label lblOverwrite{"lblOverwrite",
                     "This will overwrite the selected Asset details which is already present in your database. "};
  CheckBox chkAutoCalcDepRate{"chkAutoCalcDepRate", "Auto Calculate Dep. rate for Companies ACT"};
  CheckBox ChkBackdate{"ChkBackdate", "Import Backdated Entries"};
  CheckBox ChkLeaseHold{"ChkLeaseHold", "Import LeaseHold Assets"};
  CheckBox chkMultAssetId{"chkMultAssetId", "Create Multiple AssetID for QTY>1"};
  CheckBox chkShiftedIn{"chkShiftedIn", "Import ShiftedIn Assets"};
  Button cmdCalcLeaseDate{"cmdCalcLeaseDate", "Calc Lease End Date"};
  Label lblNote{"lblNote",
                "MFOE fields will be updated with default values if it is blank. "
                "Defaults for Qty - 1, Dept, Vendor, User, CostCentre - 'NONE'"};
  Button cmdUpdateLEOD{"cmdUpdateLEOD", "Update LEOD"};
  Button cmdUpdateRateMethod{"cmdUpdateRateMethod", "Update Rate And Method"};

  OptionButton& kindOption(ImportKindId kind);
  OptionButton& modeOption(AssetMode mode);
};

}  // namespace orva
