#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

const Selection kById{.kind = ImportKindId::kCostBreakup, .mode = AssetMode::kModifyByAssetId};
const Selection kByPhysicalId{.kind = ImportKindId::kCostBreakup, .mode = AssetMode::kModifyByPhysicalId};
const SheetRow kGood{{"ASSETID", "P1"},          {"VCHRNO", ""},
                     {"VCHRDATE", "01/05/2005"}, {"BILLNO", ""},
                     {"BILLDATE", "30/04/2005"}, {"PARTICULARS", "Freight"},
                     {"AMOUNT", "1000"},         {"COSTCATEGORY", "FRT"},
                     {"VENDOR", "Acme"}};
const std::string kLong31(31, 'x');
const std::string kLong51(51, 'x');
const std::string kLong256(256, 'x');
const std::string kUnbalanced = "AMOUNT: Sum of Cost Breakup Amounts should be equal to Asset Cost";

TEST(CostBreakupRules, CellByCell) {
  checkRules(
      kById, kGood,
      {
          {},
          {.cells = {{"ASSETID", " o'n "}}},
          {.cells = {{"ASSETID", ""}}, .findings = {"1 ASSETID: AssetID should not be blank"}},
          {.cells = {{"ASSETID", kLong31}}, .findings = {"1 ASSETID: " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"ASSETID", "P9"}},
           .findings = {"1 ASSETID: Asset Id : P9 does not exist in Acquistion of Assets in ORVA."}},
          {.cells = {{"ASSETID", "OPEN"}},
           .findings = {"1 ASSETID: Can't import Cost Breakup details for the Closing balance entries in ORVA."}},
          {.books = {"insert into CostBreakup (assetid) values ('P1')"},
           .findings = {"1 ASSETID: Cost Breakup Details are already exists for Asset Id : P1"}},
          {.cells = {{"VCHRNO", kLong31}},
           .findings = {"1 VCHRNO: Voucher No : " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"VCHRDATE", ""}}, .findings = {"1 VCHRDATE: Voucher Date should not be blank"}},
          {.cells = {{"VCHRDATE", "31/02/2005"}}, .findings = {"1 VCHRDATE: Invalid Voucher Date : 31/02/2005"}},
          {.cells = {{"BILLNO", kLong31}},
           .findings = {"1 BILLNO: Party Bill no : " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"BILLDATE", "31/12/1899"}},
           .onServer = Lines{"1 BILLDATE: Date out of Range.Invalid Party Bill Date : 31/12/1899"}},
          {.cells = {{"AMOUNT", "x"}}, .findings = {"1 AMOUNT: x Amount cannot be Non-Numeric.", "1 " + kUnbalanced}},
          {.cells = {{"AMOUNT", "999.99"}}, .findings = {"1 " + kUnbalanced}},
          {.cells = {{"COSTCATEGORY", " "}}, .findings = {"1 COSTCATEGORY: CostCategory should not be blank"}},
          {.cells = {{"COSTCATEGORY", kLong31}},
           .findings = {"1 COSTCATEGORY: " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"VENDOR", kLong256}}, .findings = {"1 VENDOR: " + kLong256 + " exceeds its maximum length 255"}},
          {.cells = {{"VENDOR", ""}}},
      });
}

TEST(CostBreakupRules, PhysicalIdentifiers) {
  const SheetRow row = replaced(without(kGood, "ASSETID"), {{"PHYID", "t-1"}});
  checkRules(kByPhysicalId, row,
             {
                 {},
                 {.cells = {{"PHYID", ""}}, .findings = {"1 PHYID: Physical id should not be blank"}},
                 {.cells = {{"PHYID", kLong51}},
                  .findings = {"1 PHYID: Phy id : " + kLong51 + " exceeds its maximum length 50"}},
                 {.cells = {{"PHYID", "P1"}},
                  .findings = {"1 PHYID: Physical id : P1 does not exist Acquistion of Assets in ORVA."}},
                 {.books = {"update Asset set PhyID='T-1' where Assetid='MOVED'"},
                  .findings = {"1 PHYID: Physical id : t-1 is duplicated more than once in ORVA."}},
                 {.books = {"insert into CostBreakup (assetid) values ('P1')"},
                  .findings = {"1 PHYID: Cost Breakup Details are already exists for Asset Id : P1"}},
             });
}

/// Nothing in the catalogue names the asset when assets are added.
TEST(CostBreakupRules, AddModeTakesTheIdentifierColumnOfTheSheet) {
  const Selection add{.kind = ImportKindId::kCostBreakup};
  checkRules(add, kGood,
             {{},
              {.cells = {{"ASSETID", "P9"}},
               .findings = {"1 ASSETID: Asset Id : P9 does not exist in Acquistion of Assets in ORVA."}}});
  checkRules(add, without(kGood, "ASSETID"), {{.findings = {"1 ASSETID: AssetID should not be blank"}}});
}

TEST(CostBreakupRules, AmountsBalanceAssetByAsset) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    TransactionCompany company(ImportKindId::kCostBreakup, dialect);
    company.selection = kById;
    company.prepare({"insert into TmpAstCostBrkup (AssetId, Cost, Amount) values ('O''N', 5, 6)"});
    const auto part = [](const char* asset, const char* amount) {
      return replaced(kGood, {{"ASSETID", asset}, {"AMOUNT", amount}});
    };
    company.stage({part("P1", "999.9999"), part("MOVED", "1500.5"), part("p1", "0.0001"), part("MOVED", "-500.5"),
                   part("O'N", "600"), part("NEW", "1000"), part("O'N", "400.0001")});
    EXPECT_EQ(company.validate(), (Lines{"5 " + kUnbalanced, "7 " + kUnbalanced}));
    EXPECT_EQ(company.rows("select AssetId, Cost, Amount, Status from TmpAstCostBrkup order by AssetId"),
              (Lines{"MOVED|1000|1000|Y", "NEW|1000|1000|Y", "O'N|1000|1000.0001|N", "P1|1000|1000|Y"}));
  }
}

}  // namespace
}  // namespace orva
