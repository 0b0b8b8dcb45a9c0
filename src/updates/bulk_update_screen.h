#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/services.h"
#include "startup/company_context.h"
#include "updates/bulk_update.h"
#include "wizard/progress.h"

namespace orva {

class BulkUpdateRun;

/// The screen of a bulk update: a workbook, a run, a result. All or nothing. No handler throws: a failure ends
/// the run with its message.
class BulkUpdateScreen {
 public:
  BulkUpdateScreen(const BulkUpdate& update, const Services& services, CompanyContext& company);
  BulkUpdateScreen(const BulkUpdateScreen&) = delete;
  BulkUpdateScreen& operator=(const BulkUpdateScreen&) = delete;
  virtual ~BulkUpdateScreen() = default;

  /// Which columns the workbook must carry.
  Label lblColumns{"lblColumns"};
  Label lblExcel{"lblExcel", "Select the excel file"};
  TextBox txtExcel{"txtExcel"};
  Button btnBrowse{"btnBrowse", "&Browse"};
  Button btnImport{"btnImport", "&Import"};
  Button btnImportExit{"btnImportExit", "E&xit"};
  Label lblStatus{"lblStatus"};
  Label lblCurrentStatus{"lblCurrentStatus"};
  ProgressBar ProgressBar1{"ProgressBar1"};

  void btnBrowse_Click();
  void btnImport_Click();
  void btnImportExit_Click() { requestClose(); }
  /// Closing the window. A run that still checks rows ends after the current one and changes no asset; one that
  /// updates assets goes to its end. The screen closes afterwards.
  void requestClose();

  std::string_view caption() const { return update_.caption; }
  void onClose(std::function<void()> close) { close_ = std::move(close); }
  bool isRunning() const { return isRunning_; }
  /// Errors of the last run; nothing when it did not reach its end.
  std::optional<int> errorCount() const { return errorCount_; }
  /// Assets that the last run updated, also when it failed.
  int updatedCount() const { return updatedCount_; }

 private:
  void run();
  void apply(BulkUpdateRun& update);
  void offerErrorFile(const BulkUpdateRun& update);
  bool rowDone();
  void say(const std::string& text, MessageIcon icon = MessageIcon::kInformation);
  void closeNow();

  const BulkUpdate& update_;
  const Services& services_;
  CompanyContext& company_;
  std::function<void()> close_;
  std::optional<int> errorCount_;
  int updatedCount_ = 0;
  RunProgress progress_{{lblStatus, lblCurrentStatus, ProgressBar1, services_.eventLoop}};
  int rowsDone_ = 0;
  bool isRunning_ = false;
  bool closeRequested_ = false;
};

}  // namespace orva
