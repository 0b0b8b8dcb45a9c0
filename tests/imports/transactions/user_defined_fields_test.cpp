#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

const Selection kFields{.kind = ImportKindId::kUdf};
const SheetRow kGood{{"ASSETID", "P1"}, {"UDV1", "red"}, {"UDV11", "05/06/2005"}};
constexpr const char* kNames = "insert into UDFields (UDF1, UDF2, UDF11) values ('Colour', 'Serial', 'Checked')";
const std::string kLong31(31, 'x');
const std::string kLong256(256, 'x');

void check(std::vector<RuleCase> cases, const Selection& selection = kFields, const SheetRow& good = kGood) {
  for (RuleCase& one : cases) one.books.emplace_back(kNames);
  checkRules(selection, good, cases);
}

TEST(UserDefinedFieldRules, CellByCell) {
  const std::string does = "1 ASSETID: Asset Id : ";
  check({
      {},
      {.cells = {{"UDV1", ""}}},
      {.cells = {{"UDV11", " "}}},
      {.cells = {{"UDV1", kLong256}}, .findings = {"1 UDV1: " + kLong256 + " exceeds the maximum length 255"}},
      {.cells = {{"UDV1", kLong256.substr(1) + "  "}}},
      {.cells = {{"UDV11", "31/02/2005"}}, .findings = {"1 UDV11: Invalid UDV11 date : 31/02/2005"}},
      {.cells = {{"UDV11", "31/12/1899"}}, .onServer = Lines{"1 UDV11: Invalid UDV11 date : 31/12/1899"}},
      {.cells = {{"ASSETID", ""}}, .findings = {"1 ASSETID: AssetID should not be blank"}},
      {.cells = {{"ASSETID", kLong31}}, .findings = {"1 ASSETID: " + kLong31 + " exceeds the maximum length 30"}},
      {.cells = {{"ASSETID", "P'9"}}, .findings = {does + "P'9 does not exist in Acquistion of Assets in ORVA."}},
      {.books = {"update AccYear set closed=true where AccYear='2005-06'", "update FinYear set closed=true"},
       .findings = {does + "P1's accounting year : 2005-06 is closed. Can't import"}},
      {.books = {"update FinYear set closed=true where FinYear='2005-06'"},
       .findings = {does + "P1's Financial year : 2005-06 is closed. Can't import"}},
      {.books = {"update AccYear set closed=true where AccYear='2004-05'"}},
      {.cells = {{"ASSETID", "SOLD"}}, .findings = {does + "SOLD is sold / Discarded. Can't import"}},
      {.cells = {{"ASSETID", "OUT"}}, .findings = {does + "OUT is Transferred out. Can't import"}},
      {.cells = {{"ASSETID", "MOVED"}}},
      {.cells = {{"UDV1", " "}, {"UDV11", ""}},
       .findings = {"1 ASSETID: ROW : 1 is empty. Empty row can't be updated.", "1 UDV1", "1 UDV11"}},
      {.cells = {{"ASSETID", "P9"}, {"UDV1", ""}, {"UDV11", ""}},
       .findings = {does + "P9 does not exist in Acquistion of Assets in ORVA."}},
  });
}

TEST(UserDefinedFieldRules, PhysicalIdentifiers) {
  const Selection physical{.kind = ImportKindId::kUdf, .mode = AssetMode::kModifyByPhysicalId};
  // The column of physical identifiers names the asset; without it the identifier column carries them.
  const SheetRow both{{"PHYID", "T-1"}, {"ASSETID", ""}, {"UDV1", "red"}};
  check(
      {
          {},
          {.cells = {{"PHYID", " "}}, .findings = {"1 PHYID: Physical id should not be blank"}},
          {.cells = {{"PHYID", "T-9"}},
           .findings = {"1 PHYID: Physical id : T-9 does not exist Acquistion of Assets in ORVA."}},
          {.books = {"update Asset set PhyID='T-1' where Assetid='MOVED'"},
           .findings = {"1 PHYID: Physical id : T-1 is duplicated more than once in ORVA."}},
          {.cells = {{"PHYID", "T-3"}}, .findings = {"1 PHYID: Physical Id : T-3 is sold / Discarded. Can't import"}},
          {.books = {"update FinYear set closed=true where FinYear='2005-06'"},
           .findings = {"1 PHYID: Physical Id : T-1's Financial year : 2005-06 is closed. Can't import"}},
      },
      physical, both);
  check({{.cells = {{"ASSETID", "t-1"}}},
         {.findings = {"1 ASSETID: Physical id : P1 does not exist Acquistion of Assets in ORVA."}}},
        physical);
}

}  // namespace
}  // namespace orva
