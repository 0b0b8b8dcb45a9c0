#include "imports/transactions/user_defined_fields.h"

#include <deque>
#include <vector>

#include "imports/transactions/transaction_row.h"

namespace orva {
namespace {

/// Finds the asset by its physical identifier when the user chose so: the identifier column then
/// carries `PHYID` values, and the values go to the row of that asset's identifier.
class FieldsRow : public TransactionRow {
 public:
  using TransactionRow::TransactionRow;

  std::string textArgument(std::string_view name) const override {
    return name == "id" && byPhysicalId() ? foundId_ : TransactionRow::textArgument(name);
  }

  void begin(int row) override {
    TransactionRow::begin(row);
    foundId_.clear();
    if (!byPhysicalId()) return;
    setFact("physical id", assetId());
    const auto rows = open({.access = "Select assetid from Asset where phyid ='{physical id}'"});
    if (!rows->eof()) foundId_ = nullToText(rows->get("assetid"));
  }

  std::string foundAssetId() const { return textArgument("id"); }

 private:
  bool byPhysicalId() const { return run().selection.mode == AssetMode::kModifyByPhysicalId; }

  std::string foundId_;
};

using FieldsRule = Rule<FieldsRow>;

bool isMissing(FieldsRow& row, const Cell&, const FieldsRule&) { return !row.assetExists(); }

bool isYearClosed(FieldsRow& row, const Cell& cell, const FieldsRule&) {
  return isAssetAccountingYearClosed(row, cell, {});
}

bool isFinancialYearClosed(FieldsRow& row, const Cell& cell, const FieldsRule&) {
  return isAssetFinancialYearClosed(row, cell, {});
}

bool isInvalidDate(FieldsRow& row, const Cell& cell, const FieldsRule& rule) {
  return !cell.isBlank() && (isNoDate(row, cell, rule) || isOutsideServerRange(row, cell, rule));
}

bool isTrimmedTooLong(FieldsRow& row, const Cell& cell, const FieldsRule& rule) {
  Cell trimmed = cell;
  trimmed.value = trim(cell.value);
  return exceedsSize(row, trimmed, rule);
}

constexpr std::string_view kTooLong = "{value} exceeds the maximum length {size}";

// In the order in which the checks run.
constexpr FieldsRule kAssetRules[] = {
    {.column = "ASSETID", .fails = isBlank, .text = "AssetID should not be blank", .namesBlank = true},
    {.column = "ASSETID", .fails = exceedsSize, .text = kTooLong},
    {.column = "ASSETID",
     .fails = isMissing,
     .text = "Asset Id : {value} does not exist in Acquistion of Assets in ORVA."},
    {.column = "ASSETID",
     .fails = isYearClosed,
     .text = "Asset Id : {value}'s accounting year : {year} is closed. Can't import"},
    {.column = "ASSETID",
     .fails = isFinancialYearClosed,
     .text = "Asset Id : {value}'s Financial year : {year} is closed. Can't import"},
    {.column = "ASSETID",
     .fails = isFound,
     .text = "Asset Id : {value} is sold / Discarded. Can't import",
     .lookup = kSoldOrDiscarded},
    {.column = "ASSETID",
     .fails = isFound,
     .text = "Asset Id : {value} is Transferred out. Can't import",
     .lookup = kTransferredOut},
};

constexpr FieldsRule kDateRule{.column = {}, .fails = isInvalidDate, .text = "Invalid {column} date : {value}"};
constexpr FieldsRule kTextRule{.column = {}, .fails = isTrimmedTooLong, .text = kTooLong};

/// Years are kept beside the values and are no user-defined fields.
bool isValueField(const FieldRow& field) {
  return !field.position.empty() && !equalsNoCase(field.excelName, "ASSETID") &&
         !equalsNoCase(field.excelName, "ACCYEAR") && !equalsNoCase(field.excelName, "FINYEAR");
}

/// The fixed rules of the asset and one rule for each user-defined column.
std::vector<FieldsRule> rulesFor(const Catalogue& catalogue, std::deque<std::string>& headings) {
  std::vector<FieldsRule> rules(std::begin(kAssetRules), std::end(kAssetRules));
  for (const FieldRow& field : catalogue) {
    if (!isValueField(field)) continue;
    FieldsRule rule = field.type == "Date" ? kDateRule : kTextRule;
    rule.column = headings.emplace_back(toUpper(trim(field.excelName)));
    rules.push_back(rule);
  }
  return rules;
}

bool hasNoValue(FieldsRow& row) {
  for (int column = 0; column < row.columnCount(); ++column) {
    const Cell& cell = row.cellAt(column);
    if (cell.field && isValueField(*cell.field) && !cell.isBlank()) return false;
  }
  return true;
}

/// The message stands once; every cell of the row is marked.
void refuseEmptyRow(FieldsRow& row) {
  if (row.run().findings.rowHas(row.row(), FindingClass::kError) || !hasNoValue(row)) return;
  row.record(0, FindingClass::kError, "ROW : {row} is empty. Empty row can't be updated.");
  for (int column = 1; column < row.columnCount(); ++column) row.record(column, FindingClass::kError, {});
}

void validateFields(ImportRun& run) {
  FieldsRow row(run);
  std::deque<std::string> headings;
  const std::vector<FieldsRule> rules = rulesFor(run.catalogue, headings);
  walkRows<FieldsRow>(row, rules, WalkPolicy::kFirstErrorEndsRow, refuseEmptyRow);
}

/// The asset's row of values, or a new one.
bool startValues(FieldsRow& row) {
  const std::string assetId = row.foundAssetId();
  row.record().filter("Assetid=" + sqlQuote(assetId));
  if (row.record().eof()) {
    row.record().addNew();
    row.set("Assetid", assetId);
  }
  return true;
}

/// A value column is "UDV" and the field's number. A blank cell leaves the stored value.
void storeValue(FieldsRow& row, const Cell& cell, std::string_view) {
  if (cell.isBlank()) return;
  row.set("UDV" + cell.field->position, trim(cell.value));
}

PostResult postFields(ImportRun& run) {
  FieldsRow row(run);
  std::deque<std::string> headings;
  std::vector<PostedColumn<FieldsRow>> columns;
  for (const FieldRow& field : run.catalogue) {
    if (!isValueField(field)) continue;
    columns.push_back({.heading = headings.emplace_back(toUpper(trim(field.excelName))), .store = storeValue});
  }
  return postResult(
      runPosting<FieldsRow>(row, {.query = "Select * from udvalues", .columns = columns, .start = startValues}));
}

}  // namespace

ImportProcedures userDefinedFieldsProcedures() {
  return {.kind = ImportKindId::kUdf, .ownColumns = {}, .validate = validateFields, .post = postFields};
}

}  // namespace orva
