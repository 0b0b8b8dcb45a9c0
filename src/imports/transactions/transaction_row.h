#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "imports/transactions/calendar.h"
#include "wizard/posting_run.h"

namespace orva {

/// By which columns (upper-cased headings) a sheet names the asset of a row and its date.
struct TransactionColumns {
  std::string_view asset = "ASSETID";
  /// Empty where the rows carry no date that places them in the calendars.
  std::string_view date = {};
};

/// The current row of an import that refers to an existing asset: the asset's record, and answers that stay the
/// same for the whole run.
class TransactionRow : public PostingRow {
 public:
  explicit TransactionRow(ImportRun& run, const TransactionColumns& columns = {});
  using PostingRow::record;
  using RowView::record;

  void begin(int row) override;

  /// {id}: the identifier of the asset; then the facts; then what `RowView` knows.
  std::string textArgument(std::string_view name) const override;
  /// {#date}: the date of the row.
  std::optional<Date> dateArgument(std::string_view name) const override;
  /// A fact of the row that its texts and queries may name. `name` must be a literal.
  void setFact(std::string_view name, std::string text) { facts_[name] = std::move(text); }

  /// The date of the row; nothing when its cell holds none.
  std::optional<Date> date() const;
  /// The same, when the company's database can compare its dates with it.
  std::optional<Date> comparableDate() const;

  /// The trimmed identifier of the asset.
  virtual std::string assetId() const { return std::string(trim(cell(columns_.asset))); }
  /// The asset's record, at its end when there is no such asset.
  Recordset& asset();
  bool assetExists() { return !asset().eof(); }
  /// Null when there is no such asset.
  Value assetField(std::string_view field) { return assetExists() ? asset().get(field) : Value(); }
  std::optional<Date> assetDate(std::string_view field) { return assetField(field).toDate(); }

  const Calendar& accountingYears();
  const Calendar& financialYears();
  /// The accounting year of the row's date; null when there is none.
  const CalendarYear* accountingYear();
  const CalendarYear* financialYear();

  /// First row's field of a query whose answer does not change during the run; read once, null when the query has
  /// no row.
  const Value& constant(const std::string& sql, std::string_view field);
  const Value& constant(const Query& query, std::string_view field);
  /// The parameter row's field.
  const Value& parameter(std::string_view field) { return constant("select * from parameter", field); }

 protected:
  /// The run changes the assets' records too.
  void openAssetsForChange() { changesAssets_ = true; }

 private:
  TransactionColumns columns_;
  std::map<std::string_view, std::string> facts_;
  bool changesAssets_ = false;
  std::unique_ptr<Recordset> asset_;
  std::optional<Calendar> accountingYears_;
  std::optional<Calendar> financialYears_;
  std::map<std::string, Value> constants_;
};

using TransactionRule = Rule<TransactionRow>;

}  // namespace orva
