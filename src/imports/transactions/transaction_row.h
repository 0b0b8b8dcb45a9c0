#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "wizard/posting_run.h"
#include "wizard/rule_checks.h"

namespace orva {

/// The current row of an import that refers to an existing asset: the asset's
/// record, and answers that stay the same for the whole run.
class TransactionRow : public PostingRow {
 public:
  /// `idHeading` is the upper-cased heading of the column that names the asset.
  explicit TransactionRow(ImportRun& run, std::string_view idHeading = "ASSETID");
  using PostingRow::record;
  using RowView::record;

  void begin(int row) override;

  /// {id}: the trimmed identifier of the asset; then the facts; then what `RowView` knows.
  std::string textArgument(std::string_view name) const override;
  std::optional<Date> dateArgument(std::string_view name) const override;
  /// Facts of the row that texts and queries may name. `name` must be a literal.
  void setFact(std::string_view name, std::string text);
  void setDate(std::string_view name, Date date);

  std::string assetId() const { return std::string(trim(cell(idHeading_))); }
  bool assetExists();
  /// Null when there is no such asset.
  Value assetField(std::string_view field);
  std::optional<Date> assetDate(std::string_view field) { return assetField(field).toDate(); }

  /// First row's field of a query whose answer cannot change during the run;
  /// read once, null when the query has no row.
  const Value& constant(const std::string& sql, std::string_view field);
  /// The parameter row's field, read once a run.
  const Value& parameter(std::string_view field) { return constant("select * from parameter", field); }

 private:
  Recordset& asset();

  std::string_view idHeading_;
  std::map<std::string_view, std::string> facts_;
  std::map<std::string_view, Date> dates_;
  std::unique_ptr<Recordset> asset_;
  std::map<std::string, Value> constants_;
};

using TransactionRule = Rule<TransactionRow>;

/// Key of the accounting year that contains `date`; empty when none does.
std::string accountingYearOf(TransactionRow& row, Date date);
/// The same for the financial year.
std::string financialYearOf(TransactionRow& row, Date date);

/// The first row's `DocDt` of the latest entry of a depreciation table for a
/// rate code; entries of reclassifications and sales do not count.
std::optional<Date> latestDepreciation(TransactionRow& row, std::string_view table, std::string_view faCode);

/// Which calendar forbids a transaction on a date.
enum class ClosedCalendar { kNone, kAccounting, kFinancial };

/// The rule of every dated transaction: the calendar whose latest closed year
/// ends later decides, and a date up to the end of any closed year of it is closed. Without
/// a closed year the financial calendar decides.
ClosedCalendar closedCalendarAt(TransactionRow& row, Date date);

/// Transfer out to another location.
inline constexpr Query kTransferredOut{
    .access = "Select * from shift where assetid ='{id}' and tfrout = true and  sameloc = false",
    .sqlServer = "Select * from shift where assetid ='{id}' and tfrout = 1 and  sameloc = 0"};
inline constexpr Query kSoldOrDiscarded{.access = "Select * from assetout where assetid ='{id}'"};

/// The asset's own accounting or financial year is closed. Keeps {year} for
/// the message.
bool isAssetAccountingYearClosed(TransactionRow& row, const Cell&, const TransactionRule&);
bool isAssetFinancialYearClosed(TransactionRow& row, const Cell&, const TransactionRule&);
bool isAssetMissing(TransactionRow& row, const Cell&, const TransactionRule&);

/// Checks every row with `rules`; the first failure ends a row.
void validateTransactions(TransactionRow& row, std::span<const TransactionRule> rules);

}  // namespace orva
