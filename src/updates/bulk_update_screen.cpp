#include "updates/bulk_update_screen.h"

#include "platform/files.h"
#include "startup/shared_error_report.h"
#include "updates/bulk_update_run.h"
#include "wizard/error_workbook.h"
#include "wizard/staging.h"

namespace orva {

BulkUpdateScreen::BulkUpdateScreen(const BulkUpdate& update, const Services& services, CompanyContext& company)
    : update_(update), services_(services), company_(company) {
  std::string columns = "The sheet 'Asset' of the workbook must carry the columns Assetid";
  for (const std::string_view name : update_.columns) columns += ", " + std::string(name);
  lblColumns.setCaption(columns + ".");
  ProgressBar1.setVisible(false);
}

void BulkUpdateScreen::btnBrowse_Click() {
  if (isRunning_) return;
  const std::optional<std::string> path = services_.dialogs.openFile(
      {.title = "Select Excel File", .defaultPattern = "*.xls", .filter = "Excel(*.xls)|*.xls|All Files(*.*)|*.*"});
  if (path) txtExcel.setText(*path);
}

void BulkUpdateScreen::btnImport_Click() {
  if (isRunning_) return;
  isRunning_ = true;
  for (Button* button : {&btnBrowse, &btnImport}) button->setEnabled(false);
  try {
    run();
  } catch (const std::exception& error) {
    progress_.finish({});
    reportError(services_.dialogs, error);
  }
  for (Button* button : {&btnBrowse, &btnImport}) button->setEnabled(true);
  isRunning_ = false;
  if (closeRequested_) closeNow();
}

void BulkUpdateScreen::requestClose() {
  closeRequested_ = true;
  if (!isRunning_) closeNow();
}

void BulkUpdateScreen::closeNow() {
  closeRequested_ = false;
  const std::function<void()> close = close_;
  if (close) close();  // the screen may be gone after this
}

bool BulkUpdateScreen::rowDone() {
  progress_.rowDone(++rowsDone_);
  return !closeRequested_;
}

void BulkUpdateScreen::run() {
  errorCount_.reset();
  updatedCount_ = 0;
  if (const std::string_view fault = workbookPathFault(txtExcel.text()); !fault.empty()) {
    return say(std::string(fault), MessageIcon::kInformation);
  }
  reconnect(company_, services_);
  const auto sheet = openAssetSheet(services_.workbooks, txtExcel.text());
  BulkUpdateRun update(update_, *company_.connection, [this] { return rowDone(); });
  rowsDone_ = 0;
  progress_.begin("Validating data from Excel. Please Wait ......", sheet->rowCount() - 1);
  const std::optional<int> errors = update.check(*sheet);
  progress_.finish("Finished validating data");
  if (!errors) return say("The update was stopped. No asset was changed.", MessageIcon::kInformation);
  errorCount_ = errors;
  if (*errorCount_ == 0) {
    const int rows = rowsDone_;
    rowsDone_ = 0;
    progress_.begin("Updating the assets. Please Wait ......", rows);
    updatedCount_ = update.apply();
    progress_.finish({});
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
