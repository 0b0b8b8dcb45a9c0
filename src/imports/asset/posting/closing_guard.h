#pragma once

#include <string>

#include "startup/company_context.h"
#include "wizard/selection.h"

namespace orva {

/// Why closing balances cannot be imported at all: those that the company has belong to a closed accounting year, or
/// shifted-in assets meet calculated depreciation. Empty when nothing stands in the way or the
/// selection is not of closing balances. Shown with the information icon, title "ORVA Import". Throws `ProviderError`.
std::string closingBalanceObstacle(const CompanyContext& company, const Selection& selection);

}  // namespace orva
