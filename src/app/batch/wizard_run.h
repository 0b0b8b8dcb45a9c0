#pragma once

#include "app/batch/commands.h"
#include "wizard/import_wizard.h"

namespace orva {

/// Goes with a wizard, whose choice and workbook are set, from the selection page to the end: reads and validates,
/// prints the totals and the missing masters, writes the reports, and posts when nothing stands against it.
Exit runWizard(Session& session, const ReportOptions& options, ImportWizard& screen);

}  // namespace orva
