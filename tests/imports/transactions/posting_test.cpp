#include <gtest/gtest.h>

#include "imports/transactions/transaction_company.h"

namespace orva {
namespace {

/// Tables whose rows these imports may change.
constexpr const char* kTables[] = {"Asset",    "AssetOut",      "AMC",         "Insurance", "Addition",
                                   "UDValues", "ReclassAstCat", "CostBreakup", "Vendor",    "Fadep"};

/// What one import leaves in the tables.
struct Import {
  const char* name;
  Selection selection;
  Lines books;
  std::vector<SheetRow> rows;
  int rowsPosted = 2;
};

const std::vector<SheetRow> kSales{{{"SaleAMT", "500.5"},
                                    {"SaleDate", "5/8/2005"},
                                    {"ASSETID", " P1 "},
                                    {"InvoiceNo", "INV-1"},
                                    {"SerialNo", "S-1"},
                                    {"Remarks", "scrap"}},
                                   {{"SaleAMT", "0"},
                                    {"SaleDate", "31/03/2006"},
                                    {"ASSETID", "O'N"},
                                    {"InvoiceNo", "INV-1"},
                                    {"SerialNo", "S-2"},
                                    {"Remarks", ""}}};

const std::vector<SheetRow> kContracts{{{"RefNo", "R-1"},
                                        {"ASSETID", "P1"},
                                        {"RefDate", "15/08/2005"},
                                        {"AMCFrom", "01/09/2005"},
                                        {"AMCTo", "31/08/2006"},
                                        {"Amount", "250.25"},
                                        {"Remarks", "yearly"}},
                                       {{"RefNo", "R-2"},
                                        {"ASSETID", "O'N"},
                                        {"RefDate", "01/06/2005"},
                                        {"AMCFrom", "01/09/2005"},
                                        {"AMCTo", "31/08/2015"},
                                        {"Amount", "-5"},
                                        {"Remarks", ""}}};

const std::vector<SheetRow> kPolicies{{{"RefNo", "R-1"},
                                       {"ASSETID", "P1"},
                                       {"RefDate", "15/08/2005"},
                                       {"InsFrom", "01/09/2005"},
                                       {"InsTo", "31/08/2006"},
                                       {"PolicyNo", "PN/1"},
                                       {"PolicyAMT", "99.99"},
                                       {"Remarks", "fire"}}};

const Lines kDepreciated{"insert into Fadep (Assetid, DocDt) values ('P1', #09/30/2005#)",
                         "insert into Fadep (Assetid, DocDt) values ('O''N', #12/31/2005#)",
                         "update Asset set SubClassCode='PM-01-01' where Assetid='P1'"};
const std::vector<SheetRow> kChanges{{{"CAT1", "Plant and Machinery"},
                                      {"CAT2", "Presses"},
                                      {"CAT3", ""},
                                      {"DocRef", "D-1"},
                                      {"ASSETID", "P1"},
                                      {"Remarks", "as inspected"}},
                                     {{"CAT1", "Plant and Machinery"},
                                      {"CAT2", "Pumps"},
                                      {"CAT3", "Centrifugal"},
                                      {"DocRef", "D-2"},
                                      {"ASSETID", "O'N"},
                                      {"Remarks", ""}}};

const Lines kFamily{
    "insert into Addition (AssetId, PAssetId) values ('P1-09', 'P1')",
    "insert into Asset (Assetid, PAssetId) values ('P1-99', 'P1')",
    "insert into Asset (Assetid, PAssetId) values ('P1-100', 'P1')",
    "update Parameter set DepChildCaln=true",
    "update FADefinition set CostSalvage=true where DefCode='LH'",
    "update Asset set Blockcode='T1', MainLocation='Pune', SubLocation='Plant 1', PhysicalLocation='Bay 1', "
    "DeptCode='0007', Ownership='Owned', SubClasscode='PM-01-01', LocationId='12', Centrecode='0002', FAAge=60, "
    "CostQty='1', FlgAddnlRate='Y', Qty=3 where Assetid='P1'",
    "update Asset set DefCode='LH', ClassCode='LH-01' where Assetid='O''N'"};
const std::vector<SheetRow> kChildren{{{"PARENT_ID", "p1"},
                                       {"DESCRIPTION", "Motor"},
                                       {"COST", "250"},
                                       {"USEDATE", "15/08/2005"},
                                       {"PODATE", "1/8/2005"},
                                       {"PONO", "PO 7"},
                                       {"USER", "Rao"},
                                       {"VCHRNO", "V-1"},
                                       {"VCHRDATE", "10/08/2005"},
                                       {"VENDOR", "acme"},
                                       {"BILLNO", "B-1"},
                                       {"BILLDATE", "09/08/2005"},
                                       {"WARRANTY", "10/08/2007"},
                                       {"REMARKS", "spare"},
                                       {"IgnoreCostIT", "yes"},
                                       {"SALVAGEVALUE", "12.5"},
                                       {"CENVAT", "25"}},
                                      {{"PARENT_ID", "P1"},
                                       {"DESCRIPTION", "Valve"},
                                       {"COST", "-10"},
                                       {"USEDATE", "16/08/2005"},
                                       {"PODATE", ""},
                                       {"PONO", ""},
                                       {"USER", ""},
                                       {"VCHRNO", ""},
                                       {"VCHRDATE", "10/08/2005"},
                                       {"VENDOR", "O'Neil"},
                                       {"BILLNO", ""},
                                       {"BILLDATE", "09/08/2005"},
                                       {"WARRANTY", ""},
                                       {"REMARKS", ""},
                                       {"IgnoreCostIT", "No"},
                                       {"SALVAGEVALUE", ""},
                                       {"CENVAT", ""}},
                                      {{"PARENT_ID", "O'N"},
                                       {"DESCRIPTION", "Fence"},
                                       {"COST", "10"},
                                       {"USEDATE", "16/08/2005"},
                                       {"PODATE", ""},
                                       {"PONO", ""},
                                       {"USER", ""},
                                       {"VCHRNO", ""},
                                       {"VCHRDATE", "10/08/2005"},
                                       {"VENDOR", ""},
                                       {"BILLNO", ""},
                                       {"BILLDATE", "09/08/2005"},
                                       {"WARRANTY", ""},
                                       {"REMARKS", ""},
                                       {"IgnoreCostIT", "No"},
                                       {"SALVAGEVALUE", ""},
                                       {"CENVAT", ""}}};

const std::vector<SheetRow> kBreakups{{{"PHYID", "T-1"},
                                       {"VCHRNO", "V-1"},
                                       {"VCHRDATE", "01/05/2005"},
                                       {"BILLNO", "B-1"},
                                       {"BILLDATE", "30/04/2005"},
                                       {"PARTICULARS", "Freight"},
                                       {"AMOUNT", "400"},
                                       {"COSTCATEGORY", "FRT"},
                                       {"VENDOR", "Acme"}},
                                      {{"PHYID", "T-2"},
                                       {"VCHRNO", ""},
                                       {"VCHRDATE", "01/05/2005"},
                                       {"BILLNO", ""},
                                       {"BILLDATE", "30/04/2005"},
                                       {"PARTICULARS", ""},
                                       {"AMOUNT", "1000"},
                                       {"COSTCATEGORY", "FRT"},
                                       {"VENDOR", ""}},
                                      {{"PHYID", "T-1"},
                                       {"VCHRNO", ""},
                                       {"VCHRDATE", "01/05/2005"},
                                       {"BILLNO", ""},
                                       {"BILLDATE", "30/04/2005"},
                                       {"PARTICULARS", ""},
                                       {"AMOUNT", "600"},
                                       {"COSTCATEGORY", "BASIC"},
                                       {"VENDOR", ""}}};

const Lines kFieldNames{"insert into UDFields (UDF1, UDF2, UDF11) values ('Colour', 'Serial', 'Checked')",
                        "insert into UDValues (Assetid, UDV1, UDV2) values ('O''N', 'blue', 'old')"};
const std::vector<SheetRow> kFieldValues{{{"UDV2", " 77 "}, {"ASSETID", "P1"}, {"UDV1", "red"}, {"UDV11", "5/6/2005"}},
                                         {{"UDV2", "new"}, {"ASSETID", "o'n"}, {"UDV1", ""}, {"UDV11", ""}}};

std::vector<Import> imports() {
  using enum ImportKindId;
  constexpr AssetMode kPhysical = AssetMode::kModifyByPhysicalId;
  return {
      {"sale", {.kind = kSale}, {}, kSales},
      {"amc", {.kind = kAmc}, {}, kContracts},
      {"insurance", {.kind = kInsurance}, {}, kPolicies, 1},
      {"change_category", {.kind = kChangeCategory}, kDepreciated, kChanges},
      {"child", {.kind = kDepChild}, kFamily, kChildren, 3},
      {"child_fx",
       {.kind = kDepChildFx, .mode = kPhysical},
       {},
       {replaced(without(without(kChildren[0], "VENDOR"), "USER"), {{"PHYID", "T-1/A"}})},
       1},
      // The asset that was shifted in takes no breakup and is passed over.
      {"cost_breakup",
       {.kind = kCostBreakup, .mode = kPhysical},
       {"update Asset set AcquiredAs='Shifted' where PhyID='T-2'"},
       kBreakups},
      {"user_defined_fields", {.kind = kUdf}, kFieldNames, kFieldValues},
      {"user_defined_fields_by_physical_id",
       {.kind = kUdf, .mode = kPhysical},
       kFieldNames,
       {{{"ASSETID", "T-2"}, {"UDV2", "new"}}},
       1},
  };
}

TEST(TransactionPosting, TablesAfterEachKind) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    for (const Import& one : imports()) {
      TransactionCompany company(one.selection.kind, dialect);
      company.selection = one.selection;
      company.prepare(one.books);
      const std::string before = contentsOf(company, kTables);
      const PostResult result = company.import(one.rows);
      EXPECT_TRUE(result.finished);
      EXPECT_EQ(result.text, "Imported successfully") << one.name;
      EXPECT_EQ(result.rowsPosted, one.rowsPosted) << one.name;
      expectTables(one.name, added(before, contentsOf(company, kTables)));
    }
  }
}

/// The generated identifiers become visible in both grids.
TEST(TransactionPosting, ChildIdentifiersAreShown) {
  TransactionCompany company(ImportKindId::kDepChild);
  company.import(std::vector<SheetRow>{kChildren[2], kChildren[2]});
  for (const FlexGrid* grid : {&company.grid, &company.saved}) {
    const int column = grid->findColumn("ASSETID");
    EXPECT_EQ(grid->text(1, column), "O'N-01");
    EXPECT_EQ(grid->text(2, column), "O'N-02");
  }
}

struct Broken {
  Selection selection;
  Lines books;
  std::vector<SheetRow> rows;
  int failingStore;
  int rowsPosted;
  const char* left;
  Lines expected;
};

/// What was stored before a failure stays, and the result says how many rows that are.
TEST(TransactionPosting, FailureInTheMiddle) {
  using enum ImportKindId;
  const Selection byId{.kind = kUdf};
  const Broken kCases[] = {
      {{.kind = kSale}, {}, kSales, 2, 1, "select AssetId from AssetOut where SaleValue is not null", {"P1"}},
      {{.kind = kAmc}, {}, kContracts, 2, 1, "select AssetId from AMC", {"P1"}},
      {{.kind = kInsurance}, {}, kPolicies, 1, 0, "select AssetId from Insurance", {}},
      {{.kind = kDepChild},
       kFamily,
       kChildren,
       2,
       1,
       "select AssetId from Addition order by AssetId",
       {"P1-09", "P1-101"}},
      {byId,
       kFieldNames,
       kFieldValues,
       2,
       1,
       "select Assetid, UDV1, UDV2 from UDValues order by Assetid",
       {"O'N|blue|old", "P1|red|77"}},
      {{.kind = kCostBreakup, .mode = AssetMode::kModifyByPhysicalId},
       {},
       kBreakups,
       2,
       1,
       "select assetid from CostBreakup",
       {"P1"}},
      // Each row stores its entry and then the asset.
      {{.kind = kChangeCategory}, kDepreciated, kChanges, 3, 1, "select docno from ReclassAstCat", {"D-1"}},
      {{.kind = kChangeCategory},
       kDepreciated,
       kChanges,
       4,
       2,
       "select r.docno, a.ClassCode, a.SubClassCode from ReclassAstCat r, Asset a where a.Assetid=r.assetid order by "
       "r.docno",
       {"D-1|PM-02|", "D-2|PM-01|"}},
  };
  for (const Broken& one : kCases) {
    const std::string what = std::string(namesOf(one.selection.kind).batchName);
    TransactionCompany company(one.selection.kind);
    company.selection = one.selection;
    company.prepare(one.books);
    company.stage(one.rows);
    company.validate();
    company.adapter->plan().failAt(DatabaseCall::kStore, one.failingStore, provider_number::kUnspecified,
                                   "The disk is full.");
    const PostResult result = company.post();
    EXPECT_FALSE(result.finished) << what;
    EXPECT_EQ(result.text, "The disk is full.") << what;
    EXPECT_EQ(result.rowsPosted, one.rowsPosted) << what;
    EXPECT_EQ(company.rows(one.left), one.expected) << what;
  }
}

/// An asset that went between validation and posting does not get half an entry.
TEST(TransactionPosting, AnAssetThatWentEndsTheRun) {
  for (const ImportKindId kind : {ImportKindId::kChangeCategory, ImportKindId::kDepChild}) {
    TransactionCompany company(kind);
    company.prepare(kDepreciated);
    company.stage({kind == ImportKindId::kDepChild ? kChildren[0] : kChanges[0]});
    company.prepare({"delete from Asset where Assetid='P1'"});
    const PostResult result = company.post();
    EXPECT_FALSE(result.finished);
    EXPECT_EQ(company.rows("select AssetId from Addition"), Lines());
    EXPECT_EQ(company.rows("select AssetId from ReclassAstCat"), Lines());
  }
}

}  // namespace
}  // namespace orva
