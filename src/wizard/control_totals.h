#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/values/currency.h"
#include "wizard/query.h"

namespace orva {

struct ImportRun;

/// One sum that the workbook and the company must agree on.
struct ControlColumn {
  std::string_view label;
  /// Heading of the workbook column.
  std::string_view heading;
  /// Field of the posted record that keeps the amount.
  std::string_view field;
  /// Named although the sheet has no such column.
  bool isAlwaysNamed = true;
};

/// How an import is tied to the ledger: what is counted and added up, and where the company keeps it.
struct ControlPlan {
  /// What a row becomes when it may become several, in the plural.
  std::string_view records;
  std::span<const ControlColumn> columns;
  /// Finds a posted record by its {key}.
  Query posted;
};

/// Number of records and the sums of the plan's columns, in their order.
struct ControlTotals {
  std::int64_t records = 0;
  std::vector<Currency> amounts = {};

  bool operator==(const ControlTotals&) const = default;
};

/// A stored record: its key in the company and the grid row that it came from.
struct PostedRecord {
  int row = 0;
  std::string key = {};
};

/// What the sheet says. `records` is the number of records that its rows are to become; a cell without an amount
/// counts as zero.
ControlTotals workbookTotals(const ControlPlan& plan, const FlexGrid& grid, std::int64_t records);

/// What the company keeps, each record read afresh. A modify mode leaves alone what a cell does not name, so
/// there only the fields of filled cells are added up. Throws `ProviderError`.
ControlTotals companyTotals(const ImportRun& run, const ControlPlan& plan, std::span<const PostedRecord> posted);

/// "Rows 3, Cost 1100.00, Accumulated Depreciation 0.00": `counted` names what is counted.
std::string controlTotalsText(const ControlPlan& plan, const FlexGrid& grid, const ControlTotals& totals,
                              std::string_view counted);

}  // namespace orva
