#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

const Selection kAmc{.kind = ImportKindId::kAmc};
const SheetRow kGoodAmc{
    {"RefNo", "R-1"},  {"ASSETID", "P1"}, {"RefDate", "15/08/2005"}, {"AMCFrom", "01/09/2005"}, {"AMCTo", "31/08/2006"},
    {"Amount", "250"}, {"Remarks", ""}};
const Selection kInsurance{.kind = ImportKindId::kInsurance};
const SheetRow kGoodInsurance{{"RefNo", "R-1"},          {"ASSETID", "P1"},       {"RefDate", "15/08/2005"},
                              {"InsFrom", "01/09/2005"}, {"InsTo", "31/08/2006"}, {"PolicyNo", "PN/1"},
                              {"PolicyAMT", "250"},      {"Remarks", ""}};
const std::string kLong21(21, 'x');
const std::string kLong31(31, 'x');
const std::string kLong51(51, 'x');
const std::string kLong101(101, 'x');
const std::string kLong256(256, 'x');

TEST(AmcRules, CellByCell) {
  checkRules(
      kAmc, kGoodAmc,
      {
          {},
          {.cells = {{"ASSETID", " o'n "}}},
          {.cells = {{"ASSETID", ""}}, .findings = {"1 ASSETID: AssetID should not be blank"}},
          {.cells = {{"ASSETID", kLong31}}, .findings = {"1 ASSETID: " + kLong31 + " exceeds the maximum length 30"}},
          {.cells = {{"ASSETID", "SOLD"}}, .findings = {"1 ASSETID: Asset Id : SOLD sale/Discarded."}},
          {.cells = {{"ASSETID", "SOLD"}, {"RefDate", "31/07/2005"}}},
          {.cells = {{"ASSETID", "P9"}},
           .findings = {"1 ASSETID: Asset Id : P9 does not exist For AMC Details in ORVA."}},
          {.cells = {{"RefDate", "09/05/2005"}},
           .findings = {"1 ASSETID: Asset Id : P1 does not exist For AMC Details in ORVA."}},
          {.cells = {{"RefDate", "10/05/2005"}}},
          {.cells = {{"ASSETID", "OUT"}, {"RefDate", "30/06/2005"}}},
          {.cells = {{"ASSETID", "OUT"}, {"RefDate", "01/07/2005"}},
           .findings = {"1 ASSETID: Asset Id : OUT shifted out."}},
          {.cells = {{"RefNo", " "}}, .findings = {"1 RefNo: Ref no. should not be blank"}},
          {.cells = {{"RefNo", kLong51}}, .findings = {"1 RefNo: " + kLong51 + " exceeds the maximum length 50"}},
          {.books = {"insert into AMC (DocNo) values ('r-1')"}, .findings = {"1 RefNo: Ref no. : R-1 Duplicate."}},
          {.cells = {{"RefDate", ""}}, .findings = {"1 RefDate:  Ref Date should not be blank"}},
          {.cells = {{"RefDate", "31/02/2005"}}, .findings = {"1 RefDate: Invalid Ref Date 31/02/2005"}},
          {.cells = {{"RefDate", ""}, {"ASSETID", "P9"}},
           .findings = {"1 ASSETID: Asset Id : P9 does not exist For AMC Details in ORVA."}},
          {.cells = {{"RefDate", "01/01/1800"}},
           .findings = {"1 ASSETID: Asset Id : P1 does not exist For AMC Details in ORVA."},
           .onServer = Lines{"1 RefDate: Date out of Range.Invalid Ref Date 01/01/1800"}},
          {.cells = {{"RefDate", "01/04/2006"}},
           .findings = {"1 RefDate:  Ref Date 01/04/2006 doesn't fall in any of the Accounting Years defined."}},
          {.books = {"update AccYear set closed=true where AccYear='2005-06'"},
           .findings = {"1 RefDate: Accounting Year 2005-06 is Closed.Therefore, Cannot Add or Modify any Record."}},
          {.books = {"update AccYear set closed=true where AccYear='2004-05'"}},
          {.books = {"insert into AccYear (AccYear, AccOpDt, AccClDt, Closed) values ('2006-07', #04/01/2006#, "
                     "#03/31/2007#, true)",
                     "update FinYear set closed=true"},
           .findings = {"1 RefDate: Accounting Year 2006-07 is Closed.Therefore, Cannot Add or Modify any Record."}},
          {.books = {"update Asset set Docdt=#08/16/2005#"},
           .findings = {"1 RefDate: Ref date 15/08/2005 cannot be less then voucher date."}},
          {.cells = {{"AMCFrom", ""}}, .findings = {"1 AMCFrom:  AMC From Date should not be blank"}},
          {.cells = {{"AMCTo", ""}}, .findings = {"1 AMCTo:  AMC To Date should not be blank"}},
          {.cells = {{"AMCFrom", "soon"}}, .findings = {"1 AMCFrom: Invalid AMC From Date soon"}},
          {.cells = {{"AMCTo", "29/02/2006"}}, .findings = {"1 AMCTo: Invalid AMC To Date 29/02/2006"}},
          {.cells = {{"AMCFrom", "31/12/1899"}},
           .onServer = Lines{"1 AMCFrom: Date out of Range. Invalid AMC From Date 31/12/1899"}},
          {.cells = {{"AMCFrom", "31/12/1899"}, {"AMCTo", "30/12/1899"}},
           .findings = {"1 AMCFrom: Date out of Range.Invalid Ref Date 31/12/1899"},
           .onServer = Lines{"1 AMCFrom: Date out of Range. Invalid AMC From Date 31/12/1899"}},
          {.cells = {{"AMCTo", "01/09/2005"}},
           .findings = {"1 AMCFrom: Date out of Range.Invalid Ref Date 01/09/2005"}},
          {.cells = {{"AMCTo", "02/09/2005"}}},
          {.cells = {{"Amount", ""}}, .findings = {"1 Amount:  Amount cannot be Non-Numeric."}},
          {.cells = {{"Amount", "0.00"}}, .findings = {"1 Amount: 0.00 Amount cannot be blank."}},
          {.cells = {{"Amount", "-5"}}},
          {.cells = {{"Remarks", kLong101}},
           .findings = {"1 Remarks: " + kLong101 + " exceeds the maximum length 100"}},
      });
}

TEST(InsuranceRules, WhereTheyDiffer) {
  checkRules(
      kInsurance, kGoodInsurance,
      {
          {},
          {.cells = {{"ASSETID", "SOLD"}}, .findings = {"1 ASSETID: Asset Id : SOLD sale/Discarded."}},
          {.cells = {{"ASSETID", "P9"}},
           .findings = {"1 ASSETID: Asset Id : P9 does not exist For Insurance Details in ORVA."}},
          {.books = {"insert into Insurance (InsuranceCode) values ('R-1')"},
           .findings = {"1 RefNo: Ref no. : R-1 Duplicate."}},
          {.books = {"insert into AMC (DocNo) values ('R-1')"}},
          {.books = {"update AccYear set closed=true where AccYear='2005-06'"},
           .findings = {"1 RefDate: Accounting Year 2005-06 is Closed.Therefore, Cannot Add or Modify any Record."}},
          {.cells = {{"InsFrom", ""}}, .findings = {"1 InsFrom:  Insurance From Date should not be blank"}},
          {.cells = {{"InsTo", " "}}, .findings = {"1 InsTo:  Insurance To Date should not be blank"}},
          {.cells = {{"InsFrom", "1/13/2005"}}, .findings = {"1 InsFrom: Invalid Insurance From Date 1/13/2005"}},
          {.cells = {{"InsTo", "x"}}, .findings = {"1 InsTo: Invalid Insurance To Date x"}},
          {.cells = {{"InsFrom", "31/12/1899"}},
           .onServer = Lines{"1 InsFrom: Date out of Range. Invalid Insurance From Date 31/12/1899"}},
          {.cells = {{"InsFrom", "01/09/1890"}, {"InsTo", "01/09/1891"}},
           .onServer = Lines{"1 InsFrom: Date out of Range. Invalid Insurance From Date 01/09/1890"}},
          {.cells = {{"InsTo", "31/08/2005"}},
           .findings = {"1 InsFrom: Date out of Range.Invalid Ref Date 01/09/2005"}},
          {.cells = {{"PolicyNo", ""}}, .findings = {"1 PolicyNo:  Policy No cannot be blank."}},
          {.cells = {{"PolicyNo", kLong21}}, .findings = {"1 PolicyNo: " + kLong21 + " exceeds the maximum length 20"}},
          {.cells = {{"PolicyAMT", "x"}}, .findings = {"1 PolicyAMT: x Amount cannot be Non-Numeric."}},
          {.cells = {{"PolicyAMT", "0"}}, .findings = {"1 PolicyAMT: 0 Amount cannot be blank."}},
          {.cells = {{"Remarks", kLong256}},
           .findings = {"1 Remarks: " + kLong256 + " exceeds the maximum length 255"}},
      });
}

/// Tested from whichever of the two columns comes first; the value is that column's.
TEST(AmcRules, AnEmptyPeriodIsReportedInTheColumnThatStandsFirst) {
  TransactionCompany company(ImportKindId::kAmc);
  company.stage({{{"ASSETID", "P1"}, {"RefDate", "15/08/2005"}, {"AMCTo", "31/08/2005"}, {"AMCFrom", "01/09/2005"}}});
  EXPECT_EQ(company.validate(), (Lines{"1 AMCTo: Date out of Range.Invalid Ref Date 31/08/2005"}));
}

}  // namespace
}  // namespace orva
