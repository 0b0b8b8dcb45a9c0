#pragma once

#include "wizard/import_kinds.h"

namespace orva {

/// Import of acquired assets, and of assets taken over with their closing balances, in all modes.
ImportProcedures acquiredAssetProcedures();
ImportProcedures closingBalanceProcedures();

}  // namespace orva
