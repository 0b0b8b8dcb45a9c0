#pragma once

#include "startup/company_context.h"

namespace orva {

/// Fills codes that assets and depreciation entries lack from where they are known; the columns of an
/// additional book only when the company keeps it. Throws `ProviderError`.
void cleanUpCodes(const CompanyContext& company);

/// Gives every asset that has neither a life nor a lease end date the life of its category (level III before
/// level II before level I; months) and the date that many months after its use. Returns the number
/// of assets changed. Throws `ProviderError`.
int fillLifeAndLeaseDate(const CompanyContext& company);

}  // namespace orva
