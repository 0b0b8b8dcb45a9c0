#pragma once

#include "platform/dialogs.h"
#include "startup/company_context.h"

namespace orva {

/// Asks whether lives and lease end dates are to be filled in, does so for every asset of the company that has
/// neither, and says how many were changed. The company's connection is open. Throws `ProviderError`; what is filled in
/// by then stays.
void calculateLeaseDates(Dialogs& dialogs, const CompanyContext& company);

}  // namespace orva
