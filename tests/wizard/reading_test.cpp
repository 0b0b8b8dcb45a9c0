#include "wizard/staging.h"
#include "wizard/wizard_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;

TEST(Reading, TellsWhyAWorkbookCannotBeRead) {
  struct Case {
    std::string path;
    std::optional<WorkbookFault> fault;
    std::string text;
  };
  const Case cases[] = {
      {"", {}, "Please select an excel file"},
      {"c:\\books\\new.xlsx", {}, "Please select only an Excel file"},
      {"c:\\books\\new.csv", {}, "Please select only an Excel file"},
      {"c:\\books\\new.XLS", WorkbookFault::kNoSuchSheet,
       "The excel file you selected must have a sheet named 'Asset' for importing Asset details"},
      {"c:\\books\\new.xls", WorkbookFault::kEncrypted, "told by the driver"},
      {"c:\\books\\new.xls", WorkbookFault::kDamaged, "told by the driver"},
  };
  for (const Case& test : cases) {
    WizardScreen wizard;
    wizard.choose(ImportKindId::kSale);
    wizard.screen.txtExcel.setText(test.path);
    if (test.fault) wizard.fakes.workbooks.failWith(*test.fault, "told by the driver");
    wizard.read();
    EXPECT_EQ(wizard.fakes.dialogs.texts(), Texts{test.text}) << test.path;
    EXPECT_EQ(wizard.fakes.dialogs.messages.at(0).title, "ORVA Import");
    EXPECT_EQ(wizard.screen.page(), WizardPage::kSelection);
    EXPECT_FALSE(wizard.screen.isValidated());
  }
}

TEST(Header, ColoursMissingLinesAndStops) {
  struct Case {
    const char* what;
    Texts header;
    Texts blue;
    Texts red;
  };
  const Case cases[] = {
      {"all there", {"ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo", "Remarks"}, {}, {}},
      {"blanks and case", {" assetid ", "INVOICENO", "saledate", "SaleAmt", "serialno", "REMARKS"}, {}, {}},
      {"missing", {"ASSETID", "Invoice No", "SaleDate", "SaleAMT"}, {"InvoiceNo", "SerialNo"}, {"Remarks"}},
      {"empty sheet", {}, {"ASSETID", "InvoiceNo", "SaleDate", "SaleAMT", "SerialNo"}, {"Remarks"}},
  };
  for (const Case& test : cases) {
    WizardScreen wizard;
    wizard.choose(ImportKindId::kSale);
    wizard.tick("Remarks");
    wizard.putRows({test.header});
    wizard.read();
    Texts blue, red;
    for (int line = 0; line < wizard.screen.lstFields.count(); ++line) {
      const ListView::Line& shown = wizard.screen.lstFields.line(line);
      if (!shown.bold) continue;
      (shown.foreColour == colours::kBlue ? blue : red).push_back(shown.cells[1]);
    }
    EXPECT_EQ(blue, test.blue) << test.what;
    EXPECT_EQ(red, test.red) << test.what;
    const bool stops = !blue.empty();
    EXPECT_EQ(wizard.screen.lblBlue.visible(), stops);
    EXPECT_EQ(wizard.screen.page(), stops ? WizardPage::kSelection : WizardPage::kResults);
    EXPECT_TRUE(wizard.fakes.dialogs.messages.empty());
  }
}

TEST(Header, IsCheckedAgainOnRefresh) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  wizard.putRows({{"ASSETID"}});
  wizard.read();
  EXPECT_TRUE(wizard.screen.lblBlue.visible());
  wizard.putSales({});
  wizard.screen.cmdRefresh_Click();
  EXPECT_FALSE(wizard.screen.lblBlue.visible());
  EXPECT_FALSE(wizard.screen.lstFields.line(1).bold);
  EXPECT_EQ(wizard.screen.page(), WizardPage::kSelection);
}

TEST(Header, TheIdentifierAloneIsNotEnoughToModify) {
  for (const ImportKindId kind : {ImportKindId::kAcquired, ImportKindId::kUdf}) {
    WizardScreen wizard;
    wizard.choose(kind, AssetMode::kModifyByAssetId);
    if (kind == ImportKindId::kAcquired) wizard.tick("SALVAGEVALUE", false);
    wizard.putRows({{"ASSETID"}, {"A1"}});
    wizard.read();
    EXPECT_EQ(wizard.fakes.dialogs.texts(), Texts{"Please select the fields which you want modify in ORVA"});
    EXPECT_EQ(wizard.fakes.dialogs.messages.at(0).title, "ORVA");
    EXPECT_EQ(wizard.screen.page(), WizardPage::kSelection);
  }
}

TEST(Header, UserDefinedFieldsNeedOneBeforeTheWorkbookIsOpened) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kUdf);
  wizard.putRows({{"ASSETID"}, {"A1"}});
  wizard.read();
  EXPECT_EQ(wizard.fakes.dialogs.messages.size(), 1u);
  EXPECT_EQ(wizard.fakes.workbooks.opened, 0);
  EXPECT_EQ(wizard.screen.page(), WizardPage::kSelection);
}

TEST(Staging, CopiesTickedColumnsInTheWorkbooksOrder) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kChangeCategory);
  wizard.putRows({{"Remarks", "CAT2", "Unknown", "DocRef", "CAT1", "ASSETID", "CAT1"},
                  {"not ticked", "Lathes", "?", "7", "Plant", "A1", "doubled"},
                  {"", "", "", "", "", "", ""},
                  {"", "", "", "", "", "A2", ""},
                  {"", " ", "", "", "", "", ""},
                  {}});
  wizard.read();
  EXPECT_EQ(wizard.rows(), (Texts{"CAT2|DocRef|CAT1|ASSETID|CODE", "Lathes|7|Plant|A1|", "||||", "|||A2|"}));
  EXPECT_EQ(wizard.screen.lblTotalRec.caption(), "Total Records             :  3");
  EXPECT_EQ(wizard.screen.recordCount(), 3);
}

TEST(Staging, NormalisesNumbers) {
  struct Case {
    const char* column;
    const char* cell;
    const char* staged;
  };
  const Case cases[] = {
      {"QTY", "3.75", "3"},           {"QTY", "12", "12"},
      {"QTY", "many", "many"},        {"COST", "1500", "1500.00"},
      {"COST", "12.5", "12.50"},      {"COST", "0.5", ".50"},
      {"COST", "10.125", "10.125"},   {"COST", "", ""},
      {"COST", "12a", "12a"},         {"ACCDEP", "-7", "-7.00"},
      {"accdep2", "1", "1.00"},       {"SALVAGEVALUE", "100", "100.00"},
      {"ACCDEP1", "10.126", "10.13"}, {"ACCDEP", "10.126", "10.126"},
      {"GST", "12.5", "12.5"},        {"DESCRIPTION", "1.2.3", "1.2.3"},
  };
  for (const Case& test : cases) EXPECT_EQ(normalisedCell(test.column, test.cell), test.staged) << test.cell;
}

TEST(Staging, StopsAtACellWithoutValue) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kSale);
  const std::vector<OutputCell> header{textCell("ASSETID"), textCell("InvoiceNo"), textCell("SaleDate"),
                                       textCell("SaleAMT"), textCell("SerialNo"),  textCell("Remarks")};
  wizard.putCells({header,
                   {textCell("A1"), textCell("1"), dateCell("01/04/2005"), numberCell("5"), textCell("1"), errorCell()},
                   {textCell("A2"), textCell("1"), dateCell("01/04/2005"), errorCell(), textCell("1")}});
  wizard.read();
  EXPECT_EQ(wizard.fakes.dialogs.texts(), Texts{"Data type not matching in Column SaleAMT Row no. 2\n\nPlease Check if "
                                                "the Data type is same throughout the column"});
  EXPECT_EQ(wizard.fakes.dialogs.messages.at(0).icon, MessageIcon::kCritical);
  EXPECT_EQ(wizard.screen.page(), WizardPage::kSelection);
  EXPECT_EQ(wizard.screen.grid1.rowCount(), 0);
  EXPECT_FALSE(wizard.screen.isValidated());
}

TEST(Staging, CountsTheUnitsOfEveryRow) {
  WizardScreen wizard;
  wizard.choose(ImportKindId::kClosing);
  wizard.screen.chkMultAssetId.setValue(true);
  wizard.screen.chkMultAssetId_Click();
  for (int line = 0; line < wizard.screen.lstFields.count(); ++line) wizard.screen.lstFields_ItemCheck(line, false);
  Texts header, row;
  for (const FieldRow& field : wizard.screen.catalogue()) header.push_back(field.excelName);
  const auto withQuantity = [&](const std::string& quantity) {
    Texts cells;
    for (const std::string& name : header) cells.push_back(name == "QTY" ? quantity : "x");
    return cells;
  };
  wizard.putRows({header, withQuantity("2"), withQuantity("3.9"), withQuantity(""), withQuantity("10")});
  wizard.read();
  EXPECT_EQ(wizard.screen.unitCount(), 16);
  EXPECT_EQ(wizard.screen.recordCount(), 4);
}

TEST(Staging, AHeaderWithoutRowsHasNothingToDo) {
  WizardScreen wizard;
  wizard.validateSales({});
  EXPECT_EQ(wizard.screen.page(), WizardPage::kResults);
  EXPECT_EQ(wizard.screen.lblTotalRec.caption(), "Total Records             :  0");
  EXPECT_EQ(wizard.screen.lblTotalErr.caption(), "Total Records with Errors : 0");
  EXPECT_TRUE(wizard.screen.isValidated());
  EXPECT_TRUE(wizard.fakes.dialogs.messages.empty());
}

}  // namespace
}  // namespace orva
