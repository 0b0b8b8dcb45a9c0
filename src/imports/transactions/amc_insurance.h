#pragma once

#include "wizard/import_kinds.h"

namespace orva {

/// Annual maintenance contracts of existing assets, one `AMC` row each.
ImportProcedures amcProcedures();
/// Insurance policies of existing assets, one `Insurance` row each.
ImportProcedures insuranceProcedures();

}  // namespace orva
