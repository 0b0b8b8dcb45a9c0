#pragma once

#include "startup/schema/upgrade_table.h"

namespace orva {

/// Runs a procedure of the table; `kNone` does nothing. Each throws what its first failing
/// call throws; the runner decides what that means.
void runProcedure(UpgradeProcedure procedure, UpgradeSite& site);

/// An empty `Parameter` gets its one row; a row without a depreciation period gets the defaults.
void fillParameterRow(UpgradeSite& site);
/// Switches on the parameters without which the importer does not work.
void switchParametersOn(UpgradeSite& site);
/// Finds out whether the table exists.
void probeCostBreakup(UpgradeSite& site);
/// Names the additional books that have no name yet.
void fillBookNames(UpgradeSite& site);

/// User names in assets, transfers and splits become codes of `Users`, once in a company's
/// life (`flguser`).
void repairUserCodesOnce(UpgradeSite& site);
/// The same for child assets, whose import stores user names: at every opening.
void repairChildUserCodes(UpgradeSite& site);

}  // namespace orva
