#pragma once

#include "wizard/import_kinds.h"

namespace orva {

/// Values of the company's user-defined fields for existing assets, one
/// `UDValues` row an asset.
ImportProcedures userDefinedFieldsProcedures();

}  // namespace orva
