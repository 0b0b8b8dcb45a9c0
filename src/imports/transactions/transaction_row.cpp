#include "imports/transactions/transaction_row.h"

#include <utility>

namespace orva {

TransactionRow::TransactionRow(ImportRun& run, const TransactionColumns& columns)
    : PostingRow(run), columns_(columns) {}

void TransactionRow::begin(int row) {
  PostingRow::begin(row);
  facts_.clear();
  asset_.reset();
}

std::string TransactionRow::textArgument(std::string_view name) const {
  if (name == "id") return assetId();
  const auto found = facts_.find(name);
  return found == facts_.end() ? PostingRow::textArgument(name) : found->second;
}

std::optional<Date> TransactionRow::dateArgument(std::string_view name) const {
  return name == "date" ? date() : PostingRow::dateArgument(name);
}

std::optional<Date> TransactionRow::date() const { return PostingRow::dateArgument(columns_.date); }

std::optional<Date> TransactionRow::comparableDate() const {
  const auto found = date();
  return found && run().company.isSqlServer && !isInDatabaseRange(*found) ? std::nullopt : found;
}

Recordset& TransactionRow::asset() {
  static constexpr Query kAsset{.access = "Select * from Asset where assetid ='{id}'"};
  if (!asset_ && changesAssets_) {
    asset_ = run().connection().open(composeQuery(kAsset, run().dialect(), *this), CursorKind::kKeyset,
                                     LockKind::kPessimistic);
  } else if (!asset_) {
    asset_ = open(kAsset);
  }
  return *asset_;
}

const Calendar& TransactionRow::accountingYears() {
  if (!accountingYears_) accountingYears_.emplace(run().connection(), Calendar::kAccounting);
  return *accountingYears_;
}

const Calendar& TransactionRow::financialYears() {
  if (!financialYears_) financialYears_.emplace(run().connection(), Calendar::kFinancial);
  return *financialYears_;
}

const CalendarYear* TransactionRow::accountingYear() {
  const auto found = date();
  return found ? accountingYears().containing(*found) : nullptr;
}

const CalendarYear* TransactionRow::financialYear() {
  const auto found = date();
  return found ? financialYears().containing(*found) : nullptr;
}

const Value& TransactionRow::constant(const std::string& sql, std::string_view field) {
  std::string key = sql;
  key += '\n';
  key += field;
  const auto known = constants_.find(key);
  if (known != constants_.end()) return known->second;
  const auto rows = run().connection().open(sql);
  return constants_.emplace(std::move(key), rows->eof() ? Value() : rows->get(field)).first->second;
}

const Value& TransactionRow::constant(const Query& query, std::string_view field) {
  return constant(composeQuery(query, run().dialect(), *this), field);
}

}  // namespace orva
