#pragma once

#include <string>

#include "imports/asset/posting/masters.h"
#include "imports/transactions/transaction_row.h"

namespace orva {

/// A child row: the asset of the row is the parent named in `PARENT_ID`.
class ChildRow : public TransactionRow {
 public:
  explicit ChildRow(ImportRun& run) : TransactionRow(run, "PARENT_ID"), masters_(run) {}

  std::optional<Date> useDate() const { return Date::parseDayMonthYear(cell("USEDATE")); }
  Currency cost() const { return Currency::parse(cell("COST")).value_or(Currency()); }
  Masters& masters() { return masters_; }

 private:
  Masters masters_;
};

/// Identifier of the parent's next child: the parent's identifier, "-" and a
/// number of at least two digits, one above the highest among its children.
/// Reads the company each time, so that a child posted before counts.
std::string nextChildId(ChildRow& row);

/// Costs of the parent and its children in the company.
Currency familyCost(ChildRow& row);

}  // namespace orva
