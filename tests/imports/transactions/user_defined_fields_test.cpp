#include "imports/transactions/user_defined_fields.h"

#include "imports/transactions/cases.h"

namespace orva {
namespace {

const SheetRow kValues = {{"ASSETID", "A1"}, {"UDV1", "Blue"}, {"UDV11", "01/06/2005"}};
const std::string kFields = "insert into UDFields (UDF1, UDF11) values ('Colour', 'Checked')";

TEST(UserDefinedFields, EveryCheck) {
  expectFindings(userDefinedFieldsProcedures(), kValues,
                 {
                     {{}, {kFields}, {}},
                     {{{{"UDV1", ""}}}, {kFields}, {}},
                     {{{{"UDV1", std::string(256, 'u')}}},
                      {kFields},
                      {"1 UDV1: " + std::string(256, 'u') + " exceeds the maximum length 255"}},
                     {{{{"UDV11", "31/02/2005"}}}, {kFields}, {"1 UDV11: Invalid UDV11 date : 31/02/2005"}},
                     {{{{"ASSETID", ""}}}, {kFields}, {"1 ASSETID: AssetID should not be blank"}},
                     {{{{"ASSETID", "Z9"}}},
                      {kFields},
                      {"1 ASSETID: Asset Id : Z9 does not exist in Acquistion of Assets in ORVA."}},
                     {{},
                      {kFields, "update AccYear set Closed=true where AccYear='2005-06'"},
                      {"1 ASSETID: Asset Id : A1's accounting year : 2005-06 is closed. Can't import"}},
                     {{},
                      {kFields, "insert into AssetOut (AssetId) values ('A1')"},
                      {"1 ASSETID: Asset Id : A1 is sold / Discarded. Can't import"}},
                     {{{{"UDV1", " "}, {"UDV11", ""}}},
                      {kFields},
                      {"1 ASSETID: ROW : 1 is empty. Empty row can't be updated.", "1 UDV1", "1 UDV11"}},
                 });
}

TEST(UserDefinedFields, BlankCellsKeepWhatIsStored) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect, userDefinedFieldsProcedures());
    company.prepare({kAssetA1, kFields, "insert into Asset (Assetid) values ('A2')",
                     "insert into UDValues (Assetid, UDV1, UDV2) values ('A1', 'Red', 'kept')"});
    EXPECT_EQ(company.import({with(kValues, {{"UDV1", ""}}), with(kValues, {{"ASSETID", "A2"}})}).text,
              "Imported successfully");
    EXPECT_EQ(company.rows("select Assetid, UDV1, UDV2, UDV11 from UDValues order by Assetid"),
              (Lines{"A1|Red|kept|01/06/2005", "A2|Blue||01/06/2005"}));
  }
}

}  // namespace
}  // namespace orva
