#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// What the books hold, the two dates of a row, and what is found.
struct Case {
  const char* name;
  Lines books;
  std::string useDate;
  std::string voucherDate;
  Lines findings;
};

std::string depreciation(const std::string& date, const std::string& more = "null, null") {
  return "insert into Fadep (Assetid, DocDt, DefCode, Method, flag, reclass) values ('X1', #" + date +
         "#, 'PM', 'SLM', " + more + ")";
}

const char* kCloseAccounts = "update AccYear set closed=true where AccYear='2005-06'";
const char* kCloseTaxes = "update FinYear set closed=true where FinYear='2005-06'";
const char* kTaxed = "insert into ItaxDep (DocDt, FinYear) values (#03/31/2006#, '2005-06')";
const char* kSomeAsset = "insert into Asset (Assetid, Accyear, AcquiredAs) values ('X1', '2004-05', 'Purchased')";

void check(const Case& one, SqlDialect dialect, const Selection& selection, SheetRow (*good)(const SheetRow&)) {
  AssetCompany company(dialect);
  company.selection = selection;
  company.prepare(one.books);
  company.stage({good({{"USEDATE", one.useDate}, {"VCHRDATE", one.voucherDate}})});
  EXPECT_EQ(company.validate(), one.findings) << one.name;
}

const Case kPurchases[] = {
    {"no date at all",
     {},
     "soon",
     "31/04/2005",
     {"1 USEDATE: Invalid Use Date : soon", "1 VCHRDATE: Invalid Voucher Date : 31/04/2005"}},
    {"out of range",
     {},
     "31/12/1899",
     "31/12/1899",
     {"1 USEDATE: Date out of Range.Invalid Use Date : 31/12/1899",
      "1 VCHRDATE: Date out of Range.Invalid Voucher Date : 31/12/1899"}},
    {"first and last day of the calendars", {}, "01/04/2004", "31/03/2006", {}},
    {"a day before and a day after",
     {},
     "31/03/2004",
     "01/04/2006",
     {"1 USEDATE: 31/03/2004 doesn't fall in any of the accounting years defined.",
      "1 USEDATE: 31/03/2004 doesn't fall in any of the financial years defined.",
      "1 VCHRDATE: 01/04/2006 doesn't fall in any of the accounting years defined.",
      "1 VCHRDATE: 01/04/2006 doesn't fall in any of the financial years defined."}},
    {"no years",
     {"delete from accyear", "delete from finyear"},
     "01/05/2005",
     "01/05/2005",
     {"1 USEDATE: Accounting years are not defined in ORVA.", "1 USEDATE: Financial years are not defined in ORVA.",
      "1 VCHRDATE: Accounting years are not defined in ORVA.", "1 VCHRDATE: Financial years are not defined in ORVA."}},
    {"closed years",
     {kCloseAccounts, kCloseTaxes},
     "31/03/2005",
     "01/04/2005",
     {"1 VCHRDATE: Accounting year : 2005-06 is closed in ORVA.",
      "1 VCHRDATE: Financial year : 2005-06 is closed in ORVA."}},
    {"income tax is done",
     {kTaxed},
     "31/03/2005",
     "01/04/2005",
     {"1 VCHRDATE: Depreciation as Per ITAX is already calculated for the Year : 2005-06"}},
    {"closing balances of the year",
     {depreciation("03/31/2005", "'O', null")},
     "01/05/2005",
     "31/03/2005",
     {"1 VCHRDATE: Closing Balances have been entered for the Year : 2004-05"}},
    {"depreciated on the date",
     {depreciation("05/01/2005")},
     "01/05/2005",
     "02/05/2005",
     {"1 USEDATE: Row : 1Column : 2 &  Depreciation is already calculated upto : 01/05/2005.Therefore cannot import "
      "date 01/05/2005"}},
    {"depreciated up to the day before", {depreciation("04/30/2005")}, "01/05/2005", "01/05/2005", {}},
    {"tested once a row, against the latest entry",
     {depreciation("06/30/2005"), depreciation("09/30/2005")},
     "01/05/2005",
     "01/05/2005",
     {"1 USEDATE: Row : 1Column : 2 &  Depreciation is already calculated upto : 30/09/2005.Therefore cannot import "
      "date 01/05/2005"}},
    {"depreciated in another category",
     {"insert into Fadep (Assetid, DocDt, DefCode) values ('X1', #06/30/2005#, 'LH')"},
     "01/05/2005",
     "01/05/2005",
     {}},
};

TEST(PurchaseCalendar, BothDialects) {
  for (const Case& one : kPurchases) {
    check(one, SqlDialect::kAccess, {}, purchase);
    check(one, SqlDialect::kSqlServer, {}, purchase);
  }
}

const Case kTakeOvers[] = {
    {"in the first year, to its last day", {}, "01/10/1999", "31/03/2005", {}},
    {"after the first year",
     {},
     "31/03/2005",
     "01/04/2005",
     {"1 VCHRDATE: 01/04/2005 must be on or before 31/03/2005"}},
    {"acquired already",
     {kSomeAsset},
     "01/10/1999",
     "31/03/2005",
     {"1 USEDATE: Can 't import. Assets are Acquired in 2004-05",
      "1 VCHRDATE: Can 't import. Assets are Acquired in 2004-05"}},
    {"depreciated later",
     {depreciation("03/31/2005", "'O', null")},
     "31/03/2005",
     "30/03/2005",
     {"1 VCHRDATE: Depreciation is already calculated upto : 31/03/2005.Therefore cannot import date 30/03/2005"}},
    {"closed",
     {"update AccYear set closed=true where AccYear='2004-05'"},
     "01/10/1999",
     "31/03/2005",
     {"1 USEDATE: Accounting year : 2004-05 is closed in ORVA.",
      "1 VCHRDATE: Accounting year : 2004-05 is closed in ORVA."}},
};

TEST(ClosingCalendar, BothDialects) {
  for (const Case& one : kTakeOvers) {
    check(one, SqlDialect::kAccess, {.kind = ImportKindId::kClosing}, takenOver);
    check(one, SqlDialect::kSqlServer, {.kind = ImportKindId::kClosing}, takenOver);
  }
}

const Case kBackdated[] = {
    {"nothing calculated", {}, "01/05/2005", "01/05/2005", {}},
    {"calculated in the same year",
     {depreciation("09/30/2005")},
     "01/05/2005",
     "02/05/2005",
     {"*1 USEDATE: Row : 1Column : 2 &  Since Depreciation is calculated upto : 30/09/2005, This will be treated as "
      "Backdated entry"}},
    {"calculated in a later year",
     {depreciation("09/30/2005")},
     "31/03/2005",
     "02/05/2005",
     {"1 USEDATE: Row : 1Column : 2 &  Depreciation is already calculated upto : 30/09/2005.Therefore cannot import "
      "date 31/03/2005"}},
};

TEST(Backdated, AcceptedWithinTheYear) {
  for (const Case& one : kBackdated) check(one, SqlDialect::kAccess, {.backdated = true}, purchase);

  AssetCompany company;
  company.selection.backdated = true;
  company.prepare({depreciation("09/30/2005")});
  company.stage(
      {purchase(), purchase({{"COST", "x"}}), purchase({{"USEDATE", "01/10/2005"}, {"VCHRDATE", "01/10/2005"}})});
  company.validate();
  EXPECT_EQ(company.findings.backdatedRows(), 2) << "the row in error is backdated, too";
  EXPECT_EQ(company.findings.errorRows(), 1);
  EXPECT_EQ(company.grid.text(1, company.grid.findColumn("BACKDATED")), "Y");
  EXPECT_EQ(company.grid.text(3, company.grid.findColumn("BACKDATED")), "");
}

TEST(Calendar, YearsKeptForPostingAreThoseOfTheVoucher) {
  AssetCompany company;
  company.stage({purchase({{"USEDATE", "01/05/2005"}, {"VCHRDATE", "01/05/2004"}}),
                 purchase({{"USEDATE", "01/05/2004"}, {"VCHRDATE", "01/05/2005"}})});
  EXPECT_EQ(company.validate(), Lines());
  EXPECT_EQ(company.grid.text(1, company.grid.findColumn("ACCYEAR")), "2004-05");
  EXPECT_EQ(company.grid.text(2, company.grid.findColumn("FINYEAR")), "2005-06");
}

}  // namespace
}  // namespace orva
