#pragma once

#include "app/batch/commands.h"
#include "wizard/frmImport.h"

namespace orva {

/// Ticks the lines of the catalogue that the options name. False when a name is no line of
/// the catalogue; the user was told.
bool chooseFields(Session& session, frmImport& screen, const ImportOptions& options);

}  // namespace orva
