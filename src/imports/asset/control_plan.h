#pragma once

#include "wizard/control_totals.h"

namespace orva {

/// What an accountant ties to the ledger: number, cost and accumulated depreciation of the assets.
const ControlPlan& assetControlPlan();

}  // namespace orva
