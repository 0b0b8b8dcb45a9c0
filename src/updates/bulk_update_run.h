#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/workbook.h"
#include "startup/company_context.h"
#include "updates/bulk_update.h"

namespace orva {

/// Steps of a bulk update: all rows are checked and recorded in the error table first, and assets
/// change only when no check failed.
class BulkUpdateRun {
 public:
  /// `rowDone` is called after each row, so that the screen stays alive; checking ends when it gives false.
  BulkUpdateRun(const BulkUpdate& update, Connection& connection, std::function<bool()> rowDone);

  /// Empties the error table and records every row of the sheet, whose first row gives the column names.
  /// Returns the number of errors; nothing when it was ended. Throws `ProviderError`, and `std::runtime_error` for a
  /// sheet without the columns.
  std::optional<int> check(const Sheet& sheet);
  /// Writes the rows of the error table to their assets; returns how many assets were updated.
  int apply();
  /// The error table as tab-separated lines, field names first.
  std::vector<std::string> errorFileLines();

 private:
  struct Positions {
    int assetId = -1;
    std::vector<int> columns;
  };

  Positions positionsIn(const Sheet& sheet) const;
  int checkRow(UpdateRow& row, Recordset& errors) const;
  std::string tableQuery() const;

  const BulkUpdate& update_;
  Connection& connection_;
  std::function<bool()> rowDone_;
};

}  // namespace orva
