#pragma once

#include "platform/dialogs.h"
#include "wizard/findings.h"
#include "wizard/results.h"

namespace orva {

/// The totals of a validation. Backdated rows become warnings when the user ticked their box and
/// accepts them when asked, otherwise errors.
RunTotals totalsOf(const Findings& findings, int records, bool backdatedTicked, Dialogs& dialogs);

/// The user may look at the error file: rows are in error, or backdated.
bool offersErrorFile(const RunTotals& totals);

/// Asks whether the error file is to be opened.
bool asksForErrorFile(int errors, Dialogs& dialogs);

}  // namespace orva
