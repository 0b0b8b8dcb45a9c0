#pragma once

#include "wizard/import_kinds.h"

namespace orva {

/// Components of the cost of purchased assets, one `CostBreakup` row each. The components of an asset must
/// add up to its cost.
ImportProcedures costBreakupProcedures();

}  // namespace orva
