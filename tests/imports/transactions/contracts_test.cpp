#include "imports/transactions/amc_insurance.h"
#include "imports/transactions/cases.h"

namespace orva {
namespace {

const SheetRow kAmc = {{"ASSETID", "A1"},       {"RefNo", "R1"},   {"RefDate", "01/06/2005"}, {"AMCFrom", "01/06/2005"},
                       {"AMCTo", "31/05/2006"}, {"Amount", "100"}, {"Remarks", "yearly"}};
const SheetRow kInsurance = {{"ASSETID", "A1"},         {"RefNo", "R1"},         {"RefDate", "01/06/2005"},
                             {"InsFrom", "01/06/2005"}, {"InsTo", "31/05/2006"}, {"PolicyNo", "P/7"},
                             {"PolicyAMT", "100"},      {"Remarks", "fire"}};

TEST(Amc, EveryCheck) {
  expectFindings(
      amcProcedures(), kAmc,
      {
          {{}, {}, {}},
          {{{{"ASSETID", ""}}}, {}, {"1 ASSETID: AssetID should not be blank"}},
          {{},
           {"insert into AssetOut (AssetId, DocDt) values ('A1', #06/01/2005#)"},
           {"1 ASSETID: Asset Id : A1 sale/Discarded."}},
          {{}, {"insert into AssetOut (AssetId, DocDt) values ('A1', #06/02/2005#)"}, {}},
          {{{{"RefDate", "09/05/2005"}}}, {}, {"1 ASSETID: Asset Id : A1 does not exist For AMC Details in ORVA."}},
          {{},
           {"insert into Shift (assetid, docdt, tfrout, sameloc) values ('A1', #06/01/2005#, true, false)"},
           {"1 ASSETID: Asset Id : A1 shifted out."}},
          {{{{"RefNo", ""}}}, {}, {"1 RefNo: Ref no. should not be blank"}},
          {{{{"RefNo", std::string(51, 'r')}}},
           {},
           {"1 RefNo: " + std::string(51, 'r') + " exceeds the maximum length 50"}},
          {{}, {"insert into AMC (DocNo) values ('r1')"}, {"1 RefNo: Ref no. : R1 Duplicate."}},
          {{{{"RefDate", "01/06/2007"}}},
           {},
           {"1 RefDate:  Ref Date 01/06/2007 doesn't fall in any of the Accounting Years defined."}},
          {{},
           {"insert into AccYear (AccYear, AccOpDt, AccClDt, Closed) values ('2006-07', #04/01/2006#, #03/31/2007#, "
            "true)"},
           {"1 RefDate: Accounting Year 2006-07 is Closed.Therefore, Cannot Add or Modify any Record."}},
          {{}, {"update AccYear set Closed=true where AccYear='2004-05'"}, {}},
          {{},
           {"update Asset set DocDt=#06/02/2005# where Assetid='A1'"},
           {"1 RefDate: Ref date 01/06/2005 cannot be less then voucher date."}},
          {{{{"AMCFrom", ""}}}, {}, {"1 AMCFrom:  AMC From Date should not be blank"}},
          {{{{"AMCTo", ""}}}, {}, {"1 AMCTo:  AMC To Date should not be blank"}},
          {{{{"AMCFrom", "1.6"}}}, {}, {"1 AMCFrom: Invalid AMC From Date 1.6"}},
          {{{{"AMCTo", "31/06/2006"}}}, {}, {"1 AMCTo: Invalid AMC To Date 31/06/2006"}},
          {{{{"AMCTo", "01/06/2005"}}}, {}, {"1 AMCFrom: Date out of Range.Invalid Ref Date 01/06/2005"}},
          {{{{"Amount", ""}}}, {}, {"1 Amount:  Amount cannot be Non-Numeric."}},
          {{{{"Amount", "0"}}}, {}, {"1 Amount: 0 Amount cannot be blank."}},
          {{{{"Amount", "-5"}}}, {}, {}},
          {{{{"Remarks", std::string(101, 'm')}}},
           {},
           {"1 Remarks: " + std::string(101, 'm') + " exceeds the maximum length 100"}},
      });
}

TEST(Insurance, WhereItDiffers) {
  expectFindings(
      insuranceProcedures(), kInsurance,
      {
          {{}, {}, {}},
          {{{{"ASSETID", "Z9"}}}, {}, {"1 ASSETID: Asset Id : Z9 does not exist For Insurance Details in ORVA."}},
          {{}, {"insert into Insurance (InsuranceCode) values ('R1')"}, {"1 RefNo: Ref no. : R1 Duplicate."}},
          {{{{"InsFrom", ""}}}, {}, {"1 InsFrom:  Insurance From Date should not be blank"}},
          {{{{"InsTo", ""}}}, {}, {"1 InsTo:  Insurance To Date should not be blank"}},
          {{{{"InsFrom", "x"}}}, {}, {"1 InsFrom: Invalid Insurance From Date x"}},
          {{{{"InsTo", "x"}}}, {}, {"1 InsTo: Invalid Insurance To Date x"}},
          {{{{"InsTo", "31/05/2005"}}}, {}, {"1 InsFrom: Date out of Range.Invalid Ref Date 01/06/2005"}},
          {{{{"PolicyNo", ""}}}, {}, {"1 PolicyNo:  Policy No cannot be blank."}},
          {{{{"PolicyNo", std::string(21, 'p')}}},
           {},
           {"1 PolicyNo: " + std::string(21, 'p') + " exceeds the maximum length 20"}},
          {{{{"PolicyAMT", "a"}}}, {}, {"1 PolicyAMT: a Amount cannot be Non-Numeric."}},
          {{{{"PolicyAMT", "0.00"}}}, {}, {"1 PolicyAMT: 0.00 Amount cannot be blank."}},
      });
}

TEST(Contracts, PostTheirOwnColumns) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany amc(dialect, amcProcedures());
    amc.prepare({kAssetA1});
    EXPECT_EQ(amc.import({kAmc}).text, "Imported successfully");
    EXPECT_EQ(amc.rows("select Cocd, DocNo, DocDt, Accyear, AssetId, VendorCode, AmcFromDt, AmcUptoDt, Amount, Remarks "
                       "from AMC"),
              Lines{"K1|R1|01/06/2005|2005-06|A1|0003|01/06/2005|31/05/2006|100|yearly"});

    AssetCompany insurance(dialect, insuranceProcedures());
    insurance.prepare({kAssetA1});
    EXPECT_EQ(insurance.import({kInsurance}).text, "Imported successfully");
    EXPECT_EQ(insurance.rows("select InsuranceCode, DocDt, Accyear, AssetId, Insfromdt, Insuptodt, Amount, Policyno, "
                             "InsuranceName from Insurance"),
              Lines{"R1|01/06/2005|2005-06|A1|01/06/2005|31/05/2006|100|P/7|fire"});
  }
}

}  // namespace
}  // namespace orva
