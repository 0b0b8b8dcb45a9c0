#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

const Selection kChild{.kind = ImportKindId::kDepChild};
const SheetRow kGood{{"PARENT_ID", "P1"},
                     {"DESCRIPTION", "Motor"},
                     {"COST", "250"},
                     {"USEDATE", "15/08/2005"},
                     {"PODATE", ""},
                     {"PONO", ""},
                     {"USER", ""},
                     {"VCHRNO", "V-1"},
                     {"VCHRDATE", "10/08/2005"},
                     {"VENDOR", "Acme"},
                     {"BILLNO", "B-1"},
                     {"BILLDATE", "09/08/2005"},
                     {"WARRANTY", ""},
                     {"IgnoreCostIT", "No"},
                     {"SALVAGEVALUE", ""},
                     {"CENVAT", ""}};
const std::string kLong31(31, 'x');
const std::string kLong51(51, 'x');
const std::string kLong256(256, 'x');

constexpr const char* kClosed = "update AccYear set closed=true where AccYear='2005-06'";
constexpr const char* kTaxClosed = "update FinYear set closed=true where FinYear='2005-06'";

std::string entry(const std::string& asset, const std::string& date, const std::string& more = "",
                  const std::string& values = "") {
  return "insert into Fadep (Assetid, DocDt" + more + ") values ('" + asset + "', #" + date + "#" + values + ")";
}

TEST(ChildRules, TheParent) {
  const std::string cannot = "1 PARENT_ID: Can't add Child Assets for the ";
  const Lines depreciated{"1 PARENT_ID: Depreciation is already calculated for Asset Id : P1. Can't import"};
  checkRules(kChild, kGood,
             {
                 {},
                 {.cells = {{"PARENT_ID", " o'n "}}},
                 {.cells = {{"PARENT_ID", "MOVED"}}},
                 {.cells = {{"PARENT_ID", ""}}, .findings = {"1 PARENT_ID: AssetID should not be blank"}},
                 {.cells = {{"PARENT_ID", kLong51}},
                  .findings = {"1 PARENT_ID: " + kLong51 + " exceeds the maximum length 50"}},
                 {.cells = {{"PARENT_ID", "P9"}},
                  .findings = {"1 PARENT_ID: Parent Asset not found, Can't add Child Assets for the AssetID: P9"}},
                 {.cells = {{"PARENT_ID", "NEW"}}, .findings = {cannot + "AssetID: NEW which is not put to use"}},
                 {.books = {"update Asset set blnLeaseHold=true"}, .findings = {cannot + "LeaseHold AssetID: P1"}},
                 {.books = {entry("P1", "08/15/2005")}, .findings = depreciated},
                 {.books = {entry("P1", "08/15/2005", ", reclass", ", 'M'")}, .findings = depreciated},
                 {.books = {entry("P1", "08/15/2005", ", reclass", ", 'Y'"),
                            entry("P1", "08/15/2005", ", flag", ", 'S'"), entry("P1", "08/14/2005")}},
                 {.books = {entry("P1", "08/15/2005")},
                  .cells = {{"USEDATE", "soon"}},
                  .findings = {"1 USEDATE: Invalid Use Date : soon"}},
                 {.books = {kClosed, kTaxClosed},
                  .findings = {"1 PARENT_ID: Asset Id : P1's accounting year : 2005-06 is closed. Can't import"}},
                 {.books = {kTaxClosed},
                  .findings = {"1 PARENT_ID: Asset Id : P1's Financial year : 2005-06 is closed. Can't import"}},
                 {.cells = {{"PARENT_ID", "SOLD"}},
                  .findings = {"1 PARENT_ID: Asset Id : SOLD is sold / Discarded. Can't import"}},
                 {.cells = {{"PARENT_ID", "OUT"}},
                  .findings = {"1 PARENT_ID: Asset Id : OUT is Transferred out. Can't import"}},
             });
}

TEST(ChildRules, CellByCell) {
  checkRules(
      kChild, kGood,
      {
          {.cells = {{"DESCRIPTION", ""}}, .findings = {"1 DESCRIPTION: Description should not be blank"}},
          {.cells = {{"PONO", kLong31}}, .findings = {"1 PONO: " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"PODATE", "x"}}, .findings = {"1 PODATE: Invalid PO date : x"}},
          {.cells = {{"WARRANTY", "31/06/2009"}}, .findings = {"1 WARRANTY: Invalid Warranty Upto date : 31/06/2009"}},
          {.cells = {{"WARRANTY", "31/12/1899"}},
           .onServer = Lines{"1 WARRANTY: Date out of Range. Invalid Warranty Upto date : 31/12/1899"}},
          {.cells = {{"USER", kLong51}},
           .findings = {"1 USER: User Name : " + kLong51 + " exceeds its maximum length 50"}},
          {.cells = {{"VCHRNO", kLong31}},
           .findings = {"1 VCHRNO: Voucher No : " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"BILLNO", kLong31}},
           .findings = {"1 BILLNO: Party Bill no : " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"VCHRDATE", ""}}, .findings = {"1 VCHRDATE: Voucher Date should not be blank"}},
          {.cells = {{"BILLDATE", ""}}, .findings = {"1 BILLDATE: Party Bill Date should not be blank"}},
          {.cells = {{"USEDATE", ""}}, .findings = {"1 USEDATE: Use Date should not be blank"}},
          {.cells = {{"VCHRDATE", "x"}}, .findings = {"1 VCHRDATE: Invalid Voucher Date : x"}},
          {.cells = {{"BILLDATE", "x"}}, .findings = {"1 BILLDATE: Invalid Party Bill Date : x"}},
          {.cells = {{"VCHRDATE", "31/12/1899"}},
           .onServer = Lines{"1 VCHRDATE: Date out of Range.Invalid Voucher Date : 31/12/1899"}},
          {.cells = {{"BILLDATE", "31/12/1899"}},
           .onServer = Lines{"1 BILLDATE: Date out of Range.Invalid Party Bill Date : 31/12/1899"}},
          {.cells = {{"COST", ""}}, .findings = {"1 COST: Cost should not be empty"}},
          {.cells = {{"COST", "12k"}}, .findings = {"1 COST: Cost should not contain alphabets"}},
          {.cells = {{"COST", "10.125"}}, .findings = {"1 COST: Cost should not contain more than 2 decimal places"}},
          {.cells = {{"COST", "-1000"}}},
          {.cells = {{"COST", "-1000.01"}},
           .findings = {"1 COST: Sum of Dependent Child asset Cost & Parent asset Cost should not be negative",
                        "1 COST: Sum of Parent and Dependent Child Assets Costs can not be Negative "}},
          {.books = {"insert into Addition (AssetId, PAssetId, Cost) values ('P1-01', 'P1', -300)"},
           .cells = {{"COST", "-701"}},
           .findings = {"1 COST: Sum of Dependent Child asset Cost & Parent asset Cost should not be negative",
                        "1 COST: Sum of Parent and Dependent Child Assets Costs can not be Negative "}},
          {.cells = {{"PARENT_ID", "P9"}, {"COST", "-5"}},
           .findings = {"1 PARENT_ID: Parent Asset not found, Can't add Child Assets for the AssetID: P9"}},
          {.cells = {{"VENDOR", kLong256}}, .findings = {"1 VENDOR: " + kLong256 + " exceeds its maximum length 255"}},
          {.cells = {{"VENDOR", "ACME "}}},
          {.cells = {{"VENDOR", ""}}},
          {.cells = {{"VENDOR", "O'Neil"}, {"IgnoreCostIT", "maybe"}},
           .findings = {"~1 VENDOR", "1 IgnoreCostIT: Ignore Cost IT either 'Yes' or 'No'. Can't import"}},
          {.cells = {{"IgnoreCostIT", ""}},
           .findings = {"1 IgnoreCostIT: Ignore Cost IT :  cannot blank. Can't import"}},
          {.cells = {{"IgnoreCostIT", "yes"}}},
          {.cells = {{"SALVAGEVALUE", "x"}}, .findings = {"1 SALVAGEVALUE: SalvageValue should not contain alphabets"}},
          {.cells = {{"SALVAGEVALUE", "-1"}},
           .findings = {"1 SALVAGEVALUE: SalvageValue should not be negative amount."}},
          {.cells = {{"SALVAGEVALUE", "250"}}},
          {.cells = {{"SALVAGEVALUE", "250.01"}},
           .findings = {"1 SALVAGEVALUE: SalvageValue can not be more than the asset cost : 250.00"}},
          {.books = {entry("P1", "06/30/2005")},
           .cells = {{"SALVAGEVALUE", "5"}},
           .findings = {"1 SALVAGEVALUE: Depreciation is already calculated. Can't change Salvage."}},
          {.cells = {{"CENVAT", "x"}}, .findings = {"1 CENVAT: CENVAT should not contain alphabets"}},
          {.cells = {{"CENVAT", "-1"}}, .findings = {"1 CENVAT: CenVat should not be negative amount."}},
          {.cells = {{"CENVAT", "251"}}, .findings = {"1 CENVAT: Cenvat can not be more than the asset cost : 250.00"}},
          {.books = {entry("P1", "06/30/2005")},
           .cells = {{"CENVAT", "5"}},
           .findings = {"1 CENVAT: Depreciation is already calculated. Can't change CenVat."}},
      });
}

TEST(ChildRules, TheUseDateInTheCalendars) {
  const std::string outside = " doesn't fall in any of the ";
  const std::string tax = "1 USEDATE: Depreciation as Per ITAX is already calculated for the Year : ";
  // The parent's own years are open ones without dates, so that only the use date's years count.
  const Lines elsewhere{"update Asset set Accyear='none', Finyear='none'"};
  const auto with = [&](Lines statements) {
    statements.insert(statements.begin(), elsewhere.begin(), elsewhere.end());
    return statements;
  };
  checkRules(
      kChild, kGood,
      {
          {.cells = {{"USEDATE", "31/12/1899"}},
           .findings = {"1 USEDATE: Child Asset cannot be put to use before the Parent Asset. 31/12/1899 Can't import"},
           .onServer = Lines{"1 USEDATE: Date out of Range.Invalid Use Date : 31/12/1899"}},
          {.cells = {{"USEDATE", "09/05/2005"}},
           .findings =
               {"1 USEDATE: Child Asset cannot be put to use before the Parent Asset. 09/05/2005 Can't import"}},
          {.cells = {{"USEDATE", "10/05/2005"}}},
          {.books = {entry("OTHER", "08/15/2005", ", flag", ", 'O'")},
           .findings = {"1 USEDATE: Closing Balances have been entered for this Year."}},
          {.books = {entry("OTHER", "08/14/2005", ", flag", ", 'O'")},
           .findings = {"1 USEDATE: Closing Balances have been entered for the Year : 2005-06"}},
          {.books = {entry("OTHER", "03/31/2005", ", flag", ", 'O'")}},
          {.cells = {{"USEDATE", "01/04/2006"}},
           .findings = {"1 USEDATE: 01/04/2006" + outside + "accounting years defined."}},
          {.books = with({"delete from AccYear"}),
           .findings = {"1 USEDATE: Accounting years are not defined in ORVA."}},
          {.books = with({kClosed}), .findings = {"1 USEDATE: Accounting year : 2005-06 is closed in ORVA."}},
          {.books = {entry("OTHER", "08/16/2005")},
           .findings = {"1 USEDATE: Depreciation is already calculated upto : 16/08/2005.Therefore cannot import date "
                        "15/08/2005"}},
          {.books = {entry("OTHER", "08/15/2005")}},
          {.books = with({"delete from FinYear where FinYear='2005-06'"}),
           .findings = {"1 USEDATE: 15/08/2005" + outside + "financial years defined."}},
          {.books = with({"delete from FinYear"}), .findings = {"1 USEDATE: Financial years are not defined in ORVA."}},
          {.books = with({kTaxClosed}), .findings = {"1 USEDATE: Financial year : 2005-06 is closed in ORVA."}},
          {.books = {"insert into ItaxDep (AssetId, DocDt, FinYear) values ('OTHER', #03/31/2007#, '2006-07')"},
           .findings = {tax + "2006-07"}},
          {.books = {"insert into ItaxDep (AssetId, DocDt, FinYear) values ('OTHER', #08/15/2005#, '2005-06')"},
           .findings = {tax + "2005-06"}},
          {.books = {"insert into ItaxDep (AssetId, DocDt, FinYear) values ('OTHER', #03/31/2005#, '2004-05')"}},
      });
}

TEST(ChildRules, PhysicalIdentifiersAreOfAssetsInOpenYears) {
  const Selection physical{.kind = ImportKindId::kDepChild, .mode = AssetMode::kModifyByPhysicalId};
  const SheetRow row = replaced(kGood, {{"PHYID", "T-2"}});
  const std::string other = "update Asset set Accyear='2004-05', Finyear='2004-05' where PhyID='T-2'";
  checkRules(physical, row,
             {
                 {},
                 {.cells = {{"PHYID", "T-9"}}},
                 {.cells = {{"PHYID", ""}}},
                 {.cells = {{"PHYID", kLong51}},
                  .findings = {"1 PHYID: Phy id : " + kLong51 + " exceeds its maximum length 50"}},
                 {.books = {other, "update AccYear set closed=true where AccYear='2004-05'"},
                  .findings = {"1 PHYID: Physical Id : T-2's accounting year : 2004-05 is closed. Can't import"}},
                 {.books = {other, "update FinYear set closed=true where FinYear='2004-05'"},
                  .findings = {"1 PHYID: Physical Id : T-2's Financial year : 2004-05 is closed. Can't import"}},
             });
}

TEST(ChildRules, TheCostsOfAFamilyAreAddedUpOverTheWorkbook) {
  TransactionCompany company(ImportKindId::kDepChild);
  const auto child = [](const char* parent, const char* cost) {
    return replaced(kGood, {{"PARENT_ID", parent}, {"COST", cost}});
  };
  company.stage(
      {child("P1", "-600"), child("O'N", "-600"), child("p1", "-401"), child("O'N", "-400"), child("P9", "-5000")});
  const std::string negative = "COST: Sum of Parent and Dependent Child Assets Costs can not be Negative ";
  EXPECT_EQ(company.validate(),
            (Lines{"1 " + negative, "3 " + negative,
                   "5 PARENT_ID: Parent Asset not found, Can't add Child Assets for the AssetID: P9"}));
  EXPECT_EQ(company.findings.errorRows(), 3);
}

}  // namespace
}  // namespace orva
