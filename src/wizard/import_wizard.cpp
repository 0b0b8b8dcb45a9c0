#include "wizard/import_wizard.h"

#include <utility>

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "platform/version.h"
#include "startup/shared_error_report.h"
#include "wizard/catalogue/builders.h"
#include "wizard/catalogue/tick_rules.h"
#include "wizard/error_workbook.h"
#include "wizard/summary.h"

namespace orva {
namespace {

std::string versionText(const CompanyContext& company) {
  std::string text = "Version    :  " + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) +
                     std::to_string(kVersionRevision) + "           ";
  // What follows the kind of database is where the company is kept.
  return text + (company.isSqlServer ? "   SQL  :  " + company.server : "Access  :  " + company.dataFolder);
}

}  // namespace

ImportWizard::ImportWizard(const Services& services, CompanyContext& company, const WizardTraits& traits,
                           std::function<void()> onClose)
    : services_(services), company_(company), traits_(traits), onClose_(std::move(onClose)) {
  for (OfPage<Button>* buttons : {&cmdBack, &cmdNext, &cmdContinue, &cmdHome, &cmdClose}) {
    (*buttons)[indexOf(WizardPage::kGuidelines)].setVisible(false);
  }
  cmdContinue[indexOf(WizardPage::kSelection)].setVisible(false);
  cmdNext[indexOf(WizardPage::kFinish)].setVisible(false);
  cmdContinue[indexOf(WizardPage::kResults)].setToolTip("Continue Validating the data from Excel");
  cmdContinue[indexOf(WizardPage::kFinish)].setCaption("Finish");
  cmdContinue[indexOf(WizardPage::kFinish)].setToolTip("Save the data from excel to ORVA");
  lblBlue.setForeColour(colours::kBlue);
  lblRed.setForeColour(colours::kRed);
  lblPink.setBackColour(colours::kPink);
  lblYellow.setBackColour(colours::kLightYellow);
  lblBlueColor.setBackColour(colours::kLightBlue);
  ProgressBar1.setVisible(false);
}

void ImportWizard::trap(const std::function<void()>& action) {
  if (isBusy_) return;
  isBusy_ = true;
  try {
    action();
  } catch (const std::exception& error) {
    reportError(services_.dialogs, error);
  }
  isBusy_ = false;
  applyEnabling();
  if (closeRequested_) closeNow();
}

void ImportWizard::trapRun(const std::function<void()>& action) {
  trap([&] {
    isRunning_ = true;
    dumping_.clearStop();
    progress_.clearStop();
    applyEnabling();
    try {
      action();
    } catch (...) {
      isRunning_ = false;
      ProgressBar1.setValue(0);
      ProgressBar1.setVisible(false);
      throw;
    }
    isRunning_ = false;
  });
}

void ImportWizard::Load() {
  trap([&] {
    showStatusLine();
    chooseFirst();
    resetResults();
    rebuildCatalogue();
    showGuidelineSection(1);
    showPage(WizardPage::kGuidelines);
  });
}

void ImportWizard::requestClose() {
  closeRequested_ = true;
  dumping_.requestStop();
  progress_.requestStop();
  if (!isBusy_) closeNow();
}

void ImportWizard::closeNow() {
  closeRequested_ = false;
  const std::function<void()> onClose = onClose_;
  if (onClose) onClose();  // the screen may be gone after this
}

void ImportWizard::say(const std::string& text, MessageIcon icon) {
  services_.dialogs.show({.text = text, .title = "ORVA Import", .icon = icon});
}

// ---------------------------------------------------------------------------------------------------------------------
// Pages

void ImportWizard::showPage(WizardPage page) {
  page_ = page;
  for (std::size_t index = 0; index < kWizardPages; ++index) {
    pageFrame(static_cast<WizardPage>(index)).setVisible(index == indexOf(page));
  }
}

void ImportWizard::showGuidelineSection(int section) {
  guidelineSection_ = section;
  for (std::size_t line = 0; line < lblRules.size(); ++line) {
    const int sectionOfLine = kGuidelineLines[line].section;
    lblRules[line].setVisible(sectionOfLine == 0 || sectionOfLine == section);
  }
}

void ImportWizard::showStatusLine() {
  lblVersion.setCaption(versionText(company_));
  lblCompany.setCaption(company_.companyName);
}

void ImportWizard::applyEnabling() {
  enableSelection();
  const bool isFree = !isRunning_;
  cmdHBack.setEnabled(guidelineSection_ > 1);
  for (Button& button : cmdBack) button.setEnabled(isFree);
  for (Button& button : cmdHome) button.setEnabled(isFree);
  cmdNext[indexOf(WizardPage::kSelection)].setEnabled(isFree && !catalogue_.empty());
  cmdNext[indexOf(WizardPage::kResults)].setEnabled(isFree && isValidated_ && totals_.errors == 0);
  cmdContinue[indexOf(WizardPage::kResults)].setEnabled(isFree);
  cmdContinue[indexOf(WizardPage::kFinish)].setEnabled(isFree && mayPost_);
  CmdExp.setEnabled(isFree && isValidated_ && offersErrorFile(totals_));
  CmdSelErrors.setEnabled(isFree && isValidated_ && offersErrorFile(totals_) && !totals_.backdatedAccepted);
}

// ---------------------------------------------------------------------------------------------------------------------
// Guidelines

void ImportWizard::cmdHNext_Click() {
  trap([&] {
    if (guidelineSection_ < kGuidelineSections) return showGuidelineSection(guidelineSection_ + 1);
    reconnect(company_, services_);
    showPage(WizardPage::kSelection);
  });
}

void ImportWizard::cmdHBack_Click() {
  trap([&] {
    if (guidelineSection_ > 1) showGuidelineSection(guidelineSection_ - 1);
  });
}

void ImportWizard::cmdSkip_Click() {
  trap([&] {
    reconnect(company_, services_);
    showPage(WizardPage::kSelection);
  });
}

void ImportWizard::cmdHClose_Click() { requestClose(); }

void ImportWizard::cmdClose_Click() { requestClose(); }

void ImportWizard::cmdHome_Click() {
  trap([&] {
    showGuidelineSection(1);
    showPage(WizardPage::kGuidelines);
  });
}

void ImportWizard::cmdBack_Click(WizardPage page) {
  trap([&] {
    if (isOn(page) && page != WizardPage::kGuidelines) showPage(static_cast<WizardPage>(indexOf(page) - 1));
  });
}

// ---------------------------------------------------------------------------------------------------------------------
// Selection

void ImportWizard::forgetValidation() { isValidated_ = mayPost_ = false; }

void ImportWizard::rebuildCatalogue() {
  readSelection();
  reconnect(company_, services_);
  catalogue_ = buildFields();
  // What was validated was another choice.
  forgetValidation();
  showCatalogue();
}

void ImportWizard::showCatalogue() {
  const UpdateBatch batch(lstFields);
  lstFields.clear();
  lstFields.setColumns(catalogueColumns(selection_.kind));
  for (const FieldRow& field : catalogue_) {
    lstFields.add({.cells = catalogueCells(field, selection_.kind), .ticked = field.ticked});
  }
  lblBlue.setVisible(false);
  lblRed.setVisible(false);
}

void ImportWizard::showTicks() {
  const UpdateBatch batch(lstFields);
  for (std::size_t line = 0; line < catalogue_.size(); ++line) {
    lstFields.setTicked(static_cast<int>(line), catalogue_[line].ticked);
  }
}

void ImportWizard::lstFields_ItemCheck(int index, bool ticked) {
  trap([&] {
    if (index < 0 || index >= lstFields.count()) return;
    tickLine(catalogue_, index, ticked, selection_);
    forgetValidation();
    showTicks();
    // The window may already show the tick that was not accepted.
    lstFields.refresh();
  });
}

void ImportWizard::cmdSelectAll_Click() {
  trap([&] {
    forgetValidation();
    if (!tickAll(catalogue_)) return rebuildCatalogue();
    showTicks();
    if (trim(txtExcel.text()).empty() || !isPathAccepted()) return;
    reconnect(company_, services_);
    if (const std::unique_ptr<Sheet> sheet = openWorkbook()) checkHeader(*sheet);
  });
}

void ImportWizard::cmdExcel_Click() {
  trap([&] {
    const std::optional<std::string> path = services_.dialogs.openFile(
        {.title = "Select Excel File", .defaultPattern = "*.xls", .filter = "Excel(*.xls)|*.xls|All Files(*.*)|*.*"});
    if (path && services_.files.exists(*path)) txtExcel.setText(*path);
  });
}

void ImportWizard::cmdRefresh_Click() {
  trap([&] {
    reconnect(company_, services_);
    if (!isPathAccepted()) return;
    if (const std::unique_ptr<Sheet> sheet = openWorkbook()) checkHeader(*sheet);
  });
}

void ImportWizard::cmdExport_Click() {
  trap([&] { writeAndOpenExport(services_, company_.programFolder, headerLines(catalogue_)); });
}

}  // namespace orva
