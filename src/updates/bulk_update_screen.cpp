#include "updates/bulk_update_screen.h"

#include "platform/event_loop.h"
#include "platform/files.h"
#include "startup/shared_error_report.h"
#include "updates/bulk_update_run.h"
#include "wizard/error_workbook.h"
#include "wizard/staging.h"

namespace orva {

BulkUpdateScreen::BulkUpdateScreen(const BulkUpdate& update, const Services& services, CompanyContext& company)
    : update_(update), services_(services), company_(company) {}

void BulkUpdateScreen::btnBrowse_Click() {
  const std::optional<std::string> path = services_.dialogs.openFile(
      {.title = "Select Excel File", .defaultPattern = "*.xls", .filter = "Excel(*.xls)|*.xls|All Files(*.*)|*.*"});
  if (path) txtExcel.setText(*path);
}

void BulkUpdateScreen::btnImport_Click() {
  btnImport.setEnabled(false);
  try {
    run();
  } catch (const std::exception& error) {
    reportError(services_.dialogs, error);
  }
  btnImport.setEnabled(true);
}

void BulkUpdateScreen::btnImportExit_Click() {
  if (close_) close_();
}

void BulkUpdateScreen::run() {
  errorCount_.reset();
  updatedCount_ = 0;
  if (const std::string_view fault = workbookPathFault(txtExcel.text()); !fault.empty()) {
    return say(std::string(fault), MessageIcon::kInformation);
  }
  reconnect(company_, services_);
  const auto sheet = openAssetSheet(services_.workbooks, txtExcel.text());
  BulkUpdateRun update(update_, *company_.connection, [this] { services_.eventLoop.yield(); });
  errorCount_ = update.check(*sheet);
  if (*errorCount_ == 0) {
    updatedCount_ = update.apply();
    return say(std::to_string(updatedCount_) + " - Records has been successfully Updated. ", MessageIcon::kInformation);
  }
  const Answer answer = services_.dialogs.show({.text = "Error found in " + std::to_string(*errorCount_) +
                                                        " entries.\nError descriptions are given in the Error file.\n"
                                                        "Do you want to open the error file?",
                                                .title = "ORVA ExcelImport",
                                                .icon = MessageIcon::kQuestion,
                                                .buttons = MessageButtons::kYesNo});
  if (answer == Answer::kYes) writeAndOpenExport(services_, company_.programFolder, update.errorFileLines());
}

void BulkUpdateScreen::say(const std::string& text, MessageIcon icon) {
  services_.dialogs.show({.text = text, .title = "ORVA Import", .icon = icon});
}

}  // namespace orva
