#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

struct Case {
  const char* name;
  Lines books;
  SheetRow cells;
  Lines findings;
};

constexpr const char* kPurchased =
    "insert into Asset (Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, SubClassCode, Cost, UseDate) "
    "values ('PM0001', 'T-1', 'Purchased', '2005-06', '2005-06', 'PM', 'PM-01', 'PM-01-01', 1000, #05/01/2005#)";
constexpr const char* kTakenOver =
    "insert into Asset (Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, Cost, UseDate) "
    "values ('PM0002', 'T-2', 'O', '2004-05', '2004-05', 'PM', 'PM-02', 2000, #05/01/2004#)";
constexpr const char* kSecondOfPhysicalId =
    "insert into Asset (Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode) "
    "values ('PM0003', 't-1', 'Purchased', '2005-06', '2005-06', 'PM')";
constexpr const char* kDepreciated =
    "insert into Fadep (Assetid, DocDt, Method) values ('PM0001', #03/31/2006#, 'SLM')";
constexpr const char* kReclassified = "insert into ReclassAstCat (assetid) values ('PM0001')";
constexpr const char* kShifted = "insert into Shift (assetid, tfrout, sameloc) values ('PM0001', true, true)";
constexpr const char* kTransferred = "insert into Shift (assetid, tfrout, sameloc) values ('PM0001', true, false)";
constexpr const char* kSold = "insert into AssetOut (AssetId) values ('PM0001')";
constexpr const char* kCloseAccounts = "update AccYear set closed=true where AccYear='2005-06'";
constexpr const char* kCloseTaxes = "update FinYear set closed=true where FinYear='2005-06'";
constexpr const char* kTaxed = "insert into ItaxDep (DocDt, FinYear) values (#03/31/2006#, '2005-06')";

void check(const std::vector<Case>& cases, const Selection& selection) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    for (const Case& one : cases) {
      AssetCompany company(dialect);
      company.selection = selection;
      company.prepare({kPurchased, kTakenOver});
      company.prepare(one.books);
      company.stage({one.cells});
      EXPECT_EQ(company.validate(), one.findings) << one.name;
    }
  }
}

TEST(ModifyByAssetId, Identity) {
  const std::string kLong(31, '9');
  const Lines unknown = {"1 CODE AS PER BOOKS", "1 CODE AS PER ITAX"};
  const auto with = [&](const std::string& line) { return Lines{line, unknown[0], unknown[1]}; };
  check(
      {
          {"known", {}, {{"ASSETID", "pm0001"}, {"REMARKS", "x"}}, {}},
          {"blanks around", {}, {{"ASSETID", " PM0001 "}, {"REMARKS", "x"}}, {}},
          {"blank", {}, {{"ASSETID", " "}, {"REMARKS", "x"}}, with("1 ASSETID: AssetID should not be blank")},
          {"unknown",
           {},
           {{"ASSETID", "O'N"}, {"REMARKS", "x"}},
           with("1 ASSETID: Asset Id : O'N does not exist in Acquistion of Assets in ORVA.")},
          {"of the other flavour",
           {},
           {{"ASSETID", "PM0002"}, {"REMARKS", "x"}},
           with("1 ASSETID: Asset Id : PM0002 does not exist in Acquistion of Assets in ORVA.")},
          {"too long",
           {},
           {{"ASSETID", kLong}, {"REMARKS", "x"}},
           {"1 ASSETID: " + kLong + " exceeds the maximum length 30",
            "1 ASSETID: Asset Id : " + kLong + " does not exist in Acquistion of Assets in ORVA.", unknown[0],
            unknown[1]}},
          {"everything stands in the way",
           {kCloseAccounts, kCloseTaxes, kSold, kTransferred},
           {{"ASSETID", "PM0001"}, {"REMARKS", "x"}},
           {"1 ASSETID: Asset Id : PM0001's accounting year : 2005-06 is closed. Can't import",
            "1 ASSETID: Asset Id : PM0001's Financial year : 2005-06 is closed. Can't import",
            "1 ASSETID: Asset Id : PM0001 is sold / Discarded. Can't import",
            "1 ASSETID: Asset Id : PM0001 is Transferred out. Can't import"}},
      },
      {.mode = AssetMode::kModifyByAssetId});
}

TEST(ModifyByPhysicalId, Identity) {
  const auto with = [](const std::string& line) { return Lines{line, "1 CODE AS PER BOOKS", "1 CODE AS PER ITAX"}; };
  check(
      {
          {"known", {}, {{"PHYID", "T-1"}, {"REMARKS", "x"}}, {}},
          {"blank", {}, {{"PHYID", ""}, {"REMARKS", "x"}}, with("1 PHYID: Physical id should not be blank")},
          {"shared by two",
           {kSecondOfPhysicalId},
           {{"PHYID", "T-1"}, {"REMARKS", "x"}},
           {"1 PHYID: Physical id : T-1 is duplicated more than once in ORVA."}},
          {"unknown",
           {},
           {{"PHYID", "T-9"}, {"REMARKS", "x"}},
           with("1 PHYID: Physical id : T-9 does not exist Acquistion of Assets in ORVA.")},
          {"everything stands in the way",
           {kCloseAccounts, kCloseTaxes, kSold, kTransferred},
           {{"PHYID", "T-1"}, {"REMARKS", "x"}},
           {"1 PHYID: Physical Id : T-1's accounting year : 2005-06 is closed. Can't import",
            "1 PHYID: Physical Id : T-1's Financial year : 2005-06 is closed. Can't import",
            "1 PHYID: Physical Id : T-1 is sold / Discarded. Can't import",
            "1 PHYID: Physical Id : T-1 is Transferred out. Can't import"}},
      },
      {.mode = AssetMode::kModifyByPhysicalId});
  check({{"unknown closing balance",
          {},
          {{"PHYID", "T-1"}, {"REMARKS", "x"}},
          with("1 PHYID: Physical id : T-1 does not exist Closing balance in ORVA.")}},
        {.kind = ImportKindId::kClosing, .mode = AssetMode::kModifyByPhysicalId});
}

TEST(ModifyRules, WhatDepreciationFreezes) {
  check(
      {
          {"every frozen column",
           {kDepreciated},
           // The identifier may stand anywhere in the sheet.
           {{"USEDATE", "02/05/2005"},
            {"CAT2", "Pumps"},
            {"CAT3", "Centrifugal"},
            {"COST", "900"},
            {"GST", "1"},
            {"SALVAGEVALUE", "1"},
            {"QTY", "2"},
            {"OVERRIDERATE", "5"},
            {"OVERRIDEMETHOD", "WDV"},
            {"ASSETID", "PM0001"}},
           {"1 USEDATE: Depreciation is calculated. Can't change",
            "1 USEDATE: Depreciation is already calculated upto : 31/03/2006.Therefore cannot import date 02/05/2005",
            "1 CAT2: Depreciation is already calculated. Can't change CAT2.",
            "1 CAT3: Depreciation is already calculated. Can't change CAT3.",
            "1 COST: Depreciation is already calculated. Can't change cost.",
            "1 GST: Depreciation is already calculated. Can't change GST.",
            "1 SALVAGEVALUE: Depreciation is already calculated. Can't change Salvage.",
            "1 QTY: Depreciation is calculated. Can't change QTY.",
            "1 OVERRIDEMETHOD: Depreciation is calculated with SLM Method. Can't change Override Method -Books as "
            "WDV"}},
          {"blank cells change nothing",
           {kDepreciated},
           {{"ASSETID", "PM0001"},
            {"USEDATE", ""},
            {"GST", ""},
            {"QTY", ""},
            {"OVERRIDERATE", ""},
            {"OVERRIDEMETHOD", ""}},
           {}},
          {"the same method, and the method of the first entry",
           {kDepreciated},
           {{"ASSETID", "PM0001"}, {"OVERRIDERATE", "5"}},
           {}},
          {"a method without its rate",
           {},
           {{"ASSETID", "PM0001"}, {"OVERRIDEMETHOD", "SLM"}},
           {"1 OVERRIDEMETHOD: Override Rate - Books is not updated. Import Override Rate - Books also along with "
            "Override Method - books "}},
          {"a change of category",
           {kReclassified},
           {{"ASSETID", "PM0001"}, {"USEDATE", "02/05/2005"}, {"CAT2", "Pumps"}, {"CAT3", "Centrifugal"}},
           {"1 USEDATE: Change of Category is present for the Asset ID : PM0001. Can't change",
            "1 CAT2: Change of Asset Category entry is present. Can't change CAT2.",
            "1 CAT3: Change of Asset Category entry is present. Can't change CAT3."}},
          {"a shift within the location",
           {kShifted, "insert into MisMaster (MName) values ('Branch')",
            "insert into MisData (Master, Code, MName) values ('M1', '0001', 'North')"},
           {{"ASSETID", "PM0001"},
            {"DEPT", "Stores"},
            {"USER", "Rao"},
            {"COSTCENTRE", "Works"},
            {"MAINLOC", "Pune"},
            {"SUBLOC", "Plant 1"},
            {"PHYLOC", "Bay 1"},
            {"Branch", "North"}},
           {"1 DEPT: Asset is shifted. Can't change Department.", "1 USER: Asset is shifted. Can't change UserName.",
            "1 COSTCENTRE: Asset is shifted. Can't change Cost Centre.",
            "1 MAINLOC: Asset is shifted. Can't change the Locations.",
            "1 SUBLOC: Asset is shifted. Can't change the Locations.",
            "1 PHYLOC: Asset is shifted. Can't change the Locations.",
            "1 Branch: Asset is shifted. Can't change Branch"}},
          {"amounts against the stored cost",
           {},
           {{"ASSETID", "PM0001"}, {"GST", "1000"}, {"SALVAGEVALUE", "1001"}},
           {"1 GST: GST can not be more than or equal to the asset cost : 1000",
            "1 SALVAGEVALUE: SalvageValue can not be more than the asset cost : 1000"}},
          {"additional rate after income tax",
           {kTaxed},
           {{"ASSETID", "PM0001"}, {"AddnlRateAsPerIT", "20"}},
           {"1 AddnlRateAsPerIT: , depreciation is already calculated as per Income Tax for FY 2005-06"}},
      },
      {.mode = AssetMode::kModifyByAssetId});
}

TEST(ModifyRules, ClosingBalances) {
  AssetCompany company;
  company.selection = {.kind = ImportKindId::kClosing, .mode = AssetMode::kModifyByAssetId};
  company.company.flags.additionalBook1 = true;
  company.company.flags.additionalBook2 = true;
  company.prepare(
      {kTakenOver, "insert into Fadep (Assetid, DocDt, Method, flag) values ('PM0002', #03/31/2005#, 'SLM', 'O')"});
  const SheetRow row{{"ASSETID", "PM0002"}, {"ACCDEP", "1"}, {"ACCDEP1", "2"}, {"ACCDEP2", "3"}};
  company.stage({row});
  EXPECT_EQ(company.validate(), Lines()) << "the opening entry is no depreciation";
  company.prepare({"insert into Fadep (Assetid, DocDt, Method) values ('PM0002', #03/31/2006#, 'SLM')"});
  company.stage({row});
  EXPECT_EQ(company.validate(), (Lines{"1 ACCDEP: Depreciation is already calculated. Can't change AccDep.",
                                       "1 ACCDEP1: Depreciation is already calculated. Can't change AccDep1.",
                                       "1 ACCDEP2: Depreciation is already calculated. Can't change AccDep1."}));
}

}  // namespace
}  // namespace orva
