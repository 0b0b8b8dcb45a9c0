#pragma once

#include "app/batch/commands.h"
#include "wizard/frmImport.h"

namespace orva {

/// Takes the tick off every optional line of a catalogue whose name the header row of its sheet lacks, and tells which
/// they are.
void untickAbsent(Session& session, ImportWizard& screen, const std::string& workbook, std::string_view sheet);

/// Ticks the lines of the catalogue that the options name. False when a name is no line of
/// the catalogue; the user was told.
bool chooseFields(Session& session, frmImport& screen, const ImportOptions& options);

}  // namespace orva
