#pragma once

#include "wizard/import_run.h"

namespace orva {

/// Writes every row of a validated asset sheet. Each asset is stored as soon as its row is done; what is stored
/// stays. Throws nothing: the result tells a failure.
PostResult postAssets(ImportRun& run);

}  // namespace orva
