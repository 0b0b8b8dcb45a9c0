#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

const Selection kSale{.kind = ImportKindId::kSale};
const SheetRow kGood{{"ASSETID", "P1"},  {"InvoiceNo", "INV-1"}, {"SaleDate", "15/08/2005"},
                     {"SaleAMT", "500"}, {"SerialNo", "S-1"},    {"Remarks", ""}};
const std::string kLong11(11, 'x');
const std::string kLong31(31, 'x');
const std::string kLong256(256, 'x');

constexpr const char* kClose2004 = "update AccYear set closed=true where AccYear='2004-05'";
constexpr const char* kClose2005 = "update AccYear set closed=true where AccYear='2005-06'";
constexpr const char* kCloseTax2004 = "update FinYear set closed=true where FinYear='2004-05'";
constexpr const char* kCloseTax2005 = "update FinYear set closed=true where FinYear='2005-06'";

std::string entry(const std::string& table, const std::string& date, const std::string& more = "",
                  const std::string& values = "", const std::string& code = "F1") {
  return "insert into " + table + " (Assetid, DocDt, FACode" + more + ") values ('OTHER', #" + date + "#, '" + code +
         "'" + values + ")";
}

TEST(SaleRules, CellByCell) {
  checkRules(
      kSale, kGood,
      {
          {},
          {.cells = {{"ASSETID", " p1 "}}},
          {.cells = {{"ASSETID", "O'N"}}},
          {.cells = {{"ASSETID", "MOVED"}}},
          {.cells = {{"ASSETID", "  "}}, .findings = {"1 ASSETID: AssetID should not be blank"}},
          {.cells = {{"ASSETID", kLong31}}, .findings = {"1 ASSETID: " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"ASSETID", "gone"}}, .findings = {"1 ASSETID: Asset Id : gone sale/Discarded."}},
          {.cells = {{"ASSETID", "P'9"}}, .findings = {"1 ASSETID: Asset Id : P'9 does not exist For Sale in ORVA."}},
          {.cells = {{"SaleDate", "31/02/2005"}}, .findings = {"1 SaleDate: Invalid Sale Date 31/02/2005"}},
          {.cells = {{"SaleDate", ""}}, .findings = {"1 SaleDate: Invalid Sale Date "}},
          {.cells = {{"ASSETID", "OUT"}, {"SaleDate", "30/06/2005"}}},
          {.cells = {{"ASSETID", "OUT"}, {"SaleDate", "01/07/2005"}},
           .findings = {"1 ASSETID: Asset Id : OUT shifted out."}},
          {.cells = {{"InvoiceNo", " "}}, .findings = {"1 InvoiceNo: Invoice no. should not be blank"}},
          {.cells = {{"InvoiceNo", kLong11}},
           .findings = {"1 InvoiceNo: " + kLong11 + " exceeds the maximum length 10"}},
          {.cells = {{"SaleAMT", ""}}, .findings = {"1 SaleAMT:  Amount cannot be Non-Numeric."}},
          {.cells = {{"SaleAMT", "12k"}}, .findings = {"1 SaleAMT: 12k Amount cannot be Non-Numeric."}},
          {.cells = {{"SaleAMT", "-0.01"}}, .findings = {"1 SaleAMT: -0.01 Amount cannot be negative."}},
          {.cells = {{"SaleAMT", "0"}}},
          {.cells = {{"SerialNo", kLong11}}, .findings = {"1 SerialNo: " + kLong11 + " exceeds the maximum length 10"}},
          {.cells = {{"SerialNo", ""}}, .findings = {"1 SerialNo:  Serial no cannot be blank"}},
          {.cells = {{"SerialNo", " s-9"}}, .findings = {"1 SerialNo: Ref no. :  s-9 Duplicate."}},
          {.cells = {{"SerialNo", "S'1"}},
           .findings = {"1 SerialNo: Serial no contains quotes or any other special character "}},
          {.cells = {{"SerialNo", "S\n1"}},
           .findings = {"1 SerialNo: Serial no contains quotes or any other special character "}},
          {.cells = {{"Remarks", kLong256}},
           .findings = {"1 Remarks: " + kLong256 + " exceeds the maximum length 255"}},
      });
}

TEST(SaleRules, TheSaleDateInTheCalendars) {
  const std::string before = "cannot be less then ";
  checkRules(kSale, kGood,
             {
                 {.cells = {{"SaleDate", "01/01/1800"}},
                  .findings = {"1 SaleDate:  Sale Date 01/01/1800 doesn't fall in any of the Financial Year defined."},
                  .onServer = Lines{"1 SaleDate: Date out of Range.Invalid Sale Date 01/01/1800"}},
                 {.cells = {{"SaleDate", "31/03/2006"}}},
                 {.cells = {{"SaleDate", "01/04/2006"}},
                  .findings = {"1 SaleDate:  Sale Date 01/04/2006 doesn't fall in any of the Financial Year defined."}},
                 {.books = {"delete from FinYear where FinYear='2005-06'"},
                  .findings = {"1 SaleDate:  Sale Date 15/08/2005 doesn't fall in any of the Financial Year defined."}},
                 {.cells = {{"SaleDate", "30/04/2005"}},
                  .findings = {"1 SaleDate: Sale date 30/04/2005 " + before + "voucher date."}},
                 {.cells = {{"SaleDate", "09/05/2005"}},
                  .findings = {"1 SaleDate: Sale date 09/05/2005 " + before + "Date Put to Use."}},
                 {.cells = {{"SaleDate", "10/05/2005"}}},
                 {.cells = {{"ASSETID", "NEW"}, {"SaleDate", "01/05/2005"}}},
                 // The calendar that is closed longest decides, the accounting calendar on a tie.
                 {.books = {kClose2004},
                  .cells = {{"SaleDate", "31/03/2005"}},
                  .findings = {"1 SaleDate:  Accounting Year is closed."}},
                 {.books = {kClose2004, kCloseTax2004},
                  .cells = {{"SaleDate", "31/03/2005"}},
                  .findings = {"1 SaleDate:  Accounting Year is closed."}},
                 {.books = {kCloseTax2004},
                  .cells = {{"SaleDate", "31/03/2005"}},
                  .findings = {"1 SaleDate:  Financial Year is closed."}},
                 {.books = {kClose2004, kCloseTax2005}, .findings = {"1 SaleDate:  Financial Year is closed."}},
                 {.books = {kClose2005, kCloseTax2004}, .findings = {"1 SaleDate:  Accounting Year is closed."}},
                 {.books = {kClose2005},
                  .cells = {{"SaleDate", "01/04/2004"}},
                  .findings = {"1 SaleDate:  Accounting Year is closed."}},
                 {.books = {kClose2004, kCloseTax2004}},
             });
}

TEST(SaleRules, DepreciationThatIsCalculatedAlready) {
  const char* const book1 = "update Parameter set farate1=true, Addnalmthd1='Companies Act'";
  const char* const nameless = "update Parameter set farate2=true, Addnalmthd2=' '";
  checkRules(
      kSale, kGood,
      {
          {.books = {entry("Fadep", "08/15/2005"), entry("Fadep", "06/30/2005")},
           .findings = {"1 SaleDate:  Depreciation as per Books already calculated upto 15/08/2005"}},
          {.books = {entry("Fadep", "08/14/2005")}},
          {.books = {entry("Fadep", "09/30/2005", "", "", "F2")}},
          {.books = {entry("Fadep", "09/30/2005", ", reclass", ", 'Y'"),
                     entry("Fadep", "09/30/2005", ", reclass", ", 'M'"),
                     entry("Fadep", "09/30/2005", ", reclass", ", 'R'"),
                     entry("Fadep", "09/30/2005", ", flag", ", 'S'"), entry("Fadep", "09/30/2005", ", flag", ", 'O'")}},
          {.books = {entry("Fadep", "09/30/2005", ", reclass, flag", ", 'N', 'B'")},
           .findings = {"1 SaleDate:  Depreciation as per Books already calculated upto 30/09/2005"}},
          {.books = {entry("Fadep", "09/30/2005"), "update Asset set facode=null"}},
          {.books = {"insert into ItaxDep (AssetId, DocDt) values ('OTHER', #08/31/2005#)"},
           .findings = {"1 SaleDate:  Depreciation as per Income-Tax already calculated upto 31/08/2005"}},
          {.books = {entry("FADep1", "08/31/2005", "", "", "A1")}},
          {.books = {book1, entry("FADep1", "08/31/2005", "", "", "A1")},
           .findings = {"1 SaleDate:  Depreciation as per Companies Act already calculated upto 31/08/2005"}},
          {.books = {book1, entry("FADep1", "08/31/2005", "", "", "B1")}},
          {.books = {nameless, entry("FADep2", "08/15/2005", "", "", "B1")},
           .findings = {"1 SaleDate:  Depreciation as per Additional Book 2 already calculated upto "
                        "15/08/2005"}},
      });
}

TEST(SaleRules, TheOrderOfTheColumnsDecidesWhichErrorIsTheFirst) {
  TransactionCompany company(ImportKindId::kSale);
  const SheetRow bad = replaced(kGood, {{"ASSETID", ""}, {"SaleDate", "x"}});
  company.stage({bad});
  EXPECT_EQ(company.validate(), (Lines{"1 ASSETID: AssetID should not be blank"}));
  company.stage({SheetRow(bad.rbegin(), bad.rend())});
  EXPECT_EQ(company.validate(), (Lines{"1 SaleDate: Invalid Sale Date x"}));
}

TEST(SaleRules, SerialNumbersOfOneWorkbookAreNotCompared) {
  TransactionCompany company(ImportKindId::kSale);
  company.stage({kGood, replaced(kGood, {{"ASSETID", "O'N"}})});
  EXPECT_EQ(company.validate(), Lines());
}

}  // namespace
}  // namespace orva
