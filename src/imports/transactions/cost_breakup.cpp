#include "imports/transactions/cost_breakup.h"

#include <map>
#include <vector>

#include "imports/transactions/document_rules.h"
#include "imports/transactions/named_asset_row.h"

namespace orva {
namespace {

using BreakupRule = Rule<NamedAssetRow>;

bool isClosingBalance(NamedAssetRow& row, const Cell&, const BreakupRule&) {
  return equalsNoCase(nullToText(row.assetField("AcquiredAs")), "O");
}

// After the checks of the asset's name and the document's, in the order in which they run.
constexpr BreakupRule kOwnRules[] = {
    {.column = kNamingColumn,
     .fails = isClosingBalance,
     .text = "Can't import Cost Breakup details for the Closing balance entries in ORVA."},
    {.column = kNamingColumn,
     .fails = isFound,
     .text = "Cost Breakup Details are already exists for Asset Id : {id}",
     .lookup = {.access = "Select * from costBreakup where assetid ='{id}'"}},
    {.column = "AMOUNT", .fails = isNotNumeric, .text = "{value} Amount cannot be Non-Numeric.", .namesBlank = true},
    {.column = "COSTCATEGORY", .fails = isBlank, .text = "CostCategory should not be blank", .namesBlank = true},
    {.column = "COSTCATEGORY", .fails = exceedsSize, .text = kTooLong},
    {.column = "VENDOR", .fails = exceedsSize, .text = "{value} exceeds its maximum length {size}"},
};

std::vector<BreakupRule> breakupRules() {
  std::vector<BreakupRule> rules(namingRules().begin(), namingRules().end());
  rules.insert(rules.end(), kDocumentRules<NamedAssetRow>.begin(), kDocumentRules<NamedAssetRow>.end());
  rules.insert(rules.end(), std::begin(kOwnRules), std::end(kOwnRules));
  return rules;
}

/// The breakup of one asset as the sheet gives it.
struct Breakup {
  Currency cost;
  Currency amount;
  std::vector<int> rows;
};
using Breakups = std::map<std::string, Breakup>;

/// A sheet without the naming column names no asset at all.
void endRow(NamedAssetRow& row, Breakups& breakups) {
  if (!row.hasColumn(kNamingColumn)) return row.record(-1, FindingClass::kError, kNoAssetId, "ASSETID");
  if (!row.assetExists()) return;
  Breakup& breakup = breakups[nullToText(row.assetField("AssetId"))];
  breakup.cost = row.assetField("Cost").toCurrency().value_or(Currency());
  breakup.amount = boundedSum(breakup.amount, amountIn(row.cell("AMOUNT")).value_or(Currency()));
  breakup.rows.push_back(row.row());
}

/// Fills the work table with one line an asset and marks the balanced ones.
void writeWorkTable(Connection& connection, const Breakups& breakups) {
  connection.execute("delete from TmpAstCostBrkup");
  const auto lines = connection.open("select * from TmpAstCostBrkup", CursorKind::kKeyset, LockKind::kPessimistic);
  for (const auto& [assetId, breakup] : breakups) {
    lines->addNew();
    lines->set("AssetId", assetId);
    lines->set("Cost", breakup.cost);
    lines->set("Amount", breakup.amount);
    lines->update();
  }
  connection.execute("update TmpAstCostBrkup set Status ='Y' where Cost=Amount");
}

void markUnbalanced(ImportRun& run, const Breakups& breakups, int amountColumn) {
  run.progress.begin("Validating Cost Breakup Amounts from Excel. Please Wait ......", run.rowCount());
  writeWorkTable(run.connection(), breakups);
  std::vector<Finding> findings;
  const auto lines = run.connection().open("select * from TmpAstCostBrkup where status='N'");
  for (; !lines->eof(); lines->moveNext()) {
    const auto breakup = breakups.find(nullToText(lines->get("AssetId")));
    if (breakup == breakups.end()) continue;
    for (int row : breakup->second.rows) {
      findings.push_back(
          {.row = row, .column = amountColumn, .text = "Sum of Cost Breakup Amounts should be equal to Asset Cost"});
    }
  }
  if (!findings.empty()) run.findings.addToEarlierRows(std::move(findings));
  run.progress.finish("Finished validating data");
}

void validateBreakup(ImportRun& run) {
  NamedAssetRow row(run);
  Breakups breakups;
  validateTransactions(row, breakupRules(), [&breakups](NamedAssetRow& current) { endRow(current, breakups); });
  if (!run.progress.stopRequested()) markUnbalanced(run, breakups, row.columnOf("AMOUNT"));
}

/// Only purchased assets take a breakup; a row of another asset is left out.
bool startBreakup(NamedAssetRow& row) {
  if (!equalsNoCase(nullToText(row.assetField("AcquiredAs")), "Purchased")) return false;
  row.record().addNew();
  return true;
}

constexpr PostedColumn<NamedAssetRow> kBreakupColumns[] = {
    {.heading = "PARTICULARS", .target = "Desc1"},
    {.heading = "VENDOR", .target = "Vendor", .store = storeOrNone},
    {.heading = "VCHRNO", .target = "DocNo"},
    {.heading = "VCHRDATE", .target = "Docdt"},
    {.heading = "BILLNO", .target = "PartybillNo"},
    {.heading = "BILLDATE", .target = "Partybilldt"},
    {.heading = "AMOUNT", .target = "Amount"},
    {.heading = "COSTCATEGORY", .target = "CostCatCode", .store = storeOrNone},
    {.target = "cocd", .store = storeFromAsset},
    {.target = "srno", .store = storeFromAsset},
    {.target = "assetid", .store = storeFromAsset},
};

PostResult postBreakup(ImportRun& run) {
  NamedAssetRow row(run);
  return postResult(runPosting<NamedAssetRow>(
      row, {.query = "select * from costBreakup", .columns = kBreakupColumns, .start = startBreakup}));
}

}  // namespace

ImportProcedures costBreakupProcedures() {
  return {.kind = ImportKindId::kCostBreakup,
          .ownColumns = {},
          .sheetColumns = namingColumns,
          .validate = validateBreakup,
          .post = postBreakup};
}

}  // namespace orva
