#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/case_file.h"
#include "imports/asset/posting/after_posting.h"
#include "imports/asset/posting/closing_guard.h"
#include "imports/import_setting.h"
#include "imports/transactions/sale.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// Tables whose rows a posting run may change, without the columns that nobody filled.
constexpr const char* kTables[] = {
    "Asset",  "Fadep",      "FADep1",   "FADep2",        "Shift",   "Addition",       "UDValues",         "Dept",
    "Vendor", "CostCentre", "Users",    "Location",      "MisData", "Classification", "SubClass",         "CostBreakup",
    "AMC",    "Insurance",  "AssetOut", "ReclassAstCat", "Split",   "SplitOriginal",  "Reclassification2"};

std::string filledCells(Recordset& row) {
  std::string line;
  for (const FieldInfo& field : row.fields()) {
    const std::string text = nullToText(row.get(field.name));
    if (!text.empty() && text != "False") line += (line.empty() ? "" : ", ") + field.name + "=" + text;
  }
  return line;
}

/// Every row of every table as one line.
Lines contents(AssetCompany& company) {
  Lines lines;
  for (const char* table : kTables) {
    const auto rows = company.company.connection->open(std::string("select * from ") + table);
    for (; !rows->eof(); rows->moveNext()) lines.push_back(std::string(table) + ": " + filledCells(*rows));
  }
  return lines;
}

class PostingInBoth : public testing::TestWithParam<SqlDialect> {};
INSTANTIATE_TEST_SUITE_P(Dialects, PostingInBoth, testing::Values(SqlDialect::kAccess, SqlDialect::kSqlServer));

TEST_P(PostingInBoth, LeavesTheRowsThatAreListed) {
  ImportSetting setting;
  for (const ListedCase& one : listedCases("imports/posted.txt")) {
    if (setting.read(one.head)) continue;
    const auto company = setting.company(GetParam());
    const Lines before = contents(*company);
    EXPECT_EQ(company->import(setting.rows(one.head)).text, "Imported successfully") << one.place;
    Lines added = contents(*company);
    std::erase_if(added, [&](const std::string& line) { return std::ranges::count(before, line) > 0; });
    EXPECT_EQ(added, one.lines) << one.place;
  }
}

TEST_P(PostingInBoth, NumbersGoOnAfterAFailedRun) {
  AssetCompany company(GetParam());
  company.stage({purchase({{"PHYID", "A"}}), purchase({{"PHYID", "B"}}), purchase({{"PHYID", "C"}})});
  company.validate();
  company.adapter->plan().failAt(DatabaseCall::kStore, 2, provider_number::kTypeMismatch, "The disk is full.");
  const PostResult failed = company.post();
  EXPECT_FALSE(failed.finished);
  EXPECT_EQ(failed.text, "The disk is full.");
  EXPECT_EQ(failed.rowsPosted, 1);
  EXPECT_EQ(company.import({purchase({{"PHYID", "B"}}), purchase({{"PHYID", "C"}})}).rowsPosted, 2);
  EXPECT_EQ(company.rows("select Assetid, PhyID from Asset order by Assetid"),
            (Lines{"PM\\PU0001|A", "PM\\PU0002|B", "PM\\PU0003|C"}));
}

TEST(Posting, AFailureInTheMiddleOfSalesKeepsTheFinishedRows) {
  AssetCompany company(SqlDialect::kAccess, saleProcedures());
  company.prepare({"insert into Asset (Assetid, UseDate) values ('A1', #05/10/2005#)"});
  SheetRow sale{
      {"ASSETID", "A1"}, {"InvoiceNo", "1"}, {"SaleDate", "01/06/2005"}, {"SaleAMT", "5"}, {"SerialNo", "S1"}};
  company.stage({sale, replaced(sale, {{"SerialNo", "S2"}}), replaced(sale, {{"SerialNo", "S3"}})});
  company.adapter->plan().failAt(DatabaseCall::kStore, 2, provider_number::kDataOverflow, "The disk is full.");
  const PostResult result = company.post();
  EXPECT_FALSE(result.finished);
  EXPECT_EQ(result.rowsPosted, 1);
  EXPECT_EQ(result.text, "The disk is full.");
  EXPECT_EQ(company.rows("select SrNo from AssetOut"), Lines{"S1"});
}

TEST(Posting, DuplicateIdentifierKeepsWhatStands) {
  // The last number of four digits was given away; the next one has five and is not seen again.
  AssetCompany company;
  company.selection.kind = ImportKindId::kClosing;
  company.prepare({"insert into Asset (Assetid, AcquiredAs) values ('PM\\PU9998', 'O')",
                   "update Classification set AssetLife1=12 where ClassCode='PM-01'"});
  company.stage({takenOver({{"PHYID", "A"}}), takenOver({{"PHYID", "B"}}), takenOver({{"PHYID", "C"}, {"ACCDEP", "7"}}),
                 takenOver({{"PHYID", "D"}})});
  company.validate();
  const PostResult result = company.post();
  EXPECT_FALSE(result.finished);
  EXPECT_EQ(result.text, "Asset Id already present ");
  EXPECT_EQ(result.rowsPosted, 2);
  EXPECT_EQ(company.rows("select Assetid, FAAge, LeaseDate from Asset where PhyID is not null order by PhyID"),
            (Lines{"PM\\PU9999|12|01/10/2005", "PM\\PU10000|12|01/10/2005"}))
      << "lives are filled over what was posted";
  EXPECT_EQ(company.rows("select Assetid, AccDep from Fadep order by Assetid"),
            (Lines{"PM\\PU10000|120", "PM\\PU9999|120"}))
      << "the entry of the other asset is not overwritten";
}

TEST(Posting, LevelsRemovedSinceValidationAreMadeAgain) {
  AssetCompany company;
  const SheetRow press = purchase({{"CAT2", "Presses"}});
  const SheetRow pump = purchase({{"CAT2", "Pumps"}, {"CAT3", "Centrifugal"}});
  company.stage({press, pump, press, pump});
  company.validate();
  company.prepare({"delete from Classification where ClassCode='PM-02'", "delete from SubClass"});
  EXPECT_TRUE(company.post().finished);
  EXPECT_EQ(company.rows("select Assetid, ClassCode, SubClassCode from Asset order by Assetid"),
            (Lines{"PM0001|PM-02|", "PM0002|PM-02|", "PM\\PU0001|PM-01|PM-01-01", "PM\\PU0002|PM-01|PM-01-01"}));
  EXPECT_EQ(company.row("select ClassDesc from Classification where ClassCode='PM-02'"), "Presses");
  EXPECT_EQ(company.rows("select DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix from SubClass"),
            Lines{"PM|PM-01|PM-01-01|Centrifugal|"});
}

/// Rows of several units: what is divided comes together again to the cent, and every unit but the last has its
/// equal part.
TEST(Posting, UnitsAddUpToTheirRow) {
  struct Case {
    const char* quantity;
    const char* cost;
    const char* parts;
  };
  const Case kCases[] = {{"3", "100", "33.33 33.33 33.34 "},
                         {"3", "0.02", "0 0 0.02 "},
                         {"7", "999999999.99",
                          "142857142.85 142857142.85 142857142.85 142857142.85 142857142.85 "
                          "142857142.85 142857142.89 "},
                         {"1", "10.1", "10.1 "},
                         {"", "10.1", "10.1 "}};
  AssetCompany company;
  company.selection.multipleAssetIds = true;
  for (const Case& one : kCases) {
    company.prepare({"delete from Asset"});
    const PostResult result = company.import({purchase({{"QTY", one.quantity}, {"COST", one.cost}})});
    std::string parts;
    for (const std::string& cost : company.rows("select Cost from Asset order by Assetid")) parts += cost + " ";
    EXPECT_EQ(parts, one.parts) << one.quantity << " of " << one.cost;
    EXPECT_EQ(Value(company.row("select sum(Cost) as s from Asset")).toCurrency(), Value(one.cost).toCurrency());
    EXPECT_EQ(result.recordsStored, std::max(Value(one.quantity).toInteger().value_or(1), std::int64_t{1}));
  }
}

/// An entry takes each code that it lacks from its own asset and keeps what it has.
TEST_P(PostingInBoth, CleanUpFillsEveryEmptyCode) {
  AssetCompany company(GetParam());
  company.company.flags = {.additionalBook1 = true, .additionalBook2 = true};
  company.prepare({"update SubClass set FACode1='A9'", "update Classification set FACode1='A8', FACode2='B8'",
                   "insert into Asset (Assetid, DefCode, ClassCode, SubClassCode) values ('A', 'PM', 'PM-01', "
                   "'PM-01-01')",
                   "insert into Asset (Assetid, DefCode, ClassCode, FACode1) values ('B', 'PM', 'PM-02', '')",
                   "insert into Asset (Assetid, DefCode, ClassCode, FACode1) values ('C', 'XX', 'XX-01', 'A1')",
                   "insert into Fadep (Assetid, DefCode, ClassCode) values ('A', 'OLD', '')",
                   "insert into FADep1 (Assetid) values ('A')",
                   "insert into FADep1 (Assetid, FACode) values ('B', 'OLD')",
                   "insert into FADep2 (Assetid, SubClassCode) values ('B', 'OLD')",
                   "insert into FADep2 (Assetid, FACode) values ('D', '')"});
  cleanUpCodes(company.company);
  EXPECT_EQ(company.rows("select Assetid, FACode1, FACode2 from Asset order by Assetid"),
            (Lines{"A|A9|B8", "B|A8|B8", "C|A1|"}));
  EXPECT_EQ(company.rows("select Assetid, DefCode, ClassCode, SubClassCode from Fadep"), Lines{"A|OLD|PM-01|PM-01-01"});
  EXPECT_EQ(company.rows("select Assetid, FACode, DefCode, ClassCode, SubClassCode from FADep1 order by Assetid"),
            (Lines{"A|A9|PM|PM-01|PM-01-01", "B|OLD|PM|PM-02|"}));
  EXPECT_EQ(company.rows("select Assetid, FACode, DefCode, ClassCode, SubClassCode from FADep2 order by Assetid"),
            (Lines{"B|B8|PM|PM-02|OLD", "D||||"}));
}

TEST_P(PostingInBoth, FillsTheMostDetailedLifeOfAssetsWithoutOne) {
  AssetCompany company(GetParam());
  company.prepare({"update FADefinition set AssetLife=60", "update SubClass set AssetLife2=1",
                   "insert into Asset (Assetid, DefCode, ClassCode, SubClassCode, UseDate) values ('A', 'PM', 'PM-01', "
                   "'PM-01-01', #01/31/2005#)",
                   "insert into Asset (Assetid, DefCode, ClassCode, UseDate) values ('B', 'PM', 'PM-01', #05/15/2005#)",
                   "insert into Asset (Assetid, DefCode, ClassCode) values ('C''s', 'PM', 'NONE')",
                   "insert into Asset (Assetid, DefCode, FAAge, UseDate) values ('D', 'PM', 7, #05/15/2005#)",
                   "insert into Asset (Assetid, DefCode, LeaseDate) values ('E', 'PM', #05/15/2005#)",
                   "insert into Asset (Assetid, DefCode, UseDate) values ('F', 'XX', #05/15/2005#)",
                   "insert into Asset (Assetid, DefCode, UseDate) values ('G', 'PM', #12/31/9999#)"});
  EXPECT_EQ(fillLifeAndLeaseDate(company.company), 4);
  EXPECT_EQ(company.rows("select Assetid, FAAge, LeaseDate from Asset order by Assetid"),
            (Lines{"A|1|28/02/2005", "B|60|15/05/2010", "C's|60|", "D|7|", "E||15/05/2005", "F||", "G|60|"}));
  EXPECT_EQ(fillLifeAndLeaseDate(company.company), 0);
}

/// As a server does whose column of short dates ends before the lease.
TEST(Posting, ARefusedLeaseDateLeavesTheLife) {
  AssetCompany company;
  company.prepare({"update FADefinition set AssetLife=60",
                   "insert into Asset (Assetid, DefCode, UseDate) values ('A', 'PM', #05/15/2075#)",
                   "insert into Asset (Assetid, DefCode, UseDate) values ('B', 'PM', #05/15/2005#)"});
  company.adapter->plan().failAt(DatabaseCall::kExecute, 1, provider_number::kTypeMismatch);
  EXPECT_EQ(fillLifeAndLeaseDate(company.company), 2);
  EXPECT_EQ(company.rows("select Assetid, FAAge, LeaseDate from Asset order by Assetid"),
            (Lines{"A|60|", "B|60|15/05/2010"}));
}

TEST_P(PostingInBoth, ClosedYearsAndDepreciationKeepClosingBalancesOut) {
  AssetCompany company(GetParam());
  const Selection closing{.kind = ImportKindId::kClosing};
  const Selection shifted{.kind = ImportKindId::kClosing, .shiftedIn = true};
  EXPECT_EQ(closingBalanceObstacle(company.company, shifted), "");
  company.prepare({"insert into Fadep (Assetid, DocDt, flag) values ('A', #03/31/2005#, 'O')"});
  EXPECT_EQ(closingBalanceObstacle(company.company, closing), "");
  company.prepare({"insert into Fadep (Assetid, DocDt) values ('A', #09/30/2005#)"});
  EXPECT_EQ(closingBalanceObstacle(company.company, shifted),
            "Depreciation is calculated upto 30/09/2005. Therefore cannot import closing balances entries");
  company.prepare({"update AccYear set closed=true where AccYear='2004-05'"});
  EXPECT_EQ(closingBalanceObstacle(company.company, closing),
            "Accounting year : 2004-05 is closed. . Therefore cannot import closing balances entries");
  EXPECT_EQ(closingBalanceObstacle(company.company, {}), "");
}

}  // namespace
}  // namespace orva
