#include "wizard/wizard_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;

int sectionShown(const frmImport& screen) {
  const auto visible = [&](std::size_t line) { return screen.lblRules[line].visible(); };
  return (visible(1) ? 1 : 0) + (visible(10) ? 2 : 0) + (visible(18) ? 3 : 0);
}

TEST(Guidelines, AreTurnedSectionBySection) {
  WizardScreen wizard;
  frmImport& screen = wizard.screen;
  EXPECT_TRUE(screen.fmHome.visible());
  EXPECT_EQ(sectionShown(screen), 1);
  screen.cmdHBack_Click();
  EXPECT_EQ(sectionShown(screen), 1);
  screen.cmdHNext_Click();
  EXPECT_EQ(sectionShown(screen), 2);
  screen.cmdHNext_Click();
  screen.cmdHBack_Click();
  screen.cmdHNext_Click();
  EXPECT_EQ(sectionShown(screen), 3);
  screen.cmdHNext_Click();
  EXPECT_EQ(screen.page(), WizardPage::kSelection);
  EXPECT_FALSE(screen.fmHome.visible());
  screen.cmdBack_Click(WizardPage::kSelection);
  EXPECT_EQ(screen.page(), WizardPage::kGuidelines);
  screen.cmdSkip_Click();
  screen.cmdHome_Click();
  EXPECT_EQ(sectionShown(screen), 1);
}

TEST(Pages, StatusLineNamesProgramAndCompany) {
  WizardScreen wizard;
  EXPECT_EQ(wizard.screen.lblVersion.caption(), "Version    :  1.00              SQL  :  BOOKS");
  EXPECT_EQ(wizard.screen.lblCompany.caption(), "Meadow Mills");
}

TEST(Pages, OneWorkbookFromChoiceToPostedRows) {
  WizardScreen wizard;
  frmImport& screen = wizard.screen;
  wizard.validateSales({"odd", ""});
  screen.cmdNext_Click(WizardPage::kResults);
  EXPECT_EQ(screen.page(), WizardPage::kFinish);
  EXPECT_EQ(screen.txtMsg.text(), "Click on Finish to Update into ORVA");
  EXPECT_EQ(screen.flxSave.text(2, 0), "A2");
  screen.cmdContinue_Click(WizardPage::kFinish);
  EXPECT_EQ(screen.txtMsg.text(), "Imported successfully");
  EXPECT_FALSE(screen.flxSave.visible());
  EXPECT_EQ(screen.lblCurrentStatus.caption(), "2 of 2 rows were posted.");
  EXPECT_EQ(screen.rowsPosted(), 2);
  EXPECT_EQ(wizard.postedRows->rows, (std::vector<std::vector<Value>>{{Value("A1"), Value("odd"), Value("C01")},
                                                                      {Value("A2"), Value(), Value("C01")}}));
  screen.cmdContinue_Click(WizardPage::kFinish);
  EXPECT_EQ(wizard.posted().size(), 2u) << "a workbook is posted once";
}

TEST(Pages, ACorrectedWorkbookIsReadAfreshByContinue) {
  WizardScreen wizard;
  wizard.validateSales({"bad", "fine"});
  wizard.screen.CmdSelErrors_Click();
  wizard.screen.cmdNext_Click(WizardPage::kResults);
  EXPECT_EQ(wizard.screen.page(), WizardPage::kResults);
  wizard.putSales({"corrected", "fine", "one more"});
  wizard.screen.cmdContinue_Click(WizardPage::kResults);
  EXPECT_EQ(wizard.screen.errorCount(), 0);
  EXPECT_EQ(wizard.screen.recordCount(), 3);
  EXPECT_EQ(wizard.screen.grid1.columnCount(), 6);
  EXPECT_TRUE(wizard.screen.grid1.rowVisible(1));
  EXPECT_FALSE(wizard.screen.CmdExp.enabled());
  EXPECT_EQ(wizard.screen.CmdSelErrors.caption(), "&Show only Errors");
}

TEST(Pages, AnotherChoiceForgetsWhatWasValidated) {
  const std::vector<std::function<void(WizardScreen&)>> changes{
      [](WizardScreen& wizard) { wizard.screen.optKind_Click(ImportKindId::kAmc); },
      [](WizardScreen& wizard) { wizard.tick("Remarks", false); },
      [](WizardScreen& wizard) { wizard.screen.cmdSelectAll_Click(); }};
  for (const auto& change : changes) {
    WizardScreen wizard;
    wizard.validateSales({"fine"});
    wizard.screen.cmdBack_Click(WizardPage::kResults);
    change(wizard);
    EXPECT_FALSE(wizard.screen.cmdNext[indexOf(WizardPage::kResults)].enabled());
  }
}

TEST(Pages, ChoosingAFileTakesOnlyOneThatExists) {
  WizardScreen wizard;
  wizard.fakes.dialogs.file = "c:\\books\\gone.xls";
  wizard.screen.cmdExcel_Click();
  EXPECT_EQ(wizard.screen.txtExcel.text(), "");
  wizard.fakes.files.put("c:\\books\\here.xls");
  wizard.fakes.dialogs.file = "c:\\books\\here.xls";
  wizard.screen.cmdExcel_Click();
  EXPECT_EQ(wizard.screen.txtExcel.text(), "c:\\books\\here.xls");
  EXPECT_EQ(wizard.fakes.dialogs.fileQuestions.at(0).filter, "Excel(*.xls)|*.xls|All Files(*.*)|*.*");
}

TEST(Posting, AFailureKeepsEarlierRowsAndTellsHowMany) {
  WizardScreen wizard;
  wizard.validateSales({"", "", "", ""});
  wizard.screen.cmdNext_Click(WizardPage::kResults);
  wizard.faulty->plan().failAt(DatabaseCall::kStore, 3, provider_number::kUnspecified, "Duplicate key.");
  wizard.screen.cmdContinue_Click(WizardPage::kFinish);
  EXPECT_EQ(wizard.posted(), (Texts{"A1", "A2"}));
  EXPECT_EQ(wizard.fakes.dialogs.lastText(), "Duplicate key.");
  EXPECT_EQ(wizard.screen.txtMsg.text(), "Duplicate key.\n2 of 4 rows were posted.");
  EXPECT_FALSE(wizard.screen.postResult().finished);
  EXPECT_EQ(wizard.screen.rowsPosted(), 2);
  EXPECT_EQ(wizard.screen.ProgressBar1.value(), 0);
  wizard.screen.cmdContinue_Click(WizardPage::kFinish);
  EXPECT_EQ(wizard.posted().size(), 2u) << "posted rows must not be posted twice";
}

TEST(Posting, ALostConnectionAndATableThatCannotBeOpenedEndTheRun) {
  for (const DatabaseCall call : {DatabaseCall::kOpen, DatabaseCall::kStore}) {
    WizardScreen wizard;
    wizard.validateSales({"", ""});
    wizard.screen.cmdNext_Click(WizardPage::kResults);
    if (call == DatabaseCall::kOpen) {
      wizard.faulty->plan().failAt(call, 1, provider_number::kNoSuchTable, "No table.");
    } else {
      wizard.faulty->plan().loseConnectionAt(2);
    }
    wizard.screen.cmdContinue_Click(WizardPage::kFinish);
    EXPECT_FALSE(wizard.screen.postResult().finished);
    EXPECT_EQ(wizard.screen.rowsPosted(), 0);
    EXPECT_EQ(wizard.fakes.dialogs.messages.size(), 1u);
  }
}

constexpr ControlColumn kSaleAmount[] = {{.label = "Amount", .heading = "SaleAMT", .field = "Amount"}};
constexpr ControlPlan kSalePlan = {.records = "Sales", .columns = kSaleAmount, .posted = {}};

/// A posting run that reads this back from the company.
template <std::int64_t kRecords, int kCents>
PostResult readsBack(ImportRun& run) {
  constexpr std::int64_t kUnitsPerCent = Currency::kUnitsPerOne / 100;
  ControlTotals company{.records = kRecords, .amounts = {Currency::fromUnits(kCents * kUnitsPerCent)}};
  return {.finished = true, .rowsPosted = run.rowCount(), .text = "Imported successfully", .controlTotals = company};
}

PostResult readsNothingBack(ImportRun&) {
  return {.finished = true, .rowsPosted = 2, .text = "Imported successfully", .controlTotals = std::nullopt};
}

/// Two sales of 10: what the company must keep of them, and what the finish page says when it does not.
TEST(ControlTotals, TieTheCompanyToTheWorkbookOnTheFinishPage) {
  struct Case {
    PostResult (*post)(ImportRun&);
    const char* company;
    const char* error;
  };
  const std::string ofWorkbook = "Control totals of the workbook : Rows 2, Amount 20.00";
  const Case kCases[] = {
      {readsBack<2, 2000>, "\nControl totals of the company  : Rows 2, Amount 20.00", ""},
      {readsBack<2, 1999>, "\nControl totals of the company  : Rows 2, Amount 19.99",
       "The control totals of the company differ from those of the workbook. The rows stay posted.\n"},
      {readsBack<1, 2000>, "\nControl totals of the company  : Rows 1, Amount 20.00",
       "The control totals of the company differ from those of the workbook. The rows stay posted.\n"},
      {readsNothingBack, "", "The control totals of the company could not be read. The rows stay posted.\n"},
  };
  for (const Case& one : kCases) {
    WizardScreen wizard;
    for (ImportProcedures& kind : wizard.registry) {
      kind.controlPlan = &kSalePlan;
      kind.post = one.post;
    }
    wizard.validateSales({"", ""});
    wizard.screen.cmdNext_Click(WizardPage::kResults);
    EXPECT_EQ(wizard.screen.txtMsg.text(), "Click on Finish to Update into ORVA\n" + ofWorkbook);
    wizard.screen.cmdContinue_Click(WizardPage::kFinish);
    EXPECT_EQ(wizard.screen.txtMsg.text(), "Imported successfully\n" + ofWorkbook + one.company);
    const std::string error = *one.error == '\0' ? "" : one.error + ofWorkbook + one.company;
    EXPECT_EQ(wizard.fakes.dialogs.lastText(), error);
    EXPECT_EQ(wizard.screen.controlTotalsAgree(), error.empty());
    if (error.empty()) continue;
    EXPECT_EQ(wizard.fakes.dialogs.messages.back().icon, MessageIcon::kCritical);
  }
}

TEST(Trap, ShowsADatabaseFailureAndTheScreenGoesOn) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  wizard.putSales({"fine"});
  wizard.faulty->plan().failAt(DatabaseCall::kConnect, 1, provider_number::kLoginFailed, "No log-in.");
  wizard.read();
  EXPECT_EQ(wizard.fakes.dialogs.texts(), Texts{"No log-in."});
  EXPECT_EQ(wizard.fakes.dialogs.messages[0].icon, MessageIcon::kCritical);
  EXPECT_FALSE(wizard.screen.isRunning());
  wizard.read();
  EXPECT_EQ(wizard.screen.page(), WizardPage::kResults);
}

TEST(Closing, DuringPostingStopsAfterTheRowAndTellsHowMany) {
  WizardScreen wizard;
  wizard.validateSales({"", "", "", "", ""});
  wizard.screen.cmdNext_Click(WizardPage::kResults);
  // The first yield is the start of the run, each further one follows a row.
  wizard.fakes.eventLoop.actAtYield(3, [&] { wizard.screen.requestClose(); });
  wizard.screen.cmdContinue_Click(WizardPage::kFinish);
  EXPECT_EQ(wizard.posted(), (Texts{"A1", "A2"}));
  EXPECT_EQ(wizard.fakes.dialogs.texts(), Texts{"The import was stopped. 2 of 5 rows were posted."});
  EXPECT_EQ(wizard.closed, 1);
}

TEST(Closing, DuringReadingOrValidatingStopsAtOnce) {
  // Reading three rows yields five times; the seventh yield is a row of validation.
  for (const int yield : {2, 7}) {
    WizardScreen wizard;
    wizard.choose(ImportKindId::kSale);
    wizard.putSales({"bad", "bad", "bad"});
    wizard.fakes.eventLoop.actAtYield(yield, [&] { wizard.screen.requestClose(); });
    wizard.read();
    EXPECT_FALSE(wizard.screen.isValidated());
    EXPECT_TRUE(wizard.fakes.dialogs.messages.empty()) << "nothing is asked when the window goes";
    EXPECT_EQ(wizard.closed, 1);
  }
}

TEST(Closing, HandlersDoNothingWhileARunIsOn) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  wizard.putSales({"fine", "fine"});
  wizard.fakes.eventLoop.actAtYield(2, [&] {
    EXPECT_TRUE(wizard.screen.isRunning());
    EXPECT_FALSE(wizard.screen.cmdBack[indexOf(WizardPage::kResults)].enabled());
    wizard.screen.optKind_Click(ImportKindId::kAmc);
    wizard.screen.cmdHome_Click();
    wizard.read();
  });
  wizard.read();
  EXPECT_EQ(wizard.screen.selection().kind, ImportKindId::kSale);
  EXPECT_EQ(wizard.screen.page(), WizardPage::kResults);
  EXPECT_EQ(wizard.fakes.workbooks.opened, 1);
}

TEST(Closing, WithoutARunIsImmediate) {
  WizardScreen wizard;
  wizard.screen.cmdHClose_Click();
  EXPECT_EQ(wizard.closed, 1);
}

}  // namespace
}  // namespace orva
