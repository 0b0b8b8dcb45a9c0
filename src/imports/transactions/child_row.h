#pragma once

#include <string>

#include "imports/asset/posting/masters.h"
#include "imports/transactions/transaction_row.h"
#include "wizard/amounts.h"

namespace orva {

/// A child row: the asset of the row is the parent named in `PARENT_ID`, its date the use date.
class ChildRow : public TransactionRow {
 public:
  explicit ChildRow(ImportRun& run) : TransactionRow(run, {.asset = "PARENT_ID", .date = "USEDATE"}), masters_(run) {}

  /// {#opening date} and {#closing date}: of the accounting year that contains the use date.
  std::optional<Date> dateArgument(std::string_view name) const override;

  /// 0 when the cell holds no amount.
  Currency cost() const { return amountIn(cell("COST")).value_or(Currency()); }
  /// The parent's identifier as the company spells it.
  std::string parentId() { return nullToText(asset().get("AssetId")); }
  /// Keeps the accounting year for {#opening date}, {#closing date} and {year}.
  void placeInYear(const CalendarYear& year);
  Masters& masters() { return masters_; }

 private:
  CalendarYear year_;
  Masters masters_;
};

/// Identifier of the parent's next child: the parent's identifier, "-" and a
/// number of at least two digits, one above the highest among its children.
/// Reads the company each time, so that a child posted before counts.
std::string nextChildId(ChildRow& row);

/// Costs of the parent and its children in the company.
Currency familyCost(ChildRow& row);

}  // namespace orva
