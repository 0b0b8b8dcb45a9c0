#include <gtest/gtest.h>

#include "app/batch_test.h"
#include "platform/xls/xls_workbooks.h"

namespace orva {
namespace {

using Rows = std::vector<std::vector<std::string>>;

const std::string kDemo = ORVA_DEMO;

class Masters : public BatchTest {
 protected:
  Ran masters(const std::string& kind, const std::string& path, std::vector<std::string> more = {}) const {
    std::vector<std::string> arguments{"masters", "--company", "DEMO", "--kind", kind, path};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }
  Ran mastersFrom(const std::string& kind, const std::string& out, const std::string& path,
                  std::vector<std::string> more = {}) const {
    std::vector<std::string> arguments{"masters-from", "--company", "DEMO", "--kind", kind, "--out", out, path};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }
  std::string masterWorkbook(const std::string& name, const Rows& rows) const {
    std::vector<std::vector<OutputCell>> cells;
    for (const auto& row : rows) {
      auto& line = cells.emplace_back();
      for (const std::string& text : row) line.push_back({text.empty() ? CellKind::kBlank : CellKind::kText, text});
    }
    XlsWorkbooks().write(folder.file(name), "Master", cells);
    return folder.file(name);
  }
  /// Rows of the sheet "Master", cells joined with "|".
  static std::vector<std::string> sheetOf(const std::string& path) {
    const auto sheet = XlsWorkbooks().openSheet(path, "Master", HeaderRow::kNo);
    std::vector<std::string> rows;
    for (int row = 0; row < sheet->rowCount(); ++row) {
      std::string& line = rows.emplace_back();
      for (int column = 0; column < sheet->columnCount(); ++column) line += sheet->text(row, column) + "|";
    }
    return rows;
  }
};

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(Masters, DemonstrationWorkbooksOfEveryMaster) {
  struct Kind {
    const char* name;
    int posted;
    int errors;
  };
  const Kind kKinds[] = {{"department", 3, 5}, {"cost-centre", 2, 4}, {"location", 2, 2},
                         {"user", 2, 4},       {"vendor", 2, 3},      {"misc", 2, 2}};
  for (const Kind& kind : kKinds) {
    const std::vector<std::string> more = kind.name == std::string("misc")
                                              ? std::vector<std::string>{"--misc-master", "project"}
                                              : std::vector<std::string>{};
    const std::string workbook = kDemo + "/masters/" + kind.name;
    const Ran bad = masters(kind.name, workbook + "-with-mistakes.xls", more);
    EXPECT_EQ(bad.status, 1) << kind.name << bad.err;
    EXPECT_TRUE(contains(bad.out, "Total Records with Errors : " + std::to_string(kind.errors) + "\n"))
        << kind.name << bad.out;
    const Ran good = masters(kind.name, workbook + ".xls", more);
    EXPECT_EQ(good.status, 0) << kind.name << good.err;
    EXPECT_TRUE(contains(good.out, "Rows posted : " + std::to_string(kind.posted) + "\nImported successfully\n"))
        << good.out;
    EXPECT_EQ(masters(kind.name, workbook + ".xls", more).status, 1) << kind.name << " a second time";
  }
  EXPECT_EQ(query("select Code, MName from MisData where Master = 'M1' and Code > '0002' order by Code"),
            "Code\tMName\n0003\tSolar Roof\n0004\tLine 5\n");
  EXPECT_EQ(query("select Vendorcode, City, PAN from Vendor where VendorName = 'O''Neil Grinding Systems'"),
            "Vendorcode\tCity\tPAN\n0007\tThane\tAAACO4821K\n");
}

TEST_F(Masters, ReportsAndTotalsAreThoseOfTheImport) {
  const std::string path = masterWorkbook("d.xls", {{"DeptCode", "DeptName"}, {"D1", "Canteen"}, {"d1", "Stores"}});
  const Ran ran =
      masters("department", path, {"--results", folder.file("results.txt"), "--marks", folder.file("marks.txt")});
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out,
            "Total Records             :  2\nTotal Records with Errors : 1\nTotal Records with Warnings : 0\n");
  EXPECT_EQ(folder.read("results.txt"),
            "DeptCode\tDeptName\tERROR\tERROR Column\tERROR Description\nD1\tCanteen\t\t\t\n"
            "d1\tStores\tE\tDeptCode,DeptName\t Duplicate Values Not Allowed  ,  Duplicate Values Not Allowed \n");
  EXPECT_EQ(folder.read("marks.txt"), "2\tDeptCode\terror\n2\tDeptName\terror\n");
  EXPECT_TRUE(contains(folder.read("ExportOrva.xls"), "d1\tStores\tE"));

  const std::string good = masterWorkbook("g.xls", {{"DeptCode", "DeptName"}, {"D1", "Canteen"}});
  EXPECT_EQ(masters("department", good, {"--validate-only"}).status, 0);
  EXPECT_EQ(query("select count(*) as n from Dept"), "n\n7\n");
}

TEST_F(Masters, AnOptionalColumnMayBeMissingAndIsNamed) {
  const std::string path = masterWorkbook("v.xls", {{"VendorCode", "VendorName", "City"}, {"V1", "Acme", "Pune"}});
  const Ran ran = masters("vendor", path);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_TRUE(contains(ran.err, "Not in the workbook and not imported: add1, add2, add3, Pin, vattin, csttin, PAN\n"));
  const Ran user =
      masters("user", masterWorkbook("u.xls", {{"Usercode", "Username", "City", "add1"}, {"9", "Rao", "Pune", "x"}}));
  EXPECT_EQ(user.status, 0) << user.err;
  EXPECT_TRUE(contains(user.err, "In the workbook, but ORVA does not keep: add1, City\n")) << user.err;
  const Ran refused = masters("vendor", masterWorkbook("w.xls", {{"VendorName"}, {"Acme"}}));
  EXPECT_EQ(refused.status, 2);
  EXPECT_TRUE(contains(refused.err, "Mandatory but not present in Excel: VendorCode")) << refused.err;
}

TEST_F(Masters, WhatCannotBeDoneIsRefused) {
  const std::string good = masterWorkbook("d.xls", {{"DeptCode", "DeptName"}, {"D1", "Canteen"}});
  const std::string entries = masterWorkbook("m.xls", {{"Code", "MName"}, {"1", "One"}});
  const std::string assets = workbook("assets.xls", {assetHeadings()});
  struct Case {
    std::vector<std::string> arguments;
    const char* text;
  };
  const Case kCases[] = {
      {{"masters", "--company", "DEMO", "--kind", "departments", good},
       "Unknown kind 'departments'. The kinds are: department cost-centre location user vendor misc"},
      {{"masters", "--company", "NONE", "--kind", "department", good}, "NONE"},
      {{"masters", "--company", "DEMO", "--kind", "department", assets},
       "The excel file you selected must have a sheet named 'Master' for importing Masters"},
      {{"masters", "--company", "DEMO", "--kind", "department", folder.file("d.xlsx")},
       "Please select only an Excel file"},
      {{"masters", "--company", "DEMO", "--kind", "misc", entries},
       "Name the miscellaneous master with --misc-master. The masters are: 'Project', 'Funding'"},
      {{"masters", "--company", "DEMO", "--kind", "misc", "--misc-master", "Grant", entries},
       "Unknown miscellaneous master 'Grant'."},
      {{"masters-from", "--company", "DEMO", "--kind", "vendor", "--out", folder.file("out.txt"), assets}, ".xls"},
      {{"masters-from", "--company", "DEMO", "--kind", "vendor", "--out", assets, assets},
       "The master workbook would replace the asset workbook."},
      {{"masters-from", "--company", "DEMO", "--kind", "vendor", "--out", folder.file("out.xls"), good},
       "The excel file you selected must have a sheet named 'Asset' for importing Asset details"},
      {{"masters-from", "--company", "DEMO", "--kind", "vendor", "--out", good, assets},
       "d.xls already. Name another one, or delete it first."},
      {{"masters-from", "--company", "DEMO", "--kind", "vendor", "--out", folder.file("none/out.xls"), assets},
       "none/out.xls\" cannot be written: its folder does not exist."},
  };
  for (const Case& c : kCases) {
    const Ran ran = run(c.arguments);
    EXPECT_EQ(ran.status, 2) << c.text;
    EXPECT_TRUE(contains(ran.err, c.text)) << c.text << "\n" << ran.err;
  }
}

Rows registerWithUnknownMasters() {
  Rows rows{assetHeadings()};
  auto& headings = rows[0];
  headings.push_back("Project");
  const auto add = [&](const std::string& department, const std::string& vendor, const std::string& place,
                       const std::string& project) {
    auto asset = goodAsset("P" + std::to_string(rows.size()), vendor);
    asset[10] = place;
    asset[12] = department;
    asset.push_back(project);
    rows.push_back(asset);
  };
  add("Store's", "Godavri Motors", "First Floor", "");
  add("STORE'S ", "Godavari Motors", "Second / Third Floor", "Line 4 Expantion");
  add("कार्यशाला", "Arihant", "First Floor", "");
  add("ALL", "Arihant", "First Floor", "");
  return rows;
}

TEST_F(Masters, ImportListsTheMastersThatItWouldMake) {
  const Ran ran = import(workbook("assets.xls", registerWithUnknownMasters()), {"--validate-only"});
  EXPECT_EQ(ran.status, 1) << "ALL is no department";
  EXPECT_TRUE(contains(ran.out,
                       "Not in the masters of ORVA yet, made on posting :\n"
                       "Department : Store's (2 rows, 1 of them with blanks around the name)\n"
                       "Department : कार्यशाला (1 row)\nVendor : Arihant (2 rows)\n"
                       "Vendor : Godavri Motors (1 row)\n"
                       "Location : Pune / Office / Second / Third Floor (1 row)\n"
                       "Project : Line 4 Expantion (1 row)\n"))
      << ran.out;
}

TEST_F(Masters, UnknownMastersBecomeAWorkbookThatCanBeImported) {
  const std::string assets = workbook("assets.xls", registerWithUnknownMasters());
  struct Case {
    const char* kind;
    std::vector<std::string> sheet;
  };
  const Case kCases[] = {
      {"department",
       {"DeptCode|DeptName|Rows in workbook|Nearest in ORVA|", "0008|Store's|2|Stores|", "0009|कार्यशाला|1||"}},
      {"vendor",
       {"VendorCode|VendorName|add1|add2|add3|City|Pin|vattin|csttin|PAN|Rows in workbook|Nearest in ORVA|",
        "0007|Arihant|||||||||2||", "0008|Godavri Motors|||||||||1|Godavari Motors|"}},
      {"location",
       {"LocCode|MAINLOC|SUBLOC|PHYLOC|Rows in workbook|Nearest in ORVA|",
        "|Pune|Office|Second / Third Floor|1|Pune / Office / First Floor|"}},
      {"user", {"Usercode|Username|add1|add2|add3|City|Pin|Rows in workbook|Nearest in ORVA|"}},
      {"misc", {"Code|MName|Rows in workbook|Nearest in ORVA|", "0003|Line 4 Expantion|1|Line 4 Expansion|"}},
  };
  const auto outOf = [&](const Case& c) { return folder.file(std::string(c.kind) + "-new.xls"); };
  const auto moreOf = [](const Case& c) {
    return c.kind == std::string("misc") ? std::vector<std::string>{"--misc-master", "Project"}
                                         : std::vector<std::string>{};
  };
  for (const Case& c : kCases) {
    const Ran ran = mastersFrom(c.kind, outOf(c), assets, moreOf(c));
    ASSERT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(sheetOf(outOf(c)), c.sheet) << c.kind;
    EXPECT_TRUE(contains(ran.out, "Vendor\tGodavri Motors\t1\tGodavari Motors\n")) << ran.out;
    EXPECT_TRUE(contains(ran.out, "Departments not in ORVA : 2\nVendors not in ORVA : 2\nUsers not in ORVA : 0\n"));
    EXPECT_TRUE(contains(ran.out, "Rows written to " + outOf(c) + " : " + std::to_string(c.sheet.size() - 1) + "\n"));
  }
  for (const Case& c : kCases) {
    const Ran imported = masters(c.kind, outOf(c), moreOf(c));
    EXPECT_EQ(imported.status, 0) << c.kind << imported.err << imported.out;
  }
  const Ran again = mastersFrom("department", folder.file("again.xls"), assets);
  EXPECT_TRUE(contains(again.out,
                       "In ORVA, but not found because of blanks in the workbook :\n"
                       "Department : STORE'S (1 row with blanks around the name)\n"
                       "Departments not in ORVA : 0\nVendors not in ORVA : 0\n"))
      << again.out;
  EXPECT_EQ(sheetOf(folder.file("again.xls")).size(), 1u);
}

TEST_F(Masters, OnlyColumnsThatNameMastersAreNeeded) {
  const std::string out = folder.file("out.xls");
  const Ran partial = mastersFrom("user", out, workbook("u.xls", {{"Remarks", "user"}, {"", "S.Iyer"}, {"x", ""}}));
  EXPECT_EQ(partial.status, 0) << partial.err;
  EXPECT_EQ(sheetOf(out)[1], "0006|S.Iyer||||||1|S. Iyer|");
  const Ran none = mastersFrom("user", folder.file("none.xls"), workbook("n.xls", {{"Remarks"}, {"x"}}));
  EXPECT_EQ(none.status, 2);
  EXPECT_TRUE(contains(none.err, "The sheet 'Asset' has no column that names a master.")) << none.err;
}

TEST_F(Masters, DemonstrationUpdates) {
  ASSERT_EQ(import(kDemo + "/acquired-assets.xls").status, 0);
  struct Update {
    const char* command;
    const char* workbook;
    int errors;
    const char* changed;
  };
  const Update kUpdates[] = {
      {"update-leod", "lease-end", 4, "select count(*) as n from Asset where LeaseDate = #03/31/2029#"},
      {"update-rate-method", "rate-method", 4, "select count(*) as n from Asset where FlgOverride = 'Y'"},
  };
  for (const Update& update : kUpdates) {
    const std::string path = kDemo + "/updates/" + update.workbook;
    const Ran bad = run({update.command, "--company", "DEMO", path + "-with-mistakes.xls"});
    EXPECT_EQ(bad.status, 1) << bad.err;
    EXPECT_EQ(bad.out, "Total Records with Errors : " + std::to_string(update.errors) + "\nRecords updated : 0\n");
    EXPECT_EQ(query(update.changed), "n\n0\n");
    const Ran good = run({update.command, "--company", "DEMO", path + ".xls"});
    EXPECT_EQ(good.status, 0) << good.err;
    EXPECT_TRUE(contains(good.err, "2 - Records has been successfully Updated. ")) << good.err;
    EXPECT_EQ(query(update.changed), "n\n2\n");
  }
}

}  // namespace
}  // namespace orva
