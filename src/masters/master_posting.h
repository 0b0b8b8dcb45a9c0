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

}  // namespace orva
