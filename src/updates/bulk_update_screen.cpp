#include "updates/bulk_update_screen.h"

#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/shared_error_report.h"
#include "updates/bulk_update_run.h"
#include "wizard/error_workbook.h"
#include "wizard/staging.h"
#include "wizard/summary.h"

namespace orva {
namespace {

/// Why a path cannot be the workbook; empty when it can.
std::string_view pathFault(std::string_view path) {
  path = trim(path);
  if (path.empty()) return "Please select an excel file";
  return equalsNoCase(extensionName(path), "xls") ? std::string_view() : "Please select only an Excel file";
}

}  // namespace

BulkUpdateScreen::BulkUpdateScreen(const BulkUpdate& update, const Services& services, CompanyContext& company)
    : update_(update), services_(services), company_(company) {
  std::string columns = "The sheet 'Asset' of the workbook must carry the columns Assetid";
  for (const UpdateColumn& column : update_.columns) columns += ", " + std::string(column.name);
  lblColumns.setCaption(columns + ". All rows are checked first: with a row in error no asset is changed.");
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
  errorCount_.reset();
  updatedCount_ = 0;
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

bool BulkUpdateScreen::rowDone() {
  progress_.rowDone(++rowsDone_);
  return !closeRequested_;
}

void BulkUpdateScreen::closeNow() {
  closeRequested_ = false;
  const std::function<void()> close = close_;
  if (close) close();  // the screen may be gone after this
}

/// 1. check the file  2. open the sheet  3. check and record the rows  4. update the assets or report
void BulkUpdateScreen::run() {
  if (const std::string_view fault = pathFault(txtExcel.text()); !fault.empty()) return say(std::string(fault));
  reconnect(company_, services_);
  const auto sheet = openAssetSheet(services_.workbooks, std::string(trim(txtExcel.text())));
  BulkUpdateRun update(update_, company_, [this] { return rowDone(); });
  rowsDone_ = 0;
  progress_.begin("Validating data from Excel. Please Wait ......", filledRows(*sheet, 1));
  const std::optional<int> errors = update.check(*sheet);
  progress_.finish("Finished validating data");
  if (!errors || closeRequested_) return say("The update was stopped. No asset was changed.");
  if (*errors == 0) return apply(update);
  errorCount_ = errors;
  offerErrorFile(update);
}

void BulkUpdateScreen::apply(BulkUpdateRun& update) {
  rowsDone_ = 0;
  progress_.begin("Updating the assets. Please Wait ......", update.rowCount());
  try {
    update.apply();
  } catch (const std::exception& error) {
    progress_.finish({});
    updatedCount_ = update.updatedCount();
    reportError(services_.dialogs, error);
    return say(std::to_string(updatedCount_) + " of " + std::to_string(update.rowCount()) +
               " rows were updated before the failure.");
  }
  progress_.finish({});
  errorCount_ = 0;
  updatedCount_ = update.updatedCount();
  say(std::to_string(updatedCount_) + " - Records has been successfully Updated. ");
}

void BulkUpdateScreen::offerErrorFile(const BulkUpdateRun& update) {
  if (!asksForErrorFile(*errorCount_, services_.dialogs)) return;
  writeAndOpenExport(services_, company_.programFolder, update.errorFileLines());
}

void BulkUpdateScreen::say(const std::string& text, MessageIcon icon) {
  services_.dialogs.show({.text = text, .title = "ORVA Import", .icon = icon});
}

}  // namespace orva
