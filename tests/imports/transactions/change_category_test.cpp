#include "imports/transactions/change_category.h"

#include "imports/transactions/cases.h"

namespace orva {
namespace {

const SheetRow kChange = {{"DocRef", "D1"},    {"ASSETID", "A1"}, {"CAT1", "plant AND machinery"},
                          {"CAT2", "Presses"}, {"CAT3", ""},      {"Remarks", "moved"}};

const std::string kDepreciated = "insert into Fadep (Assetid, FACode, DocDt) values ('A1', 'F2', #06/30/2005#)";

TEST(ChangeCategory, AssetChecks) {
  expectFindings(
      changeCategoryProcedures(), kChange,
      {
          {{}, {kDepreciated}, {}},
          {{{{"ASSETID", ""}}}, {}, {"1 ASSETID: AssetID should not be blank"}},
          {{{{"ASSETID", "Z9"}}}, {}, {"1 ASSETID: Asset Id : Z9 does not exist in ORVA."}},
          {{}, {"insert into AssetOut (AssetId) values ('A1')"}, {"1 ASSETID: Asset Id : A1 sale/Discarded."}},
          {{},
           {"insert into Shift (assetid, tfrout, sameloc) values ('A1', true, false)"},
           {"1 ASSETID: Asset Id : A1 shifted out."}},
          {{}, {}, {"1 ASSETID: Depreciation not calculated : A1"}},
          {{},
           {"insert into Fadep (Assetid, DocDt, Flag) values ('A1', #06/30/2005#, 'S')"},
           {"1 ASSETID: Depreciation not calculated : A1"}},
          {{},
           {"insert into Fadep (Assetid, DocDt) values ('A1', #03/31/2006#)"},
           {"1 ASSETID: Financial Year As Per Book not created."}},
          {{}, {kDepreciated, "delete from AccYear"}, {"1 ASSETID: Financial Year As per Book not created."}},
          {{}, {kDepreciated, "delete from FinYear"}, {"1 ASSETID: Financial Year As per Income Tax not created."}},
          {{},
           {kDepreciated, "delete from FinYear where FinYear='2005-06'"},
           {"1 ASSETID: Financial Year As Per Income Tax not created."}},
          {{},
           {kDepreciated, "insert into ReclassAstCat (AssetId, docdt) values ('A1', #07/01/2005#)"},
           {"1 ASSETID: Asset Id. : A1 already Reclassified."}},
          {{}, {kDepreciated, "insert into ReclassAstCat (AssetId, docdt) values ('A1', #07/02/2005#)"}, {}},
          {{},
           {kDepreciated, "insert into ItaxDep (AssetId, DocDt) values ('B5', #07/01/2005#)"},
           {"1 ASSETID: Depreciation as per Income Tax already calculated."}},
          {{}, {kDepreciated, "insert into ItaxDep (AssetId, DocDt) values ('B5', #06/30/2005#)"}, {}},
          {{{}, {{"DocRef", "D2"}, {"ASSETID", " a1"}}},
           {kDepreciated},
           {"2 ASSETID: AssetId  :  a1 Duplicate in Excel."}},
      });
}

TEST(ChangeCategory, ReferenceAndCategoryChecks) {
  expectFindings(
      changeCategoryProcedures(), kChange,
      {
          {{{{"DocRef", ""}}}, {kDepreciated}, {"1 DocRef: Doc Reference No. should not be blank"}},
          {{{{"DocRef", "12345678901"}}}, {kDepreciated}, {"1 DocRef: 12345678901 exceeds the maximum length 10"}},
          {{},
           {kDepreciated, "insert into ReclassAstCat (DocNo) values ('d1')"},
           {"1 DocRef: Doc Ref no. : D1 Duplicate."}},
          {{{}, {{"ASSETID", "Z9"}}}, {kDepreciated}, {"2 DocRef: Doc Ref no. : D1 Duplicate in Excel."}},
          {{{{"CAT1", ""}}}, {kDepreciated}, {"1 CAT1: Asset Category - Level I should not be blank"}},
          {{{{"CAT1", std::string(51, 'c')}}},
           {kDepreciated},
           {"1 CAT1: " + std::string(51, 'c') + " exceeds the maximum length 50"}},
          {{{{"CAT1", "Ships"}}}, {kDepreciated}, {"1 CAT1: Asset Category - Level I : Ships is not defined in ORVA."}},
          {{{{"CAT2", ""}}}, {kDepreciated}, {"1 CAT2: Asset Category - Level II should not be blank"}},
          {{{{"CAT2", "Plots"}}},
           {kDepreciated},
           {"1 CAT2: Asset Category - Level II : Plots is not defined in ORVA."}},
          {{{{"CAT3", "Centrifugal"}}},
           {kDepreciated},
           {"1 CAT3: Asset Category - Level III : Centrifugal is not defined in ORVA."}},
          {{{{"CAT2", "Pumps"}, {"CAT3", "centrifugal"}}},
           {kDepreciated},
           {"1 ASSETID: Previous & New Category should not be same."}},
          {{{{"CAT2", "Pumps"}}}, {kDepreciated}, {}},
          {{{{"CAT2", "Pumps"}}},
           {kDepreciated, "update Asset set SubClasscode=null where Assetid='A1'"},
           {"1 ASSETID: Previous & New Category should not be same."}},
      });
}

TEST(ChangeCategory, RecordsTheMoveAndMovesTheAsset) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect, changeCategoryProcedures());
    company.prepare({kAssetA1, kDepreciated});
    EXPECT_EQ(company.import({kChange}).text, "Imported successfully");
    EXPECT_EQ(company.rows("select Cocd, DocNo, AssetId, docdt, defcode, classcode, subclasscode, Remarks, olddefcode, "
                           "oldclasscode, Oldsubclasscode, facode, Facode1, Facode2 from ReclassAstCat"),
              Lines{"K1|D1|A1|01/07/2005|PM|PM-02||moved|PM|PM-01|PM-01-01|F2|A1|B1"});
    EXPECT_EQ(company.row("select defcode, classcode, subclasscode, facode from Asset"), "PM|PM-02||F2");
  }
}

}  // namespace
}  // namespace orva
