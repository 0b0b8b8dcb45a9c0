#pragma once

#include "platform/values/date.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"
#include "wizard/amounts.h"
#include "wizard/rule_walk.h"

namespace orva {

/// Checks that the rule tables of several imports share. Each is true when the
/// cell fails.

template <class Row>
bool isBlank(Row&, const Cell& cell, const Rule<Row>&) {
  return cell.isBlank();
}

/// Longer than the catalogue line of the column allows.
template <class Row>
bool exceedsSize(Row&, const Cell& cell, const Rule<Row>&) {
  const int limit = cell.field ? maximumLength(*cell.field) : 0;
  return limit > 0 && characterCount(cell.value) > static_cast<std::size_t>(limit);
}

/// No amount that a money column can keep; a blank is none.
template <class Row>
bool isNotNumeric(Row&, const Cell& cell, const Rule<Row>&) {
  return !amountIn(cell.value);
}

template <class Row>
bool isNegative(Row&, const Cell& cell, const Rule<Row>&) {
  return amountIn(cell.value).value_or(Currency()) < Currency();
}

template <class Row>
bool hasThreeDecimals(Row&, const Cell& cell, const Rule<Row>&) {
  return hasMoreThanTwoDecimals(cell.value);
}

/// No date in day/month/year.
template <class Row>
bool isNoDate(Row&, const Cell& cell, const Rule<Row>&) {
  return !Date::parseDayMonthYear(cell.value);
}

/// A date that a company database on SQL Server cannot keep.
template <class Row>
bool isOutsideDatabaseRange(Row&, const Cell& cell, const Rule<Row>&) {
  const auto date = Date::parseDayMonthYear(cell.value);
  return date && !isInDatabaseRange(*date);
}

/// The same for a company on SQL Server only.
template <class Row>
bool isOutsideServerRange(Row& row, const Cell& cell, const Rule<Row>& rule) {
  return row.run().company.isSqlServer && isOutsideDatabaseRange(row, cell, rule);
}

/// The rule's look-up returns a row.
template <class Row>
bool isFound(Row& row, const Cell&, const Rule<Row>& rule) {
  return row.finds(rule.lookup);
}

template <class Row>
bool isNotFound(Row& row, const Cell&, const Rule<Row>& rule) {
  return !row.finds(rule.lookup);
}

template <class Row>
bool isNotFoundUnlessBlank(Row& row, const Cell& cell, const Rule<Row>& rule) {
  return !cell.isBlank() && !row.finds(rule.lookup);
}

}  // namespace orva
