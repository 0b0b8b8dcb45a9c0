#pragma once

#include "updates/bulk_update_screen.h"

namespace orva {

/// Lease end dates of existing assets from a workbook with the columns "Assetid" and "LEOD".
class frmUpdateLEOD : public BulkUpdateScreen {
 public:
  frmUpdateLEOD(const Services& services, CompanyContext& company)
      : BulkUpdateScreen(leaseEndDateUpdate(), services, company) {}
};

}  // namespace orva
