#include "imports/transactions/cases.h"
#include "imports/transactions/child_assets.h"
#include "imports/transactions/cost_breakup.h"

namespace orva {
namespace {

const SheetRow kChild = {{"PARENT_ID", "A1"},
                         {"DESCRIPTION", "Motor"},
                         {"COST", "100"},
                         {"USEDATE", "01/06/2005"},
                         {"VCHRDATE", "01/06/2005"},
                         {"IgnoreCostIT", "Yes"},
                         {"VENDOR", ""},
                         {"USER", ""},
                         {"SALVAGEVALUE", ""},
                         {"Cenvat", ""}};

TEST(Child, ParentChecks) {
  const std::string noParent = "1 PARENT_ID: Parent Asset not found, Can't add Child Assets for the AssetID: Z9";
  expectFindings(childAssetsProcedures(), kChild,
                 {
                     {{}, {}, {}},
                     {{{{"PARENT_ID", ""}}}, {}, {"1 PARENT_ID: AssetID should not be blank"}},
                     {{{{"PARENT_ID", "Z9"}}}, {}, {noParent}},
                     {{},
                      {"update Asset set UseDate=null"},
                      {"1 PARENT_ID: Can't add Child Assets for the AssetID: A1 which is not put to use"}},
                     {{},
                      {"update Asset set blnLeaseHold=true"},
                      {"1 PARENT_ID: Can't add Child Assets for the LeaseHold AssetID: A1"}},
                     {{},
                      {"insert into Fadep (Assetid, DocDt) values ('A1', #06/01/2005#)"},
                      {"1 PARENT_ID: Depreciation is already calculated for Asset Id : A1. Can't import"}},
                     {{},
                      {"update AccYear set Closed=true where AccYear='2005-06'"},
                      {"1 PARENT_ID: Asset Id : A1's accounting year : 2005-06 is closed. Can't import"}},
                     {{},
                      {"update FinYear set Closed=true where FinYear='2005-06'"},
                      {"1 PARENT_ID: Asset Id : A1's Financial year : 2005-06 is closed. Can't import"}},
                     {{},
                      {"insert into AssetOut (AssetId) values ('A1')"},
                      {"1 PARENT_ID: Asset Id : A1 is sold / Discarded. Can't import"}},
                     {{},
                      {"insert into Shift (assetid, tfrout, sameloc) values ('A1', true, false)"},
                      {"1 PARENT_ID: Asset Id : A1 is Transferred out. Can't import"}},
                 });
}

TEST(Child, AmountsAndDates) {
  const std::string together = ": Sum of Parent and Dependent Child Assets Costs can not be Negative ";
  expectFindings(
      childAssetsProcedures(), kChild,
      {
          {{{{"COST", ""}}}, {}, {"1 COST: Cost should not be empty"}},
          {{{{"COST", "1,x"}}}, {}, {"1 COST: Cost should not contain alphabets"}},
          {{{{"COST", "10.125"}}}, {}, {"1 COST: Cost should not contain more than 2 decimal places"}},
          {{{{"COST", "-1000"}}}, {}, {}},
          {{{{"COST", "-1000.01"}}},
           {},
           {"1 COST: Sum of Dependent Child asset Cost & Parent asset Cost should not be negative",
            "1 COST" + together}},
          {{{{"COST", "-600"}}, {{"COST", "-600"}}}, {}, {"1 COST" + together, "2 COST" + together}},
          {{{{"COST", "-1100"}}}, {"insert into Addition (AssetId, PAssetId, Cost) values ('A1-01', 'A1', 100)"}, {}},
          {{{{"USEDATE", "09/05/2005"}}},
           {},
           {"1 USEDATE: Child Asset cannot be put to use before the Parent Asset. 09/05/2005 Can't import"}},
          {{{{"USEDATE", ""}}}, {}, {"1 USEDATE: Use Date should not be blank"}},
          {{{{"VCHRDATE", "2005-06-01"}}}, {}, {"1 VCHRDATE: Invalid Voucher Date : 2005-06-01"}},
          {{},
           {"insert into Fadep (Assetid, DocDt, Flag) values ('B5', #03/31/2006#, 'O')"},
           {"1 USEDATE: Closing Balances have been entered for this Year."}},
          {{},
           {"insert into Fadep (Assetid, DocDt) values ('B5', #06/30/2005#)"},
           {"1 USEDATE: Depreciation is already calculated upto : 30/06/2005.Therefore cannot import date "
            "01/06/2005"}},
          {{},
           {"insert into ItaxDep (AssetId, DocDt, FinYear) values ('B5', #06/30/2005#, '2005-06')"},
           {"1 USEDATE: Depreciation as Per ITAX is already calculated for the Year : 2005-06"}},
          {{{{"IgnoreCostIT", ""}}}, {}, {"1 IgnoreCostIT: Ignore Cost IT :  cannot blank. Can't import"}},
          {{{{"IgnoreCostIT", "1"}}}, {}, {"1 IgnoreCostIT: Ignore Cost IT either 'Yes' or 'No'. Can't import"}},
          {{{{"SALVAGEVALUE", "100"}}}, {}, {}},
          {{{{"SALVAGEVALUE", "-1"}}}, {}, {"1 SALVAGEVALUE: SalvageValue should not be negative amount."}},
          {{{{"Cenvat", "x"}}}, {}, {"1 Cenvat: CENVAT should not contain alphabets"}},
          {{{{"Cenvat", "5"}}},
           {"insert into Fadep (Assetid, DocDt) values ('A1', #05/31/2005#)"},
           {"1 Cenvat: Depreciation is already calculated. Can't change CenVat."}},
      });
}

TEST(Child, TakesTheNextNumberAndItsParentsPlace) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect, childAssetsForeignExchangeProcedures());
    company.prepare({kAssetA1, "insert into Asset (Assetid, PAssetId) values ('A1-04', 'A1')",
                     "insert into Addition (AssetId, PAssetId, Cost) values ('A1-09', 'A1', 1)"});
    const SheetRow second = with(kChild, {{"COST", "7.5"}, {"VENDOR", "acme"}, {"USER", "0004"}});
    EXPECT_EQ(company.import({kChild, second}).text, "Imported successfully");
    EXPECT_EQ(company.rows("select AssetId, Desc1, Vendorcode, UsedBy, Cost, UseDate, PAssetId, FaCode, DefCode, "
                           "Accyear, Acquiredas, Batch, cocd from Addition where AssetId <> 'A1-09' order by AssetId"),
              (Lines{"A1-10|Motor|NONE|NONE|100|01/06/2005|A1|F2|PM|2005-06|F|B7|K1",
                     "A1-11|Motor|0003|0004|7.5|01/06/2005|A1|F2|PM|2005-06|F|B7|K1"}));
  }
}

const SheetRow kPart = {{"ASSETID", "A1"},
                        {"VCHRDATE", "01/05/2005"},
                        {"BILLDATE", "02/05/2005"},
                        {"PARTICULARS", "Freight"},
                        {"AMOUNT", "1000"},
                        {"COSTCATEGORY", "FR"},
                        {"VENDOR", ""}};

TEST(CostBreakup, BalancesEveryAsset) {
  const std::string differs = ": Sum of Cost Breakup Amounts should be equal to Asset Cost";
  expectFindings(costBreakupProcedures(), kPart,
                 {
                     {{}, {}, {}},
                     {{{{"AMOUNT", "400.25"}}, {{"AMOUNT", "599.75"}}}, {}, {}},
                     {{{{"AMOUNT", "400"}}, {{"AMOUNT", "599.99"}}}, {}, {"1 AMOUNT" + differs, "2 AMOUNT" + differs}},
                     {{},
                      {"update Asset set AcquiredAs='O'"},
                      {"1 ASSETID: Can't import Cost Breakup details for the Closing balance entries in ORVA."}},
                     {{},
                      {"insert into CostBreakup (assetid) values ('A1')"},
                      {"1 ASSETID: Cost Breakup Details are already exists for Asset Id : A1"}},
                 });
}

TEST(CostBreakup, PostsPartsOfPurchasedAssetsOnly) {
  AssetCompany company(SqlDialect::kAccess, costBreakupProcedures());
  company.prepare({kAssetA1, "insert into Asset (Cocd, Assetid, AcquiredAs, Cost) values ('K1', 'A2', 'Gift', 1000)"});
  EXPECT_EQ(company.import({kPart, with(kPart, {{"ASSETID", "A2"}})}).text, "Imported successfully");
  EXPECT_EQ(company.rows("select Desc1, Vendor, Docdt, Partybilldt, Amount, CostCatCode, cocd, srno, assetid "
                         "from CostBreakup"),
            Lines{"Freight|NONE|01/05/2005|02/05/2005|1000|FR|K1|1|A1"});
}

}  // namespace
}  // namespace orva
