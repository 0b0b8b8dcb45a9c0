#include "wizard/import_wizard.h"

#include <utility>

#include "platform/values/text.h"
#include "startup/company_context.h"
#include "wizard/catalogue/tick_rules.h"
#include "wizard/error_workbook.h"
#include "wizard/header_check.h"
#include "wizard/staging.h"
#include "wizard/summary.h"

namespace orva {
namespace {

constexpr std::string_view kShowOnlyErrors = "&Show only Errors";
constexpr std::string_view kShowAll = "&All";
constexpr std::string_view kBackdatedAccepted =
    "Indicates Backdated entry. Value will be accepted as backdated entry in ORVA.";
constexpr std::string_view kBackdatedRefused = "Indicates Backdated entry. But it will not be accepted in ORVA.";
constexpr std::string_view kTotalsDiffer =
    "The control totals of the company differ from those of the workbook. The rows stay posted.";
constexpr std::string_view kTotalsUnknown =
    "The control totals of the company could not be read. The rows stay posted.";

/// The lines, each behind a line break.
std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += "\n" + line;
  return text;
}

}  // namespace

void ImportWizard::cmdNext_Click(WizardPage page) {
  if (!isOn(page) || !cmdNext[indexOf(page)].enabled()) return;
  if (page == WizardPage::kSelection) {
    trapRun([&] { readWorkbook(); });
  } else if (page == WizardPage::kResults) {
    trap([&] { copyToFinishPage(); });
  }
}

void ImportWizard::cmdContinue_Click(WizardPage page) {
  if (!isOn(page) || !cmdContinue[indexOf(page)].enabled()) return;
  if (page == WizardPage::kResults) {
    trapRun([&] { readWorkbook(); });
  } else if (page == WizardPage::kFinish) {
    trapRun([&] { post(); });
  }
}

/// 1. check the file  2. open the sheet  3. check the header  4. stage the rows  5. validate and summarise
void ImportWizard::readWorkbook() {
  isValidated_ = mayPost_ = false;
  reconnect(company_, services_);
  const bool mayOpen = isPathAccepted() && !lacksFields(NeededFields::kToOpen);
  std::unique_ptr<Sheet> sheet = mayOpen ? openWorkbook() : nullptr;
  if (!sheet || !checkHeader(*sheet)) return showPage(WizardPage::kSelection);
  showPage(WizardPage::kResults);
  if (!stage(std::move(sheet))) return showPage(WizardPage::kSelection);
  validate();
}

/// True when nothing but the identifier is ticked where this choice needs more; the user has been told.
bool ImportWizard::lacksFields(NeededFields needed) {
  if (neededFields() != needed || tickedLines(catalogue_) >= 2) return false;
  services_.dialogs.show({.text = "Please select the fields which you want modify in ORVA",
                          .title = "ORVA",
                          .icon = MessageIcon::kInformation});
  return true;
}

bool ImportWizard::isPathAccepted() {
  const std::string_view fault = workbookPathFault(txtExcel.text());
  if (!fault.empty()) say(std::string(fault));
  return fault.empty();
}

/// Null when there is no workbook to read; the user has been told why.
std::unique_ptr<Sheet> ImportWizard::openWorkbook() {
  try {
    return openSheet(services_.workbooks, std::string(trim(txtExcel.text())), traits_.sheet);
  } catch (const WorkbookError& error) {
    say(sheetFaultText(error, traits_.sheet), MessageIcon::kCritical);
    return nullptr;
  }
}

bool ImportWizard::checkHeader(const Sheet& sheet) {
  const std::vector<HeaderMark> marks = CheckFieldNames(catalogue_, headerNames(sheet, traits_.sheet.header));
  showHeaderMarks(marks, lstFields);
  if (lacksFields(NeededFields::kWithHeader)) return false;
  const bool isMissing = hasMissingFields(marks);
  lblBlue.setVisible(isMissing);
  lblRed.setVisible(isMissing);
  return !isMissing;
}

void ImportWizard::resetResults() {
  for (Label* label : {&lblPink, &lblMsgPink, &lblYellow, &lblMsgYellow, &lblBlueColor, &lblBlueMsg}) {
    label->setVisible(false);
  }
  findings_.clear();
  unknownMasters_.clear();
  lstUnknown.clear();
  lstUnknown.setVisible(false);
  lblUnknown.setVisible(false);
  totals_ = {};
  postResult_ = {};
  workbookTotals_ = {};
  lblTotalRec.setCaption("Total Records             :  0");
  lblTotalErr.setCaption("Total Records with Errors :  0");
  lblErrormsg.setCaption({});
  lblControlTotals.setCaption({});
  CmdSelErrors.setCaption(kShowOnlyErrors);
  grid1.clear();
  flxSave.clear();
}

bool ImportWizard::stage(std::unique_ptr<Sheet> sheet) {
  resetResults();
  applyEnabling();
  Staged staged = DumpExlData(*sheet,
                              {.catalogue = catalogue_,
                               .ownColumns = ownColumns(),
                               .sheetColumns = sheetColumns(),
                               .countsUnits = selection_.multipleAssetIds,
                               .header = traits_.sheet.header},
                              dumping_);
  sheet.reset();
  if (staged.failure) say(conversionFailureText(*staged.failure), MessageIcon::kCritical);
  dumping_.finish(staged.failure || staged.stopped ? "" : "Data Dumped Successfully");
  if (staged.failure || staged.stopped) return false;
  totals_.records = staged.records;
  totals_.units = staged.units;
  grid1.setTable(std::exchange(staged.table, TextTable()));
  lblCurrentStatus.setCaption("Last Row Dumped   :  " + std::to_string(staged.records));
  lblTotalRec.setCaption("Total Records             :  " + std::to_string(staged.records));
  return true;
}

void ImportWizard::validate() {
  if (!hasProcedures()) return;
  {
    const UpdateBatch batch(grid1);
    ImportRun current = run();
    validateRows(current);
    if (progress_.stopRequested()) return;
    findings_.settle();
    showFindings(findings_, grid1, traits_.separators);
  }
  showUnknownMasters();
  // The questions of the summary are asked over the results, which the legend explains.
  showLegend();
  summarise();
}

void ImportWizard::summarise() {
  const std::int64_t units = totals_.units;
  totals_ = totalsOf(findings_, totals_.records, selection_.backdated, services_.dialogs);
  totals_.units = units;
  const std::int64_t records = selection_.multipleAssetIds ? units : totals_.records;
  if (controlPlan()) workbookTotals_ = workbookTotals(*controlPlan(), grid1, records);
  if (backdatedRefused()) {
    markRefusedRows(findings_, grid1);
    lblBlueMsg.setCaption(kBackdatedRefused);
  }
  isValidated_ = true;
  showTotals();
  applyEnabling();
  if (!offersErrorFile(totals_) || totals_.backdatedAccepted) return;
  if (asksForErrorFile(totals_.errors, services_.dialogs)) openErrorWorkbook();
}

void ImportWizard::showTotals() {
  lblTotalErr.setCaption("Total Records with Errors : " + std::to_string(totals_.errors));
  lblStatus.setCaption("Total Records with Warnings : " + std::to_string(totals_.warnings));
  lblCurrentStatus.setCaption(selection_.multipleAssetIds ? "Assets to be created : " + std::to_string(totals_.units)
                                                          : std::string());
  const std::vector<std::string> lines = controlLines();
  lblControlTotals.setCaption(lines.empty() ? std::string() : lines.front());
}

void ImportWizard::showLegend() {
  lblPink.setVisible(true);
  lblMsgPink.setVisible(true);
  const bool hasWarnings = findings_.has(FindingClass::kWarning);
  lblYellow.setVisible(hasWarnings);
  lblMsgYellow.setVisible(hasWarnings);
  const bool hasBackdated = findings_.has(FindingClass::kBackdated);
  lblBlueMsg.setCaption(selection_.backdated ? kBackdatedAccepted : kBackdatedRefused);
  lblBlueColor.setVisible(hasBackdated);
  lblBlueMsg.setVisible(hasBackdated);
}

void ImportWizard::showUnknownMasters() {
  unknownMasters_ = unknownMastersIn(findings_, grid1, catalogue_);
  const UpdateBatch batch(lstUnknown);
  for (const UnknownMaster& unknown : unknownMasters_) lstUnknown.add(unknownMasterText(unknown));
  lstUnknown.setVisible(!unknownMasters_.empty());
  lblUnknown.setVisible(!unknownMasters_.empty());
}

void ImportWizard::CmdExp_Click() {
  if (!CmdExp.enabled()) return;
  trap([&] {
    reconnect(company_, services_);
    openErrorWorkbook();
  });
}

void ImportWizard::openErrorWorkbook() { writeAndOpenExport(services_, company_.programFolder, errorLines(grid1)); }

void ImportWizard::CmdSelErrors_Click() {
  if (!CmdSelErrors.enabled()) return;
  trap([&] {
    const bool onlyErrors = CmdSelErrors.caption() == kShowOnlyErrors;
    showOnlyErrorRows(grid1, onlyErrors);
    CmdSelErrors.setCaption(onlyErrors ? kShowAll : kShowOnlyErrors);
  });
}

void ImportWizard::grid1_MouseMove(int row, int column) {
  if (!isRunning_) lblErrormsg.setCaption(findingTextAt(row, column));
}

// ---------------------------------------------------------------------------------------------------------------------
// Finish

void ImportWizard::copyToFinishPage() {
  reconnect(company_, services_);
  flxSave.setTable(grid1.table());
  flxSave.setVisible(true);
  showFinishText("Click on Finish to Update into ORVA");
  txtMsg.setVisible(true);
  mayPost_ = true;
  showPage(WizardPage::kFinish);
}

void ImportWizard::post() {
  if (!hasProcedures()) return;
  // Rows that a failed or stopped run has stored must not be stored again: only a new
  // validation allows another run.
  mayPost_ = isValidated_ = false;
  ImportRun current = run();
  postResult_ = postRows(current);
  showPostResult();
}

void ImportWizard::showPostResult() {
  const std::string counted =
      std::to_string(postResult_.rowsPosted) + " of " + std::to_string(totals_.records) + " rows were posted.";
  flxSave.setVisible(!postResult_.finished);
  lblCurrentStatus.setCaption(counted);
  showFinishText(postResult_.finished ? postResult_.text : postResult_.text + "\n" + counted);
  if (postResult_.finished && controlTotalsAgree()) return;
  if (postResult_.finished) {
    const std::string_view fault = postResult_.controlTotals ? kTotalsDiffer : kTotalsUnknown;
    return say(std::string(fault) + joined(controlLines()), MessageIcon::kCritical);
  }
  if (!postResult_.text.empty()) say(postResult_.text, MessageIcon::kCritical);
  if (closeRequested_) say("The import was stopped. " + counted);
}

std::vector<std::string> ImportWizard::controlLines() const {
  const ControlPlan* const plan = controlPlan();
  if (!plan || workbookTotals_.amounts.empty()) return {};
  const bool isCountedApart = selection_.multipleAssetIds;
  const std::string_view counted = isCountedApart ? plan->records : "Rows";
  std::string rows = isCountedApart ? "Rows " + std::to_string(totals_.records) + ", " : std::string();
  std::vector<std::string> lines{"Control totals of the workbook : " + rows +
                                 controlTotalsText(*plan, grid1, workbookTotals_, counted)};
  if (!postResult_.controlTotals) return lines;
  lines.push_back("Control totals of the company  : " +
                  controlTotalsText(*plan, grid1, *postResult_.controlTotals, counted));
  if (isCountedApart) {
    lines.push_back(std::string(plan->records) + " created : " + std::to_string(postResult_.recordsStored));
  }
  return lines;
}

bool ImportWizard::controlTotalsAgree() const { return !controlPlan() || postResult_.controlTotals == workbookTotals_; }

void ImportWizard::showFinishText(const std::string& text) { txtMsg.setText(text + joined(controlLines())); }

ImportRun ImportWizard::run() {
  return {services_, company_, selection_, catalogue_, grid1, findings_, progress_, flxSave};
}

}  // namespace orva
