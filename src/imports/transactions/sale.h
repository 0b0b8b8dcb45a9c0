#pragma once

#include "wizard/import_kinds.h"

namespace orva {

/// Sales and discards of existing assets, one `AssetOut` row each.
ImportProcedures saleProcedures();

}  // namespace orva
