#pragma once

#include "masters/master_row.h"

namespace orva {

/// What each master writes: one record a workbook row.
PostingPlan<MasterRow> departmentPlan();
PostingPlan<MasterRow> costCentrePlan();
PostingPlan<MasterRow> locationPlan();
PostingPlan<MasterRow> userPlan();
PostingPlan<MasterRow> vendorPlan();
PostingPlan<MasterRow> miscellaneousPlan();

/// The highest numeric code of a master plus one, four digits; "0001" when there is none. Throws `ProviderError`.
std::string nextDepartmentCode(const MasterRow& row);
std::string nextCostCentreCode(const MasterRow& row);
std::string nextUserCode(const MasterRow& row);
std::string nextVendorCode(const MasterRow& row);
std::string nextMiscellaneousCode(const MasterRow& row);

}  // namespace orva
