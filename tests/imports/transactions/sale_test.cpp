#include "imports/transactions/sale.h"

#include "imports/transactions/cases.h"

namespace orva {
namespace {

const SheetRow kSale = {{"ASSETID", "A1"},  {"InvoiceNo", "INV1"}, {"SaleDate", "01/06/2005"},
                        {"SaleAMT", "500"}, {"SerialNo", "S1"},    {"Remarks", "scrap"}};

const std::string kLong(256, 'x');

TEST(Sale, IdentifierChecks) {
  expectFindings(
      saleProcedures(), kSale,
      {
          {{}, {}, {}},
          {{{{"ASSETID", " a1 "}}}, {}, {}},
          {{{{"ASSETID", " "}, {"SaleAMT", "x"}}}, {}, {"1 ASSETID: AssetID should not be blank"}},
          {{{{"ASSETID", std::string(31, 'x')}}},
           {},
           {"1 ASSETID: " + std::string(31, 'x') + " exceeds the maximum length 30"}},
          {{{{"ASSETID", "Z9"}}}, {}, {"1 ASSETID: Asset Id : Z9 does not exist For Sale in ORVA."}},
          {{{{"ASSETID", "Z9"}}},
           {"insert into AssetOut (AssetId, SrNo) values ('Z9', '7')"},
           {"1 ASSETID: Asset Id : Z9 sale/Discarded."}},
          {{{{"SaleDate", "31/02/2005"}}}, {}, {"1 SaleDate: Invalid Sale Date 31/02/2005"}},
          {{},
           {"insert into Shift (assetid, docdt, tfrout, sameloc) values ('A1', #06/01/2005#, true, false)"},
           {"1 ASSETID: Asset Id : A1 shifted out."}},
          {{}, {"insert into Shift (assetid, docdt, tfrout, sameloc) values ('A1', #06/02/2005#, true, false)"}, {}},
          {{}, {"insert into Shift (assetid, docdt, tfrout, sameloc) values ('A1', #05/15/2005#, true, true)"}, {}},
      });
}

TEST(Sale, DateChecks) {
  const std::string closeBooks = "update AccYear set Closed=true where AccYear='2004-05'";
  const std::string closeTax = "update FinYear set Closed=true where FinYear='2005-06'";
  expectFindings(
      saleProcedures(), kSale,
      {
          {{}, {closeBooks}, {}},
          {{{{"SaleDate", "31/03/2005"}}}, {closeBooks}, {"1 SaleDate:  Accounting Year is closed."}},
          {{}, {closeTax}, {"1 SaleDate:  Financial Year is closed."}},
          {{}, {closeBooks, closeTax}, {"1 SaleDate:  Financial Year is closed."}},
          {{{{"SaleDate", "01/06/2007"}}},
           {},
           {"1 SaleDate:  Sale Date 01/06/2007 doesn't fall in any of the Financial Year defined."}},
          {{{{"SaleDate", "30/04/2005"}}}, {}, {"1 SaleDate: Sale date 30/04/2005 cannot be less then voucher date."}},
          {{{{"SaleDate", "09/05/2005"}}},
           {},
           {"1 SaleDate: Sale date 09/05/2005 cannot be less then Date Put to Use."}},
          {{{{"SaleDate", "10/05/2005"}}}, {}, {}},
      });
}

TEST(Sale, DepreciationForbidsEarlierSales) {
  expectFindings(
      saleProcedures(), kSale,
      {
          {{},
           {"insert into Fadep (Assetid, FACode, DocDt) values ('B5', 'F2', #06/01/2005#)"},
           {"1 SaleDate:  Depreciation as per Books already calculated upto 01/06/2005"}},
          {{}, {"insert into Fadep (Assetid, FACode, DocDt) values ('B5', 'F2', #05/31/2005#)"}, {}},
          {{}, {"insert into Fadep (Assetid, FACode, DocDt) values ('B5', 'F1', #06/30/2005#)"}, {}},
          {{}, {"insert into Fadep (Assetid, FACode, DocDt, Flag) values ('B5', 'F2', #06/30/2005#, 'S')"}, {}},
          {{}, {"insert into Fadep (Assetid, FACode, DocDt, reclass) values ('B5', 'F2', #06/30/2005#, 'M')"}, {}},
          {{},
           {"insert into ItaxDep (AssetId, DocDt) values ('B5', #06/30/2005#)"},
           {"1 SaleDate:  Depreciation as per Income-Tax already calculated upto 30/06/2005"}},
          {{}, {"insert into FADep1 (Assetid, FACode, DocDt) values ('B5', 'A1', #06/30/2005#)"}, {}},
          {{},
           {"insert into FADep1 (Assetid, FACode, DocDt) values ('B5', 'A1', #06/30/2005#)",
            "update Parameter set farate1=true, Addnalmthd1=' '"},
           {"1 SaleDate:  Depreciation as per Additional Book 1 already calculated upto 30/06/2005"}},
          {{},
           {"insert into FADep2 (Assetid, FACode, DocDt) values ('B5', 'B1', #06/30/2005#)",
            "update Parameter set farate2=true, Addnalmthd2='Group books'"},
           {"1 SaleDate:  Depreciation as per Group books already calculated upto 30/06/2005"}},
      });
}

TEST(Sale, OtherColumns) {
  expectFindings(
      saleProcedures(), kSale,
      {
          {{{{"InvoiceNo", ""}}}, {}, {"1 InvoiceNo: Invoice no. should not be blank"}},
          {{{{"InvoiceNo", "12345678901"}}}, {}, {"1 InvoiceNo: 12345678901 exceeds the maximum length 10"}},
          {{{{"SaleAMT", ""}}}, {}, {"1 SaleAMT:  Amount cannot be Non-Numeric."}},
          {{{{"SaleAMT", "-1"}}}, {}, {"1 SaleAMT: -1 Amount cannot be negative."}},
          {{{{"SaleAMT", "0"}}}, {}, {}},
          {{{{"SerialNo", ""}}}, {}, {"1 SerialNo:  Serial no cannot be blank"}},
          {{}, {"insert into AssetOut (AssetId, SrNo) values ('B5', 's1')"}, {"1 SerialNo: Ref no. : S1 Duplicate."}},
          {{{{"SerialNo", "S'1"}}}, {}, {"1 SerialNo: Serial no contains quotes or any other special character "}},
          {{{{"Remarks", kLong}}}, {}, {"1 Remarks: " + kLong + " exceeds the maximum length 255"}},
      });
}

TEST(Sale, PostsOneRecordARow) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect, saleProcedures());
    company.prepare({kAssetA1});
    const PostResult result = company.import({with(kSale, {{"Remarks", ""}})});
    EXPECT_EQ(result.text, "Imported successfully");
    EXPECT_EQ(
        company.rows("select DocNo, Docdt, Accyear, AssetId, SaleValue, SrNo, Remarks, CoCd, Batch from AssetOut"),
        Lines{"INV1|01/06/2005|2005-06|A1|500|S1||K1|B7"});
    EXPECT_EQ(company.saved.text(1, company.saved.findColumn("SerialNo")), "S1");
  }
}

TEST(Sale, FailureInTheMiddleKeepsTheFinishedRows) {
  AssetCompany company(SqlDialect::kAccess, saleProcedures());
  company.prepare({kAssetA1});
  company.stage({kSale, with(kSale, {{"SerialNo", "S2"}}), with(kSale, {{"SerialNo", "S3"}})});
  company.adapter->plan().failAt(DatabaseCall::kStore, 2, provider_number::kDataOverflow, "The disk is full.");
  const PostResult result = company.post();
  EXPECT_FALSE(result.finished);
  EXPECT_EQ(result.rowsPosted, 1);
  EXPECT_EQ(result.text, "The disk is full.");
  EXPECT_EQ(company.rows("select SrNo from AssetOut"), Lines{"S1"});
}

}  // namespace
}  // namespace orva
