#include "imports/transactions/cost_breakup.h"

#include <deque>
#include <map>
#include <vector>

#include "imports/transactions/transaction_row.h"

namespace orva {
namespace {

/// The row names its asset by `PHYID` in the mode of physical identifiers, else by `ASSETID`.
class BreakupRow : public TransactionRow {
 public:
  explicit BreakupRow(ImportRun& run) : TransactionRow(run, headingOf(run)) {}

  static std::string_view headingOf(const ImportRun& run) {
    return run.selection.mode == AssetMode::kModifyByPhysicalId ? "PHYID" : "ASSETID";
  }

  void begin(int row) override {
    TransactionRow::begin(row);
    hasLooked_ = false;
    foundId_.clear();
  }

  /// {id} is the asset's identifier, found by the physical one where the sheet carries that.
  std::string textArgument(std::string_view name) const override {
    if (name != "id" || !byPhysicalId()) return TransactionRow::textArgument(name);
    if (!hasLooked_) {
      hasLooked_ = true;
      const auto rows = open({.access = "Select assetid from Asset where phyid ='{PHYID}'"});
      if (!rows->eof()) foundId_ = nullToText(rows->get("assetid"));
    }
    return foundId_;
  }

 private:
  bool byPhysicalId() const { return run().selection.mode == AssetMode::kModifyByPhysicalId; }

  mutable bool hasLooked_ = false;
  mutable std::string foundId_;
};

using BreakupRule = Rule<BreakupRow>;

bool isUnknown(BreakupRow& row, const Cell&, const BreakupRule&) { return !row.assetExists(); }

bool isClosingBalance(BreakupRow& row, const Cell&, const BreakupRule&) {
  return equalsNoCase(nullToText(row.assetField("AcquiredAs")), "O");
}

// The checks of the column that names the asset, in the order in which they run.
constexpr BreakupRule kAssetRules[] = {
    {.column = {}, .fails = isBlank, .text = "AssetID should not be blank", .namesBlank = true},
    {.column = {}, .fails = exceedsSize, .text = "{value} exceeds the maximum length {size}"},
    {.column = {}, .fails = isUnknown, .text = "Asset Id : {value} does not exist in Acquistion of Assets in ORVA."},
    {.column = {},
     .fails = isClosingBalance,
     .text = "Can't import Cost Breakup details for the Closing balance entries in ORVA."},
    {.column = {},
     .fails = isFound,
     .text = "Cost Breakup Details are already exists for Asset Id : {id}",
     .lookup = {.access = "Select * from costBreakup where assetid ='{id}'"}},
};

/// The catalogue's demands on one column, worded as the other imports word theirs.
struct DemandedCheck {
  bool (*applies)(const FieldRow& field);
  BreakupRule rule;
};

bool isMandatory(const FieldRow& field) { return field.requirement == Requirement::kMandatory; }
bool isDateField(const FieldRow& field) { return field.type == "Date"; }
bool isCurrencyField(const FieldRow& field) { return field.type == "Currency"; }
bool isTextField(const FieldRow& field) { return field.type == "Text"; }

constexpr DemandedCheck kDemandedChecks[] = {
    {isMandatory, {.column = {}, .fails = isBlank, .text = "{column} should not be blank", .namesBlank = true}},
    {isDateField, {.column = {}, .fails = isNoDate, .text = "Invalid {column} : {value}"}},
    {isDateField,
     {.column = {}, .fails = isOutsideServerRange, .text = "Date out of Range.Invalid {column} : {value}"}},
    {isCurrencyField, {.column = {}, .fails = isNotNumeric, .text = "{column} should not contain alphabets"}},
    {isTextField, {.column = {}, .fails = exceedsSize, .text = "{value} exceeds the maximum length {size}"}},
};

std::vector<BreakupRule> rulesFor(const ImportRun& run, std::deque<std::string>& headings) {
  std::vector<BreakupRule> rules;
  const std::string_view idHeading = BreakupRow::headingOf(run);
  for (BreakupRule rule : kAssetRules) {
    rule.column = idHeading;
    rules.push_back(rule);
  }
  for (const FieldRow& field : run.catalogue) {
    const std::string& heading = headings.emplace_back(toUpper(field.excelName));
    if (heading == idHeading) continue;
    for (const DemandedCheck& check : kDemandedChecks) {
      if (!check.applies(field)) continue;
      rules.push_back(check.rule);
      rules.back().column = heading;
    }
  }
  return rules;
}

/// The breakup of one asset as the sheet gives it.
struct Breakup {
  Currency cost;
  Currency amount;
  std::vector<int> rows;
};
using Breakups = std::map<std::string, Breakup>;

void addUp(BreakupRow& row, Breakups& breakups) {
  if (!row.assetExists()) return;
  Breakup& breakup = breakups[nullToText(row.assetField("AssetId"))];
  breakup.cost = row.assetField("Cost").toCurrency().value_or(Currency());
  breakup.amount += Value(row.cell("AMOUNT")).toCurrency().value_or(Currency());
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
  BreakupRow row(run);
  std::deque<std::string> headings;
  const std::vector<BreakupRule> rules = rulesFor(run, headings);
  Breakups breakups;
  walkRows<BreakupRow>(row, rules, WalkPolicy::kFirstErrorEndsRow,
                       [&breakups](BreakupRow& current) { addUp(current, breakups); });
  markUnbalanced(run, breakups, row.columnOf("AMOUNT"));
}

/// Only purchased assets take a breakup; a row of another asset is left out.
bool startBreakup(BreakupRow& row) {
  if (!row.finds({.access = "select * from Asset where Assetid='{id}' and AcquiredAs = 'Purchased'"})) return false;
  row.record().addNew();
  return true;
}

void storeOrNone(BreakupRow& row, const Cell& cell, std::string_view target) {
  row.set(target, cell.isBlank() ? Value("NONE") : Value(cell.value));
}

void storeFromAsset(BreakupRow& row, const Cell&, std::string_view target) { row.set(target, row.assetField(target)); }

constexpr PostedColumn<BreakupRow> kBreakupColumns[] = {
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
  BreakupRow row(run);
  return postResult(runPosting<BreakupRow>(
      row, {.query = "select * from costBreakup", .columns = kBreakupColumns, .start = startBreakup}));
}

/// When breakups are added the catalogue lists no identifier; a sheet that carries one names its assets by it.
constexpr std::string_view kSheetColumns[] = {"ASSETID"};

}  // namespace

ImportProcedures costBreakupProcedures() {
  return {.kind = ImportKindId::kCostBreakup,
          .ownColumns = {},
          .sheetColumns = kSheetColumns,
          .validate = validateBreakup,
          .post = postBreakup};
}

}  // namespace orva
