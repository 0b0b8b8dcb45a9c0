#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"
#include "imports/asset/posting/after_posting.h"
#include "imports/asset/posting/closing_guard.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// Tables whose rows a posting run may change.
constexpr const char* kTables[] = {"Asset",    "Fadep",    "FADep1",  "FADep2",         "Shift",
                                   "Addition", "UDValues", "Dept",    "Vendor",         "CostCentre",
                                   "Users",    "Location", "MisData", "Classification", "SubClass"};

/// What one import of each flavour, mode and tick leaves in the tables.
struct Import {
  const char* name;
  Selection selection;
  Lines books;
  std::vector<SheetRow> rows;
  ParameterFlags flags = {.automaticIdentifiers = true};
};

constexpr const char* kMasters[] = {"insert into MisMaster (MName) values ('Branch')",
                                    "insert into MisMaster (MName) values ('Project')",
                                    "insert into UDFields (UDF1, UDF11) values ('Colour', 'Checked')"};

constexpr const char* kPurchased =
    "insert into Asset (Cocd, Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, SubClassCode, Cost, "
    "UseDate, Docdt, Facode, FAAge) values ('K1', 'PM\\PU\\CE0004', 'T-1', 'Purchased', '2005-06', '2005-06', 'PM', "
    "'PM-01', 'PM-01-01', 1000, #05/01/2005#, #05/01/2005#, 'F2', 60)";
constexpr const char* kTakenOver =
    "insert into Asset (Cocd, Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, Cost, UseDate, Docdt, "
    "Facode, FACode1, AccDep, FAAge) values ('K1', 'PM0002', 'T-2', 'O', '2004-05', '2004-05', 'PM', 'PM-02', 2000, "
    "#05/01/2000#, #03/31/2005#, 'F1', 'A1', 100, 60)";
constexpr const char* kOpeningEntry =
    "insert into Fadep (Cocd, Assetid, DocDt, SrNo, flag, AccDep) values ('K1', 'PM0002', #03/31/2005#, '7', 'O', 100)";
constexpr const char* kChild =
    "insert into Addition (AssetId, PAssetId, ClassCode, SubClassCode) "
    "values ('PM\\PU\\CE0004-01', 'PM\\PU\\CE0004', 'PM-01', 'PM-01-01')";

const ParameterFlags kAllKept{
    .additionalBook1 = true, .additionalBook2 = true, .automaticIdentifiers = true, .costCentres = true, .users = true};

std::vector<Import> imports() {
  return {
      {"purchase_plain",
       {},
       {},
       {without(without(without(purchase(), "DEPT"), "VENDOR"), "QTY"),
        without(without(without(purchase({{"PHYID", "T-101"}}), "DEPT"), "VENDOR"), "QTY")}},
      {"purchase_full",
       {},
       {kMasters[0], kMasters[1], kMasters[2],
        "insert into FARate2 (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'B1', 'SLM', 5, '2005-06')"},
       {purchase({{"CAT3", "Centrifugal"},
                  {"GST", "180.5"},
                  {"QTY", "3"},
                  {"DEPT", "O'Neil's shop"},
                  {"VENDOR", "Bolt Co"},
                  {"COSTCENTRE", "Yard"},
                  {"USER", "D'Souza"},
                  {"REMARKS", "second hand"},
                  {"Life", "120.0"},
                  {"VCHRNO", "V-1"},
                  {"WARRANTY", "30/04/2007"},
                  {"PONO", "PO 7"},
                  {"PODATE", "1/4/2005"},
                  {"BILLNO", "B/9"},
                  {"BILLDATE", "02/04/2005"},
                  {"OVERRIDERATE1", "12.5"},
                  {"OVERRIDEMETHOD1", "wdv"},
                  {"OVERRIDERATE2", "0"},
                  {"OVERRIDEMETHOD2", "SLM"},
                  {"SALVAGEVALUE", "50"},
                  {"AddnlRateAsPerIT", "20"},
                  {"MAINLOC", "Mumbai"},
                  {"Branch", "North"},
                  {"Project", "Alpha"},
                  {"UDV1", "red"},
                  {"UDV11", "05/06/2005"}}),
        purchase({{"CAT3", ""},
                  {"GST", ""},
                  {"QTY", ""},
                  {"DEPT", "o'neil's SHOP"},
                  {"VENDOR", ""},
                  {"COSTCENTRE", ""},
                  {"USER", ""},
                  {"REMARKS", ""},
                  {"Life", ""},
                  {"VCHRNO", ""},
                  {"WARRANTY", ""},
                  {"PONO", ""},
                  {"PODATE", ""},
                  {"BILLNO", ""},
                  {"BILLDATE", ""},
                  {"OVERRIDERATE1", ""},
                  {"OVERRIDEMETHOD1", ""},
                  {"OVERRIDERATE2", ""},
                  {"OVERRIDEMETHOD2", ""},
                  {"SALVAGEVALUE", ""},
                  {"AddnlRateAsPerIT", ""},
                  {"MAINLOC", "mumbai"},
                  {"Branch", "South"},
                  {"Project", "Alpha"},
                  {"UDV1", ""},
                  {"UDV11", ""}})},
       kAllKept},
      {"purchase_units",
       {.multipleAssetIds = true},
       {},
       {purchase({{"QTY", "3"}, {"COST", "100"}, {"GST", "0.05"}}), purchase({{"PHYID", "T-101"}, {"GST", ""}})}},
      {"purchase_automatic_rate",
       {.autoCalcDepRate = true},
       {},
       {purchase({{"Life", "120"}, {"SALVAGEVALUE", "50"}, {"CAT3", "Centrifugal"}}),
        purchase({{"Life", "96"}, {"SALVAGEVALUE", "0"}, {"CAT3", ""}})}},
      {"purchase_backdated",
       {.backdated = true},
       {"insert into Fadep (Assetid, DocDt, DefCode) values ('X', #09/30/2005#, 'PM')"},
       {purchase(), purchase({{"USEDATE", "01/10/2005"}, {"VCHRDATE", "01/10/2005"}})}},
      {"purchase_lease",
       {.leaseHold = true},
       {},
       {purchase({{"CAT1", "Leased Land"}, {"CAT2", "Plots"}, {"LEASEDATE", "30/04/2035"}})}},
      {"shifted_in",
       {.shiftedIn = true},
       {},
       {purchase({{"ACCDEP", "300"}, {"ShiftedFrom", "Nagpur works"}, {"REMARKS", "by road"}, {"DEPT", "Packing"}})}},
      {"closing",
       {.kind = ImportKindId::kClosing},
       {},
       {takenOver({{"ACCDEP1", "90"}, {"ACCDEP2", "80"}, {"CAT3", "Centrifugal"}}),
        takenOver({{"ACCDEP1", ""}, {"ACCDEP2", "0"}, {"CAT3", ""}})},
       kAllKept},
      {"closing_units",
       {.kind = ImportKindId::kClosing, .multipleAssetIds = true},
       {},
       {takenOver({{"QTY", "2"}, {"COST", "99.99"}, {"ACCDEP", "33.33"}})}},
      {"modify_by_asset_id",
       {.mode = AssetMode::kModifyByAssetId},
       {kPurchased, kTakenOver, kChild},
       {{{"REMARKS", "moved"},
         {"ASSETID", "pm\\pu\\ce0004"},
         {"CAT2", "Presses"},
         {"DEPT", "Packing"},
         {"QTY", "4"},
         {"WARRANTY", "01/01/2010"},
         {"PHYID", "T-9"}}}},
      {"modify_by_physical_id",
       {.mode = AssetMode::kModifyByPhysicalId},
       {kPurchased, kChild,
        "insert into Fadep (Assetid, DocDt, Method) values ('PM\\PU\\CE0004', #03/31/2006#, 'WDV')"},
       {{{"PHYID", "T-1"}, {"REMARKS", "painted"}, {"OVERRIDERATE", "12"}}}},
      {"modify_closing",
       {.kind = ImportKindId::kClosing, .mode = AssetMode::kModifyByAssetId},
       {kTakenOver, kOpeningEntry},
       {{{"ASSETID", "PM0002"}, {"COST", "2500"}, {"ACCDEP", "150"}, {"ACCDEP1", "70"}}},
       kAllKept},
  };
}

TEST(Posting, TablesAfterEachKindOfImport) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    for (const Import& one : imports()) {
      AssetCompany company(dialect);
      company.selection = one.selection;
      company.company.flags = one.flags;
      company.prepare(one.books);
      const std::string before = contentsOf(company, kTables);
      const PostResult result = company.import(one.rows);
      EXPECT_EQ(result.text, "Imported successfully") << one.name;
      EXPECT_EQ(result.rowsPosted, static_cast<int>(one.rows.size()));
      expectTables(one.name, added(before, contentsOf(company, kTables)));
    }
  }
}

TEST(Posting, NumbersGoOnAfterAFailedRun) {
  AssetCompany company;
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

/// Everything stored belongs together: a failing call leaves whole assets, and no opening entry is
/// doubled by the next attempt.
TEST(Posting, FailureAtEveryCall) {
  // On the last day of the year, so that entries of a failed run do not stand in the way of the rest.
  const SheetRow dates{{"USEDATE", "31/03/2005"}, {"VCHRDATE", "31/03/2005"}};
  const auto dated = [&](SheetRow cells) {
    cells.insert(cells.end(), dates.begin(), dates.end());
    return takenOver(cells);
  };
  const std::vector<SheetRow> sheet{
      dated({{"PHYID", "A"}, {"DEPT", "Packing"}, {"USER", "Roy"}, {"ACCDEP1", "5"}, {"CAT3", "Centrifugal"}}),
      dated({{"PHYID", "B"}, {"DEPT", "Packing"}, {"USER", "Rao"}, {"ACCDEP1", "6"}, {"CAT3", ""}})};
  for (int nth = 1;; ++nth) {
    AssetCompany company;
    company.selection.kind = ImportKindId::kClosing;
    company.company.flags = {.additionalBook1 = true, .automaticIdentifiers = true, .users = true};
    company.stage(sheet);
    company.validate();
    company.adapter->plan().loseConnectionAt(nth);
    const PostResult result = company.post();
    if (result.finished) {
      EXPECT_GT(nth, 40);
      break;
    }
    EXPECT_FALSE(result.text.empty()) << nth;
    company.company.connection =
        company.fakes.databases.connect("Provider=Books;Data Source=" + company.folder.file("company.mdb"));
    const int stored = static_cast<int>(company.rows("select Assetid from Asset").size());
    EXPECT_GE(stored, result.rowsPosted) << nth;
    EXPECT_LE(stored, result.rowsPosted + 1) << nth;
    EXPECT_EQ(company.rows("select a.Assetid from Asset a, Fadep f where a.Assetid = f.Assetid").size(),
              company.rows("select Assetid from Asset").size())
        << "an asset without its entry " << nth;
    // What is left of the sheet is imported again.
    const std::vector<SheetRow> rest(sheet.begin() + stored, sheet.end());
    if (rest.empty()) continue;
    EXPECT_TRUE(company.import(rest).finished) << nth;
    EXPECT_EQ(company.rows("select Assetid, PhyID from Asset order by Assetid"),
              (Lines{"PM\\PU0001|B", "PM\\PU\\CE0001|A"}))
        << nth;
    EXPECT_EQ(company.rows("select Assetid, AccDep from Fadep order by Assetid").size(), 2U) << nth;
    EXPECT_EQ(company.rows("select Assetid, AccDep from FADep1 order by Assetid").size(), 2U) << nth;
    EXPECT_EQ(company.rows("select DeptName from Dept where DeptName='Packing'").size(), 1U) << nth;
  }
}

TEST(Posting, LevelsRemovedSinceValidationAreMadeAgain) {
  AssetCompany company;
  company.stage({purchase({{"CAT2", "Presses"}}), purchase({{"CAT2", "Presses"}})});
  company.validate();
  company.prepare({"delete from Classification where ClassCode='PM-02'"});
  EXPECT_TRUE(company.post().finished);
  EXPECT_EQ(company.rows("select Assetid, ClassCode from Asset order by Assetid"),
            (Lines{"PM0001|PM-02", "PM0002|PM-02"}));
  EXPECT_EQ(company.row("select ClassDesc from Classification where ClassCode='PM-02'"), "Presses");
}

TEST(LifeFill, TheMostDetailedLifeOfAssetsWithoutOne) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect);
    company.prepare(
        {"update FADefinition set AssetLife=60", "update SubClass set AssetLife2=1",
         "insert into Asset (Assetid, DefCode, ClassCode, SubClassCode, UseDate) values ('A', 'PM', 'PM-01', "
         "'PM-01-01', #01/31/2005#)",
         "insert into Asset (Assetid, DefCode, ClassCode, UseDate) values ('B', 'PM', 'PM-01', #05/15/2005#)",
         "insert into Asset (Assetid, DefCode, ClassCode) values ('C''s', 'PM', 'NONE')",
         "insert into Asset (Assetid, DefCode, FAAge, UseDate) values ('D', 'PM', 7, #05/15/2005#)",
         "insert into Asset (Assetid, DefCode, LeaseDate) values ('E', 'PM', #05/15/2005#)",
         "insert into Asset (Assetid, DefCode, UseDate) values ('F', 'XX', #05/15/2005#)"});
    EXPECT_EQ(fillLifeAndLeaseDate(company.company), 3);
    EXPECT_EQ(company.rows("select Assetid, FAAge, LeaseDate from Asset order by Assetid"),
              (Lines{"A|1|28/02/2005", "B|60|15/05/2010", "C's|60|", "D|7|", "E||15/05/2005", "F||"}));
    EXPECT_EQ(fillLifeAndLeaseDate(company.company), 0);
  }
}

TEST(ClosingGuard, ClosedYearAndCalculatedDepreciation) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect);
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
}

}  // namespace
}  // namespace orva
