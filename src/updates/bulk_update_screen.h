#pragma once

#include <functional>
#include <optional>

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/services.h"
#include "startup/company_context.h"
#include "updates/bulk_update.h"

namespace orva {

/// The screen of a bulk update: a workbook, a run, a result. All or nothing.
class BulkUpdateScreen {
 public:
  BulkUpdateScreen(const BulkUpdate& update, const Services& services, CompanyContext& company);
  BulkUpdateScreen(const BulkUpdateScreen&) = delete;
  BulkUpdateScreen& operator=(const BulkUpdateScreen&) = delete;
  virtual ~BulkUpdateScreen() = default;

  Label lblExcel{"lblExcel", "Select the excel file"};
  TextBox txtExcel{"txtExcel"};
  Button btnBrowse{"btnBrowse", "&Browse"};
  Button btnImport{"btnImport", "&Import"};
  Button btnImportExit{"btnImportExit", "E&xit"};

  void btnBrowse_Click();
  void btnImport_Click();
  void btnImportExit_Click();

  std::string_view caption() const { return update_.caption; }
  void onClose(std::function<void()> close) { close_ = std::move(close); }
  /// Errors of the last run; nothing when it did not reach its end.
  std::optional<int> errorCount() const { return errorCount_; }
  /// Assets that the last run updated.
  int updatedCount() const { return updatedCount_; }

 private:
  void run();
  void say(const std::string& text, MessageIcon icon);

  const BulkUpdate& update_;
  const Services& services_;
  CompanyContext& company_;
  std::function<void()> close_;
  std::optional<int> errorCount_;
  int updatedCount_ = 0;
};

class frmUpdateLEOD : public BulkUpdateScreen {
 public:
  frmUpdateLEOD(const Services& services, CompanyContext& company)
      : BulkUpdateScreen(leaseEndDateUpdate(), services, company) {}
};

class frmUpdateRateAndMethod : public BulkUpdateScreen {
 public:
  frmUpdateRateAndMethod(const Services& services, CompanyContext& company)
      : BulkUpdateScreen(rateAndMethodUpdate(), services, company) {}
};

}  // namespace orva
