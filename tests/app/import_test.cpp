#include <sqlite3.h>

#include <fstream>

#include "app/batch_test.h"
#include "platform/xls/xls_workbooks.h"

namespace orva {
namespace {

using Import = BatchTest;

std::string countOf(const std::string& output) { return output.substr(output.find('\n') + 1); }

TEST_F(Import, PostsEveryRowAndGoesOnCountingTheNextTime) {
  const std::string path = workbook("assets.xls", {assetHeadings(), goodAsset("P1"), goodAsset("P2", "O'Neil & Sons")});
  const Ran first = import(path);
  EXPECT_EQ(first.status, 0) << first.err;
  EXPECT_NE(first.out.find("Imported successfully"), std::string::npos) << first.out;
  EXPECT_EQ(query("select Assetid, PhyID, Cost, UseDate, AcquiredAs from Asset order by Assetid"),
            "Assetid\tPhyID\tCost\tUseDate\tAcquiredAs\n"
            "MH\\CO\\PC\\LT0001\tP1\t65000.5\t10/06/2025\tPurchased\n"
            "MH\\CO\\PC\\LT0002\tP2\t65000.5\t10/06/2025\tPurchased\n");
  EXPECT_EQ(countOf(query("select VendorName from Vendor where VendorName = 'o''neil & sons'")), "O'Neil & Sons\n");

  EXPECT_EQ(import(workbook("more.xls", {assetHeadings(), goodAsset("P3")})).status, 0);
  EXPECT_EQ(countOf(query("select Assetid from Asset where PhyID = 'P3'")), "MH\\CO\\PC\\LT0003\n");
}

TEST_F(Import, OneBadRowPostsNothingAndIsReported) {
  auto bad = goodAsset("P2");
  bad[7] = "-5";
  bad[11] = "New Vendor";
  const std::string path = workbook("assets.xls", {assetHeadings(), goodAsset("P1"), bad});
  const Ran ran = import(path, {"--results", folder.file("results.txt"), "--marks", folder.file("marks.txt")});
  EXPECT_EQ(ran.status, 1) << ran.err;
  EXPECT_NE(ran.out.find("Total Records with Errors : 1"), std::string::npos) << ran.out;
  EXPECT_EQ(countOf(query("select count(*) as n from Asset")), "0\n");
  EXPECT_EQ(folder.read("marks.txt"), "2\tCOST\terror\n2\tVENDOR\twarning\n");
  const std::string results = folder.read("results.txt");
  EXPECT_NE(results.find("ERROR\tERROR Column\tERROR Description\n"), std::string::npos) << results;
  EXPECT_NE(results.find("P1\t"), std::string::npos);
  const std::string exported = folder.read("ExportOrva.xls");
  EXPECT_NE(exported.find("P2"), std::string::npos);
  EXPECT_EQ(exported.find("P1\t"), std::string::npos) << "only rows in error";
}

TEST_F(Import, ValidateOnlyPostsNothing) {
  const Ran ran = import(workbook("assets.xls", {assetHeadings(), goodAsset("P1")}), {"--validate-only"});
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(countOf(query("select count(*) as n from Asset")), "0\n");
}

TEST_F(Import, FieldsDecideWhatIsRead) {
  auto headings = assetHeadings();
  auto asset = goodAsset("P1");
  headings.push_back("remarks");
  asset.push_back("from the old register");
  const std::string path = workbook("assets.xls", {headings, asset});
  const std::string required =
      "PHYID,USEDATE,VCHRDATE,CAT1,CAT2,CAT3,DESCRIPTION,COST,MAINLOC,SUBLOC,PHYLOC,VENDOR,DEPT,QTY";

  EXPECT_EQ(import(path, {"--fields", required}).status, 0);
  EXPECT_EQ(countOf(query("select Remarks from Asset")), "\n") << "a column that was not chosen is not read";
  EXPECT_EQ(import(path, {"--fields", "present"}).status, 0);
  EXPECT_EQ(countOf(query("select Remarks from Asset where Remarks is not null")), "from the old register\n");

  const Ran all = import(path, {"--fields", "all"});
  EXPECT_EQ(all.status, 2);
  EXPECT_NE(all.err.find("Want to import but not in Excel: GST"), std::string::npos) << all.err;
  const Ran unknown = import(path, {"--fields", required + ",COLOUR"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.err.find("'COLOUR'"), std::string::npos) << unknown.err;
}

TEST_F(Import, AHeaderWithoutAMandatoryColumnIsRefused) {
  auto headings = assetHeadings();
  headings[6] = "DESCR";
  const Ran ran = import(workbook("assets.xls", {headings, goodAsset("P1")}));
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.err.find("Mandatory but not present in Excel: DESCRIPTION"), std::string::npos) << ran.err;
}

TEST_F(Import, WorkbooksThatCannotBeReadChangeNothing) {
  const std::string good = folder.read(std::filesystem::path(workbook("good.xls", {assetHeadings()})).filename());
  struct Case {
    std::string path;
    const char* text;
  };
  const std::string fixtures = ORVA_FIXTURES;
  XlsWorkbooks().write(folder.file("other.xls"), "Sheet1", {{{CellKind::kText, "PHYID"}}});
  const Case kCases[] = {
      {folder.file("missing.xls"), "missing.xls"},
      {folder.write("empty.xls", ""), "empty.xls"},
      {folder.write("cut.xls", good.substr(0, good.size() / 2)), "cut.xls"},
      {folder.write("table.xls", "PHYID,COST\r\nP1,100\r\n"), "table.xls"},
      {folder.write("page.xls", "<html><table></table></html>"), "page.xls"},
      {folder.write("new.xlsx", "PK\x03\x04"), "Please select only an Excel file"},
      {folder.write("renamed.xls", "PK\x03\x04 and so on"), "renamed.xls"},
      {folder.text(), "Please select only an Excel file"},
      {fixtures + "/xls/encrypted.xls", "encrypted.xls"},
      {fixtures + "/xls/biff5.xls", "biff5.xls"},
      {folder.file("other.xls"), "The excel file you selected must have a sheet named 'Asset'"},
  };
  for (const Case& c : kCases) {
    const Ran ran = import(c.path);
    EXPECT_EQ(ran.status, 2) << c.path;
    EXPECT_NE(ran.err.find(c.text), std::string::npos) << ran.err;
  }
  EXPECT_EQ(countOf(query("select count(*) as n from Asset")), "0\n");
}

TEST_F(Import, ReportsThatCannotBeWrittenPreventPosting) {
  const std::string path = workbook("assets.xls", {assetHeadings(), goodAsset("P1")});
  const Ran ran = import(path, {"--results", folder.file("no such folder/results.txt")});
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.err.find("results.txt"), std::string::npos) << ran.err;
  EXPECT_EQ(countOf(query("select count(*) as n from Asset")), "0\n");
}

TEST_F(Import, ACompanyWithoutAutomaticIdentifiersIsRefused) {
  query("update Parameter set AutoAssetid = false");
  const Ran ran = import(workbook("assets.xls", {assetHeadings(), goodAsset("P1")}));
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.err.find("[ORVA] Sorry.Can't Import data."), std::string::npos) << ran.err;
  EXPECT_EQ(countOf(query("select count(*) as n from Asset")), "0\n") << "statements still run";
}

TEST_F(Import, TheDemonstrationShowsBothOutcomes) {
  const Ran faulty = import(std::string(ORVA_DEMO) + "/acquired-assets-with-mistakes.xls");
  EXPECT_EQ(faulty.status, 1) << faulty.err;
  EXPECT_NE(faulty.out.find("Total Records with Errors : 18"), std::string::npos) << faulty.out;
  const Ran good = import(std::string(ORVA_DEMO) + "/acquired-assets.xls");
  EXPECT_EQ(good.status, 0) << good.err << good.out;
  EXPECT_EQ(countOf(query("select count(*) as n from Asset")), "205\n");
}

TEST_F(Import, LeaseEndDatesAreSetWhenEveryRowIsGood) {
  ASSERT_EQ(import(workbook("assets.xls", {assetHeadings(), goodAsset("P1"), goodAsset("P2")})).status, 0);
  const std::string first = "MH\\CO\\PC\\LT0001";
  const std::vector<std::string> command{"update-leod", "--company", "DEMO"};
  const auto update = [&](const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::string> arguments = command;
    arguments.push_back(workbook("leod.xls", rows));
    return run(arguments);
  };
  const Ran bad = update({{"Assetid", "LEOD"}, {first, "31/03/2030"}, {"NONE", "31/03/2030"}});
  EXPECT_EQ(bad.status, 1) << bad.err;
  EXPECT_NE(folder.read("ExportOrva.xls").find("Asset Id : NONE does not exist in ORVA."), std::string::npos);
  EXPECT_EQ(countOf(query("select LeaseDate from Asset where PhyID = 'P1'")), "10/06/2028\n") << "from the life";
  const Ran good = update({{"Assetid", "LEOD"}, {first, "31/03/2030"}});
  EXPECT_EQ(good.status, 0) << good.err;
  EXPECT_EQ(countOf(query("select LeaseDate from Asset where PhyID = 'P1'")), "31/03/2030\n");
  EXPECT_EQ(run({"update-leod", "--company", "DEMO", folder.file("missing.xls")}).status, 2);
}

/// What an accountant ties to the ledger, before and after posting, with every unit counted.
TEST_F(Import, ControlTotalsAreThoseOfTheCompany) {
  auto headings = assetHeadings();
  auto three = goodAsset("P1");
  headings.emplace_back("ACCDEP");
  headings.emplace_back("ShiftedFrom");
  three[7] = "100";
  three[15] = "3";
  three.emplace_back("10.01");
  three.emplace_back("Nagpur");
  auto one = goodAsset("P2");
  one.emplace_back("0.5");
  one.emplace_back("Nagpur");
  const std::string path = workbook("assets.xls", {headings, three, one});
  const std::string amounts = "Cost 65100.50, Accumulated Depreciation 10.51\n";
  const std::string ofWorkbook = "Control totals of the workbook : ";
  const std::string ofCompany = "Control totals of the company  : ";
  const Ran validated = import(path, {"--shifted-in", "--validate-only"});
  EXPECT_NE(validated.out.find(ofWorkbook + "Rows 2, " + amounts), std::string::npos) << validated.out;
  EXPECT_EQ(validated.out.find(ofCompany), std::string::npos) << "nothing is posted yet";
  const Ran posted = import(path, {"--shifted-in", "--multiple-asset-ids"});
  EXPECT_EQ(posted.status, 0) << posted.err;
  EXPECT_NE(posted.out.find(ofWorkbook + "Rows 2, Assets 4, " + amounts + ofCompany + "Assets 4, " + amounts +
                            "Assets created : 4\n"),
            std::string::npos)
      << posted.out;
  EXPECT_EQ(countOf(query("select count(*) as n, sum(Cost) as c, sum(AccDep) as a from Asset")), "4\t65100.5\t10.51\n");
}

TEST_F(Import, ACompanyThatKeepsOtherAmountsIsAnError) {
  // The file does what a damaged one might: it keeps a rupee less than it is given.
  keepInSqlite();
  const std::string file = folder.file("DEMOOrva.MDB");
  ASSERT_TRUE(std::filesystem::exists(file));
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database,
                         "create trigger thief after insert on Asset begin update Asset set Cost = Cost - 10000 where "
                         "PhyID = 'P2' and rowid = new.rowid; end",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(database);
  const Ran ran = import(workbook("assets.xls", {assetHeadings(), goodAsset("P1"), goodAsset("P2")}));
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.out.find("Rows posted : 2\n"), std::string::npos) << ran.out;
  EXPECT_NE(ran.out.find("Control totals of the company  : Rows 2, Cost 130000.00, "), std::string::npos) << ran.out;
  EXPECT_NE(ran.err.find("The control totals of the company differ from those of the workbook."), std::string::npos)
      << ran.err;
}

TEST_F(Import, FieldsPrintsTheCatalogueOfTheChoice) {
  struct Case {
    std::vector<std::string> more;
    const char* line;
  };
  const Case kCases[] = {
      {{}, "Physical ID\tPHYID\tText\t50\tMFOE\tx\n"},
      {{}, "GST\tGST\tCurrency\t\tO\t\n"},
      {{}, "Project\tProject\tText\t255\tO\t\n"},
      {{"--lease-hold"}, "Lease End Date\tLEASEDATE\tDate\tDD/MM/YYYY\tM\tx\n"},
      {{"--mode", "modify-by-asset-id"}, "Asset Id No. \tASSETID\tText\t30\tM\tx\n"},
  };
  for (const Case& c : kCases) {
    std::vector<std::string> command{"fields", "--company", "DEMO", "--kind", "acquired"};
    command.insert(command.end(), c.more.begin(), c.more.end());
    const Ran ran = run(command);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_NE(ran.out.find(c.line), std::string::npos) << c.line << "\nin\n" << ran.out;
  }
  EXPECT_EQ(run({"fields", "--company", "DEMO", "--kind", "sale"}).status, 0);
  EXPECT_EQ(run({"fields", "--company", "DEMO", "--kind", "sales"}).status, 2);
  EXPECT_EQ(run({"fields", "--company", "DEMO", "--kind", "acquired", "--mode", "modify"}).status, 2);
}

}  // namespace
}  // namespace orva
