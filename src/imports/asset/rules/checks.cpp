#include "imports/asset/rules/checks.h"

#include "imports/asset/asset_columns.h"
#include "platform/values/numeric_text.h"

namespace orva::checks {

bool isBlank(AssetRow&, const Cell& cell, const AssetRule&) { return cell.isBlank(); }

bool isTooLong(AssetRow&, const Cell& cell, const AssetRule&) {
  const int size = cell.field ? maximumLength(*cell.field) : 0;
  return size > 0 && static_cast<int>(characterCount(cell.value)) > size;
}

bool found(AssetRow& row, const Cell&, const AssetRule& rule) { return row.finds(rule.lookup); }

bool notFound(AssetRow& row, const Cell&, const AssetRule& rule) { return !row.finds(rule.lookup); }

std::optional<Currency> amountIn(const Cell& cell) { return orva::amountIn(cell.value); }

bool isNotNumeric(AssetRow&, const Cell& cell, const AssetRule&) { return !cell.isBlank() && !amountIn(cell); }

double numberIn(const Cell& cell) { return val(trim(cell.value)); }

bool isNegative(AssetRow&, const Cell& cell, const AssetRule&) { return amountIn(cell) && numberIn(cell) < 0; }

bool isMoreThanCost(AssetRow& row, const Cell& cell, const AssetRule&) {
  const auto amount = amountIn(cell);
  const auto cost = row.cost();
  return amount && cost && *amount > *cost;
}

bool hasTooManyDecimals(AssetRow&, const Cell& cell, const AssetRule&) { return hasMoreThanTwoDecimals(cell.value); }

bool hasDecimals(AssetRow&, const Cell& cell, const AssetRule&) { return hasDecimalPart(cell.value); }

bool isNoPercentage(AssetRow&, const Cell& cell, const AssetRule&) {
  return amountIn(cell) && (numberIn(cell) < 0 || numberIn(cell) > 100);
}

std::optional<Date> dateIn(const Cell& cell) {
  const auto date = Date::parseDayMonthYear(cell.value);
  return date && isInDatabaseRange(*date) ? date : std::nullopt;
}

bool isNotDate(AssetRow&, const Cell& cell, const AssetRule&) {
  return !cell.isBlank() && !Date::parseDayMonthYear(cell.value);
}

bool isOutOfRange(AssetRow&, const Cell& cell, const AssetRule&) {
  const auto date = Date::parseDayMonthYear(cell.value);
  return date && !isInDatabaseRange(*date);
}

bool isDepreciated(AssetRow& row, const Cell&, const AssetRule&) { return row.depreciation().isPresent; }

bool isReclassified(AssetRow& row, const Cell&, const AssetRule&) { return row.hasCategoryChange(); }

bool isShifted(AssetRow& row, const Cell&, const AssetRule&) { return row.isShifted(); }

}  // namespace orva::checks
