#include "masters/frmMasterImport.h"

#include <gtest/gtest.h>

#include "masters/master_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;
using Kind = MasterKindId;

const Sheet2D kDepartments{{"DeptCode", "DeptName"}, {"D1", "Accounts"}, {"D2", "Sales"}, {"D3", "Purchase"}};

struct PostCase {
  Kind kind;
  Sheet2D sheet;
  const char* query;
  Texts rows;
};

const PostCase kPosted[] = {
    {Kind::kDepartment,
     {{"DeptName", "DEPTCODE", "Remarks"}, {" O'Brien \"Stores\" ", " d1", "not read"}},
     "select Deptcode, DeptName from Dept where Deptcode <> '0007'",
     {"d1|O'Brien \"Stores\""}},
    {Kind::kCostCentre,
     {{"CentreCode", "COSTCENTRE"}, {"000", "वर्क्स"}},
     "select CentreCode, CentreName from Costcentre where CentreCode <> '0007'",
     {"000|वर्क्स"}},
    {Kind::kVendor,
     {{"VendorCode", "VendorName", "add1", "add2", "add3", "City", "Pin", "vattin", "csttin", "PAN"},
      {"V1", "Acme", "1", "2", "3", "Pune", "411001", "T1", "T2", "AAAPL1234C"},
      {"V2", "Bose", "", "", "", "", "", "", "", ""}},
     "select * from Vendor where Vendorcode <> '0007'",
     {"V1|Acme|1|2|3|Pune|411001|T1|T2|AAAPL1234C", "V2|Bose||||||||"}},
    {Kind::kUser,
     {{"Usercode", "Username", "add1", "City"}, {"U1", "Iyer", "not kept", "Pune"}},
     "select Usedby, Username from Users where Usedby <> '0007'",
     {"U1|Iyer"}},
    {Kind::kLocation,
     {{"LocCode", "MAINLOC", "SUBLOC", "PHYLOC"}, {"L1", "Pune", "Plant 1", "Bay 2"}, {"", "Nashik", "Shop", "Bay"}},
     "select cocd, recordid, LocCode, MainLocation, SubLocation, PhysicalLocation from Location where recordid > 12 "
     "order by recordid",
     {"K1|13|L1|Pune|Plant 1|Bay 2", "K1|14||Nashik|Shop|Bay"}},
    {Kind::kMiscellaneous,
     {{"Code", "MName"}, {"0007", "Grant"}},
     "select Master, Code, MName from MisData where Master <> 'M1'",
     {"M2|0007|Grant"}},
};

TEST(MasterPosting, StoresEveryRowOfEveryMasterAndKnowsThemTheSecondTime) {
  for (const SqlDialect dialect : kBothDialects) {
    for (const PostCase& c : kPosted) {
      MasterScreen master(dialect);
      master.import(c.kind, c.sheet, "Funding");
      EXPECT_EQ(master.screen.txtMsg.text(), "Imported successfully") << masterKind(c.kind).batchName;
      EXPECT_EQ(master.rows(c.query), c.rows);
      master.read(c.kind, c.sheet, "Funding");
      EXPECT_EQ(master.screen.errorCount(), static_cast<int>(c.rows.size())) << masterKind(c.kind).batchName;
    }
  }
}

TEST(MasterPosting, NothingIsPostedWhileARowIsInError) {
  MasterScreen master;
  Sheet2D sheet = kDepartments;
  sheet.push_back({"D1", "Twice"});
  master.fakes.dialogs.defaultAnswer = Answer::kYes;
  master.read(Kind::kDepartment, sheet);
  EXPECT_EQ(master.screen.lblTotalErr.caption(), "Total Records with Errors : 1");
  EXPECT_EQ(master.screen.lblStatus.caption(), "Total Records with Warnings : 0");
  EXPECT_EQ(master.screen.lblMsg2.caption(), "Finished validating data");
  EXPECT_EQ(master.fakes.dialogs.messages.back().title, "ORVA ExcelImport");
  EXPECT_EQ(master.fakes.dialogs.lastText(),
            "Error found in 1 entries.\nError descriptions are given in the Error file.\nDo you want to open the error "
            "file?");
  EXPECT_EQ(master.errorFile(), (Texts{"DeptCode\tDeptName\tERROR\tERROR Column\tERROR Description",
                                       "D1\tTwice\tE\tDeptCode\t Duplicate Values Not Allowed "}));
  master.finish();
  EXPECT_EQ(master.rows("select Deptcode from Dept"), Texts{"0007"});
}

TEST(MasterPosting, AnEntryThatAppearedMeanwhileEndsTheRunWithoutHarm) {
  MasterScreen master;
  master.read(Kind::kDepartment, kDepartments);
  master.prepare({"insert into Dept (Deptcode, DeptName) values ('d2', 'Entered by hand')"});
  master.finish();
  EXPECT_FALSE(master.screen.postResult().finished);
  EXPECT_EQ(master.rows("select DeptName from Dept where Deptcode in ('D1', 'D2', 'D3') order by Deptcode"),
            (Texts{"Accounts", "Entered by hand"}));
}

TEST(MasterWorkbook, FaultsAreToldAndNothingIsRead) {
  struct Case {
    const char* path;
    const char* text;
    MessageIcon icon;
  };
  const Case kCases[] = {
      {"", "Please select an excel file", MessageIcon::kInformation},
      {"c:\\books\\masters.xlsx", "Please select only an Excel file", MessageIcon::kInformation},
      {"c:\\books\\assets.xls", "The excel file you selected must have a sheet named 'Master' for importing Masters",
       MessageIcon::kCritical},
  };
  MasterScreen master;
  master.fakes.workbooks.putTexts("c:\\books\\assets.xls", "Asset", kDepartments);
  master.screen.cmdSkip_Click();
  for (const Case& c : kCases) {
    master.screen.txtExcel.setText(c.path);
    master.screen.cmdNext_Click(WizardPage::kSelection);
    EXPECT_EQ(master.fakes.dialogs.lastText(), c.text);
    EXPECT_EQ(master.fakes.dialogs.messages.back().title, "ORVA Import");
    EXPECT_EQ(master.fakes.dialogs.messages.back().icon, c.icon);
    EXPECT_EQ(master.screen.page(), WizardPage::kSelection);
  }
}

TEST(MasterWorkbook, HeaderRowGivesTheNamesOfItsColumns) {
  MasterScreen master;
  EXPECT_EQ(master.findings(Kind::kDepartment, {{" deptname ", "DEPTCODE"}}), Texts());
  EXPECT_EQ(master.screen.recordCount(), 0);
  master.read(Kind::kDepartment, {{"DeptName"}, {"Accounts"}});
  EXPECT_EQ(master.screen.page(), WizardPage::kSelection);
  EXPECT_EQ(master.screen.lstFields.line(0).foreColour, colours::kBlue);
  EXPECT_TRUE(master.screen.lblBlue.visible());
}

TEST(MasterChoice, EveryLineIsTickedAtFirstAndOneMasterIsChosen) {
  MasterScreen master;
  for (const MasterKind& kind : masterKinds()) {
    master.screen.optMaster_Click(kind.id);
    for (int line = 0; line < master.screen.lstFields.count(); ++line) {
      EXPECT_TRUE(master.screen.lstFields.line(line).ticked) << kind.batchName << line;
    }
    for (const MasterKind& other : masterKinds()) {
      EXPECT_EQ(master.screen.masterOption(other.id).value(), other.id == kind.id);
    }
    EXPECT_EQ(master.screen.cmbMisc.enabled(), kind.id == Kind::kMiscellaneous);
    const bool losesAddresses =
        master.screen.lblNote.caption().ends_with(" ORVA does not keep: add1, add2, add3, City, Pin.");
    EXPECT_EQ(losesAddresses, kind.id == Kind::kUser);
  }
}

TEST(MasterChoice, AnotherMiscellaneousMasterForgetsWhatWasValidated) {
  MasterScreen master;
  master.read(Kind::kMiscellaneous, {{"Code", "MName"}, {"0007", "Grant"}}, "Funding");
  EXPECT_EQ(master.screen.errorCount(), 0);
  master.screen.cmbMisc.setText("Project");
  master.screen.cmbMisc_Click();
  master.finish();
  EXPECT_EQ(master.rows("select Code from MisData"), Texts{"0007"});
}

TEST(MasterChoice, ACompanyWithoutMiscellaneousMastersCannotImportEntries) {
  RealCompany company;
  frmMasterImport screen(company.fakes.services, company.company);
  screen.Load();
  screen.optMaster_Click(Kind::kMiscellaneous);
  EXPECT_EQ(screen.choice().kind, Kind::kDepartment);
  EXPECT_TRUE(screen.optDept.value());
}

}  // namespace
}  // namespace orva
