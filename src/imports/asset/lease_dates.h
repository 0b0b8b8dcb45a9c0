#pragma once

#include "platform/services.h"
#include "startup/company_context.h"

namespace orva {

/// Asks whether lives and lease end dates are to be filled in, does so for every asset of the company that has
/// neither, and says how many were changed. Throws `ProviderError`; what is filled in by then stays.
void calculateLeaseDates(const Services& services, CompanyContext& company);

}  // namespace orva
