#pragma once

#include <span>
#include <string_view>
#include <type_traits>

#include "imports/transactions/transaction_row.h"
#include "wizard/rule_checks.h"

namespace orva {

/// Texts, look-ups, checks and posted values that the imports of existing assets share. `Row` derives from
/// `TransactionRow`.

inline constexpr std::string_view kTooLong = "{value} exceeds the maximum length {size}";
inline constexpr std::string_view kNoAssetId = "AssetID should not be blank";

inline constexpr Query kSoldOrDiscarded{.access = "Select * from assetout where assetid ='{id}'"};
/// To another location, on whatever date.
inline constexpr Query kTransferredOut{
    .access = "Select * from shift where assetid ='{id}' and tfrout = true and  sameloc = false",
    .sqlServer = "Select * from shift where assetid ='{id}' and tfrout = 1 and  sameloc = 0"};
/// The same on or before the row's date.
inline constexpr Query kShiftedOutByDate{
    .access = "Select * from shift where assetid ='{id}' and DocDt <={#date} And TfrOut = true and sameloc = false",
    .sqlServer = "Select * from shift where assetid ='{id}' and DocDt <={#date} And tfrout = 1 and sameloc = 0"};

template <class Row>
bool isAssetMissing(Row& row, const Cell&, const Rule<Row>&) {
  return !row.assetExists();
}

/// The look-up compares with the row's date. A cell without one is reported in its own column.
template <class Row>
bool isFoundByDate(Row& row, const Cell&, const Rule<Row>& rule) {
  return row.comparableDate() && row.finds(rule.lookup);
}

template <class Row>
bool isBeforeVoucherDate(Row& row, const Cell&, const Rule<Row>&) {
  const auto date = row.date();
  const auto voucherDate = row.assetDate("docdt");
  return date && voucherDate && *date < *voucherDate;
}

/// The asset's own year is closed. Keeps {year} for the message.
template <class Row>
bool isAssetAccountingYearClosed(Row& row, const Cell&, const Rule<Row>&) {
  const std::string year = nullToText(row.assetField("accyear"));
  row.setFact("year", year);
  return row.accountingYears().isClosed(year);
}
template <class Row>
bool isAssetFinancialYearClosed(Row& row, const Cell&, const Rule<Row>&) {
  const std::string year = nullToText(row.assetField("finyear"));
  row.setFact("year", year);
  return row.financialYears().isClosed(year);
}

/// Checks every row; the first error ends a row. `endRow` follows each row.
template <class Row, class EndRow = void (*)(Row&)>
void validateTransactions(
    Row& row, std::type_identity_t<std::span<const Rule<Row>>> rules, EndRow endRow = [](Row&) {}) {
  walkRows<Row>(row, rules, WalkPolicy::kFirstErrorEndsRow, endRow);
}

/// An identifier is stored as it was looked up, without blanks around it.
template <class Row>
void storeAssetId(Row& row, const Cell&, std::string_view target) {
  row.set(target, row.assetId());
}

template <class Row>
void storeCompany(Row& row, const Cell&, std::string_view target) {
  row.set(target, row.run().company.companyCode);
}

/// The asset's field of the same name. An asset that went since the validation ends the run.
template <class Row>
void storeFromAsset(Row& row, const Cell&, std::string_view target) {
  row.set(target, row.asset().get(target));
}

/// The row's date and the accounting year that contains it.
template <class Row>
void storeDateWithYear(Row& row, const Cell& cell, std::string_view target) {
  if (const CalendarYear* year = row.accountingYear()) row.set("Accyear", year->name);
  row.set(target, cell.value);
}

template <class Row>
void storeOrNone(Row& row, const Cell& cell, std::string_view target) {
  row.set(target, cell.isBlank() ? Value("NONE") : Value(cell.value));
}

}  // namespace orva
