#pragma once

#include "updates/bulk_update_screen.h"

namespace orva {

/// Overriding depreciation rate and method of existing assets from a workbook with the columns "Assetid",
/// "OVERRIDERATE" (a percentage) and "OVERRIDEMETHOD".
class frmUpdateRateAndMethod : public BulkUpdateScreen {
 public:
  frmUpdateRateAndMethod(const Services& services, CompanyContext& company)
      : BulkUpdateScreen(rateAndMethodUpdate(), services, company) {}
};

}  // namespace orva
