#include "wizard/results.h"

#include "wizard/wizard_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;

const std::string kBackdatedQuestion = "There are 1  backdated entries. Do you still want to import ?";
std::string errorQuestion(int rows) {
  return "Error found in " + std::to_string(rows) +
         " entries.\nError descriptions are given in the Error file.\nDo you want to open the error file?";
}

TEST(Results, ShowFindingsInThreeColumnsAndColours) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  wizard.tick("Remarks");
  wizard.putRows({{"ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo", "Remarks"},
                  {"A1", "", "", "", "", "fine"},
                  {"bad1", "", "", "", "", "bad, odd"},
                  {"A3", "", "", "", "", "odd"},
                  {"A4", "", "", "", "", "old"}});
  wizard.fakes.dialogs.defaultAnswer = Answer::kNo;
  wizard.read();
  EXPECT_EQ(wizard.rows(),
            (Texts{"ASSETID|InvoiceNo|SaleDate|SaleAMT|SerialNo|Remarks|ERROR|ERROR Column|ERROR Description",
                   "A1|||||fine|||", "bad1|||||bad, odd|E|ASSETID , Remarks|bad1 is no asset,bad, odd is no remark",
                   "A3|||||odd|||", "A4|||||old|E|Remarks|old is late"}));
  const FlexGrid& grid = wizard.screen.grid1;
  EXPECT_EQ(grid.cellColour(1, 5), colours::kWhite);
  EXPECT_EQ(grid.cellColour(2, 0), colours::kPink);
  EXPECT_EQ(grid.cellColour(2, 5), colours::kPink);
  EXPECT_EQ(grid.cellColour(3, 5), colours::kLightYellow);
  EXPECT_EQ(grid.cellColour(4, 5), colours::kPink) << "a backdated entry that was refused";
  EXPECT_EQ(wizard.screen.marks().size(), 4u);

  wizard.screen.grid1_MouseMove(2, 5);
  EXPECT_EQ(wizard.screen.lblErrormsg.caption(), "bad, odd is no remark");
  wizard.screen.grid1_MouseMove(3, 5);
  EXPECT_EQ(wizard.screen.lblErrormsg.caption(), "");
}

struct SummaryCase {
  const char* what;
  Texts remarks;
  bool backdatedTicked;
  /// "y" and "n" for the answers, in order.
  const char* answers;
  Texts questions;
  /// Errors, warnings.
  const char* counts;
  /// What may follow: "n"ext page, "e"xport, "f"ilter, "o"pened error file.
  const char* follows;
};

TEST(Summary, AsksInOrderAndDecidesWhatMayFollow) {
  const std::string backdated = kBackdatedQuestion;
  const SummaryCase cases[] = {
      {"clean", {"a", "b"}, false, "", {}, "0 0", "n"},
      {"warning", {"odd", "b"}, false, "", {}, "0 1", "n"},
      {"error, opened", {"bad", "odd bad"}, false, "y", {errorQuestion(2)}, "2 0", "efo"},
      {"error, not opened", {"bad"}, false, "n", {errorQuestion(1)}, "1 0", "ef"},
      {"backdated, not ticked", {"old", "b"}, false, "n", {errorQuestion(1)}, "1 0", "ef"},
      {"backdated, accepted", {"old", "b"}, true, "y", {backdated}, "0 1", "ne"},
      {"backdated, refused", {"old", "b"}, true, "nn", {backdated, errorQuestion(1)}, "1 0", "ef"},
      {"accepted with a warning in the row", {"old odd"}, true, "y", {backdated}, "0 2", "ne"},
      {"refused with an error in the row", {"old bad"}, true, "nn", {backdated, errorQuestion(2)}, "2 0", "ef"},
      {"accepted beside an error", {"old", "bad"}, true, "y", {backdated}, "1 1", "e"},
  };
  for (const SummaryCase& test : cases) {
    WizardScreen wizard;
    // Only acquisitions in Add mode know backdated entries.
    wizard.choose(ImportKindId::kAcquired);
    wizard.screen.ChkBackdate.setValue(test.backdatedTicked);
    wizard.screen.ChkBackdate_Click();
    wizard.tick("REMARKS");
    Texts header;
    for (const FieldRow& field : wizard.screen.catalogue()) header.push_back(field.excelName);
    std::vector<Texts> rows{header};
    for (const std::string& remark : test.remarks) {
      rows.emplace_back(header.size(), "x");
      rows.back()[static_cast<std::size_t>(wizard.lineOf("REMARKS"))] = remark;
    }
    wizard.putRows(rows);
    for (const char answer : std::string(test.answers)) {
      wizard.fakes.dialogs.answers.push_back(answer == 'y' ? Answer::kYes : Answer::kNo);
    }
    wizard.read();
    EXPECT_EQ(wizard.fakes.dialogs.texts(), test.questions) << test.what;
    EXPECT_TRUE(wizard.fakes.dialogs.answers.empty()) << test.what;
    const std::string counts = test.counts;
    EXPECT_EQ(wizard.screen.lblTotalErr.caption(), "Total Records with Errors : " + counts.substr(0, 1)) << test.what;
    EXPECT_EQ(wizard.screen.lblStatus.caption(), "Total Records with Warnings : " + counts.substr(2)) << test.what;
    const bool goesOn = wizard.screen.cmdNext[indexOf(WizardPage::kResults)].enabled();
    EXPECT_EQ(std::string(goesOn ? "n" : "") + (wizard.screen.CmdExp.enabled() ? "e" : "") +
                  (wizard.screen.CmdSelErrors.enabled() ? "f" : "") + (wizard.fakes.shell.opened.empty() ? "" : "o"),
              test.follows)
        << test.what;
    const bool isRefused = test.backdatedTicked && test.answers[0] == 'n';
    for (const CellMark& mark : wizard.screen.marks()) {
      EXPECT_FALSE(isRefused && mark.findingClass == FindingClass::kBackdated) << test.what;
      EXPECT_EQ(wizard.screen.grid1.cellColour(mark.row, mark.column), colourOf(mark.findingClass)) << test.what;
    }
    wizard.screen.cmdNext_Click(WizardPage::kResults);
    EXPECT_EQ(wizard.screen.page(), goesOn ? WizardPage::kFinish : WizardPage::kResults) << test.what;
  }
}

TEST(Legend, ShowsWhatTheSheetHas) {
  struct Case {
    Texts remarks;
    bool yellow;
    bool blue;
  };
  const Case cases[] = {{{"fine"}, false, false}, {{"odd bad"}, true, false}, {{"old"}, false, true}};
  for (const Case& test : cases) {
    WizardScreen wizard;
    wizard.validateSales(test.remarks);
    EXPECT_TRUE(wizard.screen.lblMsgPink.visible());
    EXPECT_EQ(wizard.screen.lblMsgYellow.visible(), test.yellow);
    EXPECT_EQ(wizard.screen.lblBlueMsg.visible(), test.blue);
    EXPECT_EQ(wizard.screen.lblBlueMsg.caption(), "Indicates Backdated entry. But it will not be accepted in ORVA.");
  }
}

TEST(Filter, ShowsErrorRowsOrAll) {
  WizardScreen wizard;
  wizard.validateSales({"fine", "bad", "odd"});
  const auto visible = [&] {
    std::string rows;
    for (int row = 0; row < wizard.screen.grid1.rowCount(); ++row)
      rows += wizard.screen.grid1.rowVisible(row) ? '1' : '0';
    return rows;
  };
  wizard.screen.CmdSelErrors_Click();
  EXPECT_EQ(visible(), "1010");
  EXPECT_EQ(wizard.screen.CmdSelErrors.caption(), "&All");
  wizard.screen.CmdSelErrors_Click();
  EXPECT_EQ(visible(), "1111");
  EXPECT_EQ(wizard.screen.CmdSelErrors.caption(), "&Show only Errors");
}

TEST(ErrorWorkbook, HoldsTheErrorRowsAsTheyStand) {
  WizardScreen wizard;
  wizard.validateSales({"fine", "bad\ttab", "it's bad"});
  wizard.screen.CmdExp_Click();
  EXPECT_EQ(wizard.fakes.files.readLines("c:\\orva\\ExportOrva.xls"),
            (Texts{"ASSETID\tInvoiceNo\tSaleDate\tSaleAMT\tSerialNo\tRemarks\tERROR\tERROR Column\tERROR Description",
                   "A2\t7\t01/04/2005\t10\t1\tbad\ttab\tE\tRemarks\tbad\ttab is no remark",
                   "A3\t7\t01/04/2005\t10\t1\tit's bad\tE\tRemarks\tit's bad is no remark"}));
  EXPECT_EQ(wizard.fakes.shell.opened.back(), "c:\\orva\\ExportOrva.xls");
}

TEST(ErrorWorkbook, ThatIsOpenElsewhereIsLeftAlone) {
  WizardScreen wizard;
  wizard.fakes.files.put("c:\\orva\\ExportOrva.xls", {"old"});
  wizard.fakes.files.lock("c:\\orva\\ExportOrva.xls");
  wizard.validateSales({"bad"});
  EXPECT_EQ(wizard.fakes.dialogs.lastText(), "Close 'ExportOrva.xls' Excel file and try again");
  EXPECT_TRUE(wizard.fakes.shell.opened.empty());
  EXPECT_EQ(wizard.row(1), "A1|7|01/04/2005|10|1|bad|E|Remarks|bad is no remark");
  wizard.fakes.files.unlock("c:\\orva\\ExportOrva.xls");
  EXPECT_EQ(wizard.fakes.files.readLines("c:\\orva\\ExportOrva.xls"), Texts{"old"});
}

TEST(ErrorWorkbook, ThatCannotBeWrittenIsToldAndTheScreenLives) {
  WizardScreen wizard;
  wizard.fakes.files.failAtCall(2);
  wizard.validateSales({"bad"});
  ASSERT_EQ(wizard.fakes.dialogs.messages.size(), 2u);
  EXPECT_EQ(wizard.fakes.dialogs.messages[1].icon, MessageIcon::kCritical);
  EXPECT_EQ(wizard.screen.errorCount(), 1);
  wizard.screen.CmdExp_Click();
  EXPECT_EQ(wizard.fakes.shell.opened.size(), 1u);
}

TEST(ErrorWorkbook, TakesTheFieldNamesOfTheCatalogue) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  wizard.screen.cmdExport_Click();
  EXPECT_EQ(wizard.fakes.files.readLines("c:\\orva\\ExportOrva.xls"),
            Texts{"ASSETID\tInvoiceNo\tSaleDate\tSaleAMT\tSerialNo\tRemarks"});
  EXPECT_EQ(wizard.fakes.shell.opened.size(), 1u);
}

TEST(Findings, OfAWholeSheetCheckFindTheirRows) {
  Findings findings;
  const auto add = [&](int row, FindingClass findingClass, std::string_view text) {
    findings.add({.row = row, .column = 0, .findingClass = findingClass, .text = text});
  };
  add(1, FindingClass::kWarning, "one");
  findings.countRow(1);
  add(3, FindingClass::kError, "three");
  findings.countRow(3);
  add(1, FindingClass::kError, "late");
  findings.settle();
  EXPECT_EQ(findings.errorRows(), 2);
  EXPECT_EQ(findings.warningRows(), 0);
  EXPECT_EQ(findingTextAt(findings, 1, 0), "one,late");
  EXPECT_EQ(findingTextAt(findings, 3, 0), "three");
}

TEST(Grid, TellsTheWindowOnceAndKeepsColoursWhenColumnsAreAdded) {
  TextTable table;
  table.reset(2);
  for (int row = 0; row < 3; ++row) table.addRow();
  FlexGrid grid("grid1");
  grid.setTable(table);
  grid.setCellColour(2, 1, colours::kPink);
  grid.setCellColour(1, 0, colours::kLightBlue);
  int told = 0;
  grid.observe([&] { ++told; });
  {
    const UpdateBatch batch(grid);
    grid.addColumns(3);
    grid.setText(2, 4, "x");
    EXPECT_EQ(told, 0);
  }
  EXPECT_EQ(told, 1);
  EXPECT_EQ(grid.cellColour(2, 1), colours::kPink);
  EXPECT_EQ(grid.cellColour(1, 0), colours::kLightBlue);
  EXPECT_EQ(grid.cellColour(1, 1), colours::kWhite);
  EXPECT_EQ(grid.cellColour(2, 4), colours::kWhite);
}

}  // namespace
}  // namespace orva
