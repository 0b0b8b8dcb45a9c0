#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs.h"
#include "platform/services.h"
#include "platform/workbook.h"
#include "startup/company_context.h"
#include "wizard/findings.h"
#include "wizard/import_run.h"
#include "wizard/progress.h"
#include "wizard/results.h"
#include "wizard/staging.h"
#include "wizard/unknown_masters.h"
#include "wizard/wizard_controls.h"

namespace orva {

/// What distinguishes the import wizards, apart from what they import.
struct WizardTraits {
  WorkbookSheet sheet = {};
  FindingSeparators separators = {};
};

/// Which choices have nothing to import while the identifier alone is ticked, and when the user is told: before the
/// workbook is opened, or with its header checked, so that the lines that it lacks are marked as well.
enum class NeededFields { kNone, kToOpen, kWithHeader };

/// An import wizard: guidelines, selection, results, finish. It reads a workbook into the results grid, has the rows
/// validated, and posts them when none is in error. A derived screen has the selection page's own controls and says
/// what is read, how rows are checked, and where they go.
///
/// No handler throws `ProviderError`, `WorkbookError` or `FileError`: the one error trap shows them. A handler
/// that is called while another one runs (from a yield) does nothing.
class ImportWizard : public WizardControls {
 public:
  ImportWizard(const ImportWizard&) = delete;
  ImportWizard& operator=(const ImportWizard&) = delete;
  virtual ~ImportWizard() = default;

  /// First page, status line, default choice with its catalogue.
  void Load();
  /// Closing the window. A run ends after the current row and the screen says how many rows were
  /// posted before it closes; otherwise it closes at once.
  void requestClose();

  // Guidelines
  void cmdHNext_Click();
  void cmdHBack_Click();
  void cmdSkip_Click();
  void cmdHClose_Click();

  // Selection
  /// The user wants line `index` ticked or not; `lstFields` afterwards shows what became of it.
  void lstFields_ItemCheck(int index, bool ticked);
  void cmdSelectAll_Click();
  void cmdExcel_Click();
  void cmdRefresh_Click();
  void cmdExport_Click();

  // Results
  void CmdExp_Click();
  void CmdSelErrors_Click();
  /// The mouse stands on a cell of `grid1`: shows its message in `lblErrormsg`.
  void grid1_MouseMove(int row, int column);

  // Every page
  void cmdNext_Click(WizardPage page);
  void cmdBack_Click(WizardPage page);
  void cmdContinue_Click(WizardPage page);
  void cmdHome_Click();
  void cmdClose_Click();

  WizardPage page() const { return page_; }
  /// 1 to 3.
  int guidelineSection() const { return guidelineSection_; }
  const Catalogue& catalogue() const { return catalogue_; }
  /// True while rows are read, validated or posted.
  bool isRunning() const { return isRunning_; }

  /// Of the last validation. `errorCount` is what blocks posting: rows in error, and backdated rows when they were
  /// refused.
  int recordCount() const { return totals_.records; }
  int errorCount() const { return totals_.errors; }
  int warningCount() const { return totals_.warnings; }
  int backdatedCount() const { return totals_.backdated; }
  /// The user was asked about backdated rows and did not accept them.
  bool backdatedRefused() const { return totals_.backdated > 0 && !totals_.backdatedAccepted; }
  /// Rows were staged and validated to the end.
  bool isValidated() const { return isValidated_; }
  const Findings& findings() const { return findings_; }
  /// Sum of the quantities when one asset a unit is to be made, else 0.
  std::int64_t unitCount() const { return totals_.units; }
  /// Every coloured cell of `grid1`, row by row.
  std::vector<CellMark> marks() const { return cellMarks(findings_, backdatedRefused()); }
  /// Messages of a cell, joined as in the grid; empty when it has none.
  std::string findingTextAt(int row, int column) const {
    return orva::findingTextAt(findings_, row, column, traits_.separators);
  }
  /// Masters that the last validation did not find and that posting would make.
  const std::vector<UnknownMaster>& unknownMasters() const { return unknownMasters_; }

  /// Of the last "Finish". Not finished, with a text: the run failed and its message was shown.
  const PostResult& postResult() const { return postResult_; }
  int rowsPosted() const { return postResult_.rowsPosted; }
  /// The control totals of the validated workbook and, after posting, of the company, with the number of records that
  /// rows of several became: one line each. Empty for an import that is not tied to the ledger.
  std::vector<std::string> controlLines() const;
  /// False when the company does not keep what the workbook says of the posted rows, or could not be asked.
  bool controlTotalsAgree() const;

 protected:
  /// All arguments must outlive the screen; the company is open.
  ImportWizard(const Services& services, CompanyContext& company, const WizardTraits& traits,
               std::function<void()> onClose);

  // What a wizard decides for itself.
  /// Sets the controls of the first choice.
  virtual void chooseFirst() = 0;
  /// Keeps what the controls of the selection page say in `selection_` or in members of its own.
  virtual void readSelection() = 0;
  virtual Catalogue buildFields() = 0;
  virtual void enableSelection() = 0;
  virtual NeededFields neededFields() const { return NeededFields::kNone; }
  /// Headings of columns that staging adds after the workbook's.
  virtual std::span<const std::string_view> ownColumns() const { return {}; }
  /// Headings that are staged when the sheet has them although the catalogue lacks them.
  virtual std::span<const std::string_view> sheetColumns() const { return {}; }
  /// False: the choice can be read but neither validated nor posted.
  virtual bool hasProcedures() const { return true; }
  virtual void validateRows(ImportRun& run) = 0;
  virtual PostResult postRows(ImportRun& run) = 0;
  /// Null: the choice is not tied to the ledger.
  virtual const ControlPlan* controlPlan() const { return nullptr; }

  // What it may call.
  void rebuildCatalogue();
  void say(const std::string& text, MessageIcon icon = MessageIcon::kInformation);
  /// The one error trap; ignores a handler that is called from another one's yield.
  void trap(const std::function<void()>& action);
  const Services& services() const { return services_; }
  CompanyContext& company() const { return company_; }

  /// What validators and posters are told of the choice.
  Selection selection_;

 private:
  void showCatalogue();
  void showTicks();
  void forgetValidation();
  // Pages.
  void showPage(WizardPage page);
  void showGuidelineSection(int section);
  void showStatusLine();
  void applyEnabling();
  // The road of a workbook.
  void readWorkbook();
  bool lacksFields(NeededFields needed);
  bool isPathAccepted();
  std::unique_ptr<Sheet> openWorkbook();
  bool checkHeader(const Sheet& sheet);
  bool stage(std::unique_ptr<Sheet> sheet);
  void resetResults();
  void validate();
  void summarise();
  void showTotals();
  void showLegend();
  void showUnknownMasters();
  void openErrorWorkbook();
  void copyToFinishPage();
  void post();
  void showPostResult();
  void showFinishText(const std::string& text);
  // Handlers' frame.
  ImportRun run();
  bool isOn(WizardPage page) const { return page_ == page; }
  void closeNow();
  /// The trap for a handler that works through the rows of a workbook.
  void trapRun(const std::function<void()>& action);

  const Services& services_;
  CompanyContext& company_;
  WizardTraits traits_;
  std::function<void()> onClose_;

  WizardPage page_ = WizardPage::kGuidelines;
  int guidelineSection_ = 1;
  Catalogue catalogue_;
  Findings findings_;
  RunTotals totals_;
  std::vector<UnknownMaster> unknownMasters_;
  PostResult postResult_;
  ControlTotals workbookTotals_;
  /// Reading and validating show their message in different labels.
  RunProgress dumping_{{lblStatus, lblCurrentStatus, ProgressBar1, services_.eventLoop}};
  RunProgress progress_{{lblMsg2, lblCurrentStatus, ProgressBar1, services_.eventLoop}};
  bool isBusy_ = false;
  bool isRunning_ = false;
  bool isValidated_ = false;
  bool mayPost_ = false;
  bool closeRequested_ = false;
};

}  // namespace orva
