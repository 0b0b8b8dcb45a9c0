#include "imports/transactions/user_defined_fields.h"

#include <deque>
#include <vector>

#include "imports/transactions/named_asset_row.h"
#include "imports/transactions/transaction_checks.h"

namespace orva {
namespace {

using FieldsRule = Rule<NamedAssetRow>;

bool isInvalidDate(NamedAssetRow& row, const Cell& cell, const FieldsRule& rule) {
  return !cell.isBlank() && (isNoDate(row, cell, rule) || isOutsideServerRange(row, cell, rule));
}

bool isTrimmedTooLong(NamedAssetRow& row, const Cell& cell, const FieldsRule& rule) {
  Cell trimmed = cell;
  trimmed.value = trim(cell.value);
  return exceedsSize(row, trimmed, rule);
}

// After the checks of the asset's name, in the order in which they run.
constexpr FieldsRule kAssetRules[] = {
    {.column = kNamingColumn,
     .fails = isAssetAccountingYearClosed,
     .text = "{named by} : {value}'s accounting year : {year} is closed. Can't import"},
    {.column = kNamingColumn,
     .fails = isAssetFinancialYearClosed,
     .text = "{named by} : {value}'s Financial year : {year} is closed. Can't import"},
    {.column = kNamingColumn,
     .fails = isFound,
     .text = "{named by} : {value} is sold / Discarded. Can't import",
     .lookup = kSoldOrDiscarded},
    {.column = kNamingColumn,
     .fails = isFound,
     .text = "{named by} : {value} is Transferred out. Can't import",
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
  std::vector<FieldsRule> rules(namingRules().begin(), namingRules().end());
  rules.insert(rules.end(), std::begin(kAssetRules), std::end(kAssetRules));
  for (const FieldRow& field : catalogue) {
    if (!isValueField(field)) continue;
    FieldsRule rule = field.type == "Date" ? kDateRule : kTextRule;
    rule.column = headings.emplace_back(toUpper(trim(field.excelName)));
    rules.push_back(rule);
  }
  return rules;
}

bool hasNoValue(NamedAssetRow& row) {
  for (int column = 0; column < row.columnCount(); ++column) {
    const Cell& cell = row.cellAt(column);
    if (cell.field && isValueField(*cell.field) && !cell.isBlank()) return false;
  }
  return true;
}

/// The message stands once; every cell of the row is marked.
void refuseEmptyRow(NamedAssetRow& row) {
  if (row.run().findings.rowHas(row.row(), FindingClass::kError) || !hasNoValue(row)) return;
  row.record(0, FindingClass::kError, "ROW : {row} is empty. Empty row can't be updated.");
  for (int column = 1; column < row.columnCount(); ++column) row.record(column, FindingClass::kError, {});
}

void validateFields(ImportRun& run) {
  NamedAssetRow row(run);
  std::deque<std::string> headings;
  validateTransactions(row, rulesFor(run.catalogue, headings), refuseEmptyRow);
}

/// The asset's row of values, or a new one.
bool startValues(NamedAssetRow& row) {
  const std::string assetId = row.assetId();
  row.record().filter("Assetid=" + sqlQuote(assetId));
  if (row.record().eof()) {
    row.record().addNew();
    row.set("Assetid", assetId);
  }
  return true;
}

/// A value column is "UDV" and the field's number. A blank cell leaves the stored value.
void storeValue(NamedAssetRow& row, const Cell& cell, std::string_view) {
  if (cell.isBlank()) return;
  row.set("UDV" + cell.field->position, trim(cell.value));
}

PostResult postFields(ImportRun& run) {
  NamedAssetRow row(run);
  std::deque<std::string> headings;
  std::vector<PostedColumn<NamedAssetRow>> columns;
  for (const FieldRow& field : run.catalogue) {
    if (!isValueField(field)) continue;
    columns.push_back({.heading = headings.emplace_back(toUpper(trim(field.excelName))), .store = storeValue});
  }
  return postResult(
      runPosting<NamedAssetRow>(row, {.query = "Select * from udvalues", .columns = columns, .start = startValues}));
}

}  // namespace

ImportProcedures userDefinedFieldsProcedures() {
  return {.kind = ImportKindId::kUdf,
          .ownColumns = {},
          .sheetColumns = namingColumns,
          .validate = validateFields,
          .post = postFields};
}

}  // namespace orva
