#pragma once

#include "wizard/import_run.h"

namespace orva {

/// Checks every row of an asset sheet in the run's flavour and mode: records findings, fills the grid's own
/// columns. Throws `ProviderError`; findings up to then stay.
void validateAssets(ImportRun& run);

}  // namespace orva
