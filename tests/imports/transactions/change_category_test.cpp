#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

const Selection kChange{.kind = ImportKindId::kChangeCategory};
const SheetRow kGood{{"DocRef", "D-1"},   {"ASSETID", "P1"}, {"CAT1", "plant and MACHINERY"},
                     {"CAT2", "Presses"}, {"CAT3", ""},      {"Remarks", ""}};
const std::string kLong11(11, 'x');
const std::string kLong31(31, 'x');
const std::string kLong51(51, 'x');
const std::string kLong101(101, 'x');
const std::string kLong256(256, 'x');

/// Book depreciation of every asset up to a day; the day after is the reclassification date.
std::string depreciated(const std::string& date, const std::string& more = "", const std::string& values = "") {
  return "insert into Fadep (Assetid, DocDt" + more + ") select Assetid, #" + date + "#" + values + " from Asset";
}

/// `depreciated("09/30/2005")` comes first in every case but those that name none.
void check(std::vector<RuleCase> cases) {
  for (RuleCase& one : cases) one.books.insert(one.books.begin(), depreciated("09/30/2005"));
  checkRules(kChange, kGood, cases);
}

TEST(ChangeCategoryRules, CellByCell) {
  check({
      {},
      {.cells = {{"ASSETID", " o'n "}}},
      {.cells = {{"ASSETID", "MOVED"}}},
      {.cells = {{"ASSETID", ""}}, .findings = {"1 ASSETID: AssetID should not be blank"}},
      {.cells = {{"ASSETID", kLong31}}, .findings = {"1 ASSETID: " + kLong31 + " exceeds the maximum length 30"}},
      {.cells = {{"ASSETID", "GONE"}}, .findings = {"1 ASSETID: Asset Id : GONE does not exist in ORVA."}},
      {.cells = {{"ASSETID", "SOLD"}}, .findings = {"1 ASSETID: Asset Id : SOLD sale/Discarded."}},
      {.cells = {{"ASSETID", "OUT"}}, .findings = {"1 ASSETID: Asset Id : OUT shifted out."}},
      {.cells = {{"DocRef", ""}}, .findings = {"1 DocRef: Doc Reference No. should not be blank"}},
      {.cells = {{"DocRef", kLong11}}, .findings = {"1 DocRef: " + kLong11 + " exceeds the maximum length 10"}},
      {.books = {"insert into ReclassAstCat (docno) values ('d-1')"},
       .findings = {"1 DocRef: Doc Ref no. : D-1 Duplicate."}},
      {.cells = {{"CAT1", " "}}, .findings = {"1 CAT1: Asset Category - Level I should not be blank"}},
      {.cells = {{"CAT1", kLong51}}, .findings = {"1 CAT1: " + kLong51 + " exceeds the maximum length 50"}},
      {.cells = {{"CAT1", "O'Neil's"}},
       .findings = {"1 CAT1: Asset Category - Level I : O'Neil's is not defined in ORVA."}},
      {.cells = {{"CAT2", ""}}, .findings = {"1 CAT2: Asset Category - Level II should not be blank"}},
      {.cells = {{"CAT2", kLong256}}, .findings = {"1 CAT2: " + kLong256 + " exceeds the maximum length 255"}},
      {.cells = {{"CAT2", "Plots"}}, .findings = {"1 CAT2: Asset Category - Level II : Plots is not defined in ORVA."}},
      {.cells = {{"CAT1", "Leased Land"}, {"CAT2", " plots "}}},
      {.cells = {{"CAT2", "Pumps"}, {"CAT3", "CENTRIFUGAL"}}},
      {.cells = {{"CAT3", "Centrifugal"}},
       .findings = {"1 CAT3: Asset Category - Level III : Centrifugal is not defined in ORVA."}},
      {.cells = {{"CAT3", kLong256}}, .findings = {"1 CAT3: " + kLong256 + " exceeds the maximum length 255"}},
      {.cells = {{"Remarks", kLong101}}, .findings = {"1 Remarks: " + kLong101 + " exceeds the maximum length 100"}},
      {.cells = {{"CAT2", "Pumps"}}, .findings = {"1 ASSETID: Previous & New Category should not be same."}},
      {.books = {"update Asset set SubClassCode='PM-01-01'"}, .cells = {{"CAT2", "Pumps"}}},
      {.books = {"update Asset set SubClassCode='PM-01-01'"},
       .cells = {{"CAT2", "Pumps"}, {"CAT3", "Centrifugal"}},
       .findings = {"1 ASSETID: Previous & New Category should not be same."}},
  });
}

TEST(ChangeCategoryRules, TheReclassificationDate) {
  const Lines already{"1 ASSETID: Asset Id. : P1 already Reclassified."};
  const Lines taxed{"1 ASSETID: Depreciation as per Income Tax already calculated."};
  check({
      {.books = {"insert into ReclassAstCat (AssetId, docdt) values ('P1', #10/01/2005#)"}, .findings = already},
      {.books = {"insert into ReclassAstCat (AssetId, docdt) values ('P1', #09/30/2005#)"}},
      {.books = {"insert into ReclassAstCat (AssetId, docdt) values ('O''N', #10/01/2005#)"}},
      // Of the asset's entries the latest counts, but none of reclassifications or sales.
      {.books = {depreciated("12/31/2005"), "insert into ReclassAstCat (AssetId, docdt) values ('P1', #01/01/2006#)"},
       .findings = already},
      {.books = {depreciated("12/31/2005", ", reclass", ", 'Y'"), depreciated("12/31/2005", ", reclass", ", 'R'"),
                 depreciated("12/31/2005", ", reclass", ", 'M'"), depreciated("12/31/2005", ", flag", ", 'S'"),
                 "insert into ReclassAstCat (AssetId, docdt) values ('P1', #10/01/2005#)"},
       .findings = already},
      {.books = {depreciated("12/31/2005", ", flag", ", 'O'"),
                 "insert into ReclassAstCat (AssetId, docdt) values ('P1', #01/01/2006#)"},
       .findings = already},
      {.books = {"insert into ItaxDep (AssetId, DocDt) values ('OTHER', #10/01/2005#)"}, .findings = taxed},
      {.books = {"insert into ItaxDep (AssetId, DocDt) values ('OTHER', #09/30/2005#)"}},
      {.books = {"delete from AccYear"}, .findings = {"1 ASSETID: Financial Year As per Book not created."}},
      {.books = {"delete from FinYear"}, .findings = {"1 ASSETID: Financial Year As per Income Tax not created."}},
      {.books = {depreciated("03/30/2006")}},
      {.books = {depreciated("03/31/2006")}, .findings = {"1 ASSETID: Financial Year As Per Book not created."}},
      {.books = {depreciated("03/31/2006"), "update AccYear set AccClDt=#03/31/2007# where AccYear='2005-06'"},
       .findings = {"1 ASSETID: Financial Year As Per Income Tax not created."}},
  });
  checkRules(kChange, kGood, {{.findings = {"1 ASSETID: Depreciation not calculated : P1"}}});
}

TEST(ChangeCategoryRules, ValuesOfEarlierRows) {
  TransactionCompany company(ImportKindId::kChangeCategory);
  company.prepare({depreciated("09/30/2005")});
  company.stage({kGood, replaced(kGood, {{"DocRef", "D-2"}, {"ASSETID", " p1"}}),
                 replaced(kGood, {{"DocRef", "d-1 "}, {"ASSETID", "O'N"}}),
                 // The second row is in error, but its reference stands in the workbook.
                 replaced(kGood, {{"DocRef", "D-2"}, {"ASSETID", "MOVED"}})});
  EXPECT_EQ(company.validate(),
            (Lines{"2 ASSETID: AssetId  :  p1 Duplicate in Excel.", "3 DocRef: Doc Ref no. : d-1  Duplicate in Excel.",
                   "4 DocRef: Doc Ref no. : D-2 Duplicate in Excel."}));
}

TEST(ChangeCategoryRules, LevelsStandInAnyOrder) {
  TransactionCompany company(ImportKindId::kChangeCategory);
  company.prepare({depreciated("09/30/2005")});
  const SheetRow row{{"CAT3", "Centrifugal"},
                     {"CAT2", "Pumps"},
                     {"CAT1", "Plant and Machinery"},
                     {"ASSETID", "P1"},
                     {"DocRef", "D-1"}};
  company.stage({row, replaced(row, {{"CAT1", "Nothing"}, {"DocRef", "D-2"}, {"ASSETID", "O'N"}})});
  EXPECT_EQ(company.validate(), (Lines{"2 CAT1: Asset Category - Level I : Nothing is not defined in ORVA."}));
  Lines codes;
  for (const char* column : {"CAT1CODE", "CAT2CODE", "CAT3CODE"}) {
    codes.emplace_back(company.grid.text(1, company.grid.findColumn(column)));
  }
  EXPECT_EQ(codes, (Lines{"PM", "PM-01", "PM-01-01"}));
}

}  // namespace
}  // namespace orva
