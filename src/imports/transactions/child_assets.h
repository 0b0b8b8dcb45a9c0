#pragma once

#include <string>

#include "wizard/import_kinds.h"

namespace orva {

/// Additions to existing assets: one `Addition` row each, which points at its parent through `PAssetId`.
ImportProcedures childAssetsProcedures();
/// The same for foreign-exchange additions; only the acquisition kind written differs.
ImportProcedures childAssetsForeignExchangeProcedures();

}  // namespace orva
