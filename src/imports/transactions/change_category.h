#pragma once

#include "wizard/import_kinds.h"

namespace orva {

/// Moves of existing assets to another category: one `ReclassAstCat` row each,
/// and the asset's own category codes.
ImportProcedures changeCategoryProcedures();

}  // namespace orva
