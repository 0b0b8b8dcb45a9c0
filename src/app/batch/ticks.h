#pragma once

#include <span>
#include <string_view>

#include "wizard/frmImport.h"
#include "wizard/selection.h"

namespace orva {

/// A check box of the selection page as an option of the command line.
struct Tick {
  std::string_view option;
  bool Selection::*chosen;
  CheckBox ImportControls::*box;
  void (frmImport::*click)();
};

inline constexpr Tick kTicks[] = {
    {"--auto-calc-dep-rate", &Selection::autoCalcDepRate, &ImportControls::chkAutoCalcDepRate,
     &frmImport::chkAutoCalcDepRate_Click},
    {"--backdated", &Selection::backdated, &ImportControls::ChkBackdate, &frmImport::ChkBackdate_Click},
    {"--lease-hold", &Selection::leaseHold, &ImportControls::ChkLeaseHold, &frmImport::ChkLeaseHold_Click},
    {"--multiple-asset-ids", &Selection::multipleAssetIds, &ImportControls::chkMultAssetId,
     &frmImport::chkMultAssetId_Click},
    {"--shifted-in", &Selection::shiftedIn, &ImportControls::chkShiftedIn, &frmImport::chkShiftedIn_Click},
};

}  // namespace orva
