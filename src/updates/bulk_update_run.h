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
/// change only when no check failed. The rows are kept in the order of the sheet, which no table promises, so that
/// of two rows of one asset the later one wins.
class BulkUpdateRun {
 public:
  /// `rowDone` is called after each row, so that the screen stays alive; checking ends when it gives false.
  BulkUpdateRun(const BulkUpdate& update, CompanyContext& company, std::function<bool()> rowDone);

  /// Empties the error table and records every row of the sheet, whose first row gives the column names.
  /// Returns the number of errors; nothing when it was ended. Throws `ProviderError`, and `std::runtime_error` for a
  /// sheet without the columns.
  std::optional<int> check(const Sheet& sheet);
  /// Writes the recorded rows to their assets. After a `ProviderError` the assets that `updatedCount` counts are
  /// updated.
  void apply();

  int rowCount() const { return static_cast<int>(rows_.size()); }
  int updatedCount() const { return updatedCount_; }
  /// The error table as tab-separated lines, field names first.
  std::vector<std::string> errorFileLines() const;

 private:
  struct Positions {
    int assetId = -1;
    std::vector<int> columns;
  };
  struct Recorded {
    UpdateRow row;
    /// Every field of the error table.
    std::vector<std::string> cells;
  };
  /// The open record sets of a check.
  struct Tables {
    Recordset& assets;
    Recordset& errors;
  };

  Positions positionsIn(const Sheet& sheet) const;
  int checkRow(const std::vector<std::string>& texts, Tables tables);
  std::string storeValue(Recordset& errors, std::string_view field, const std::string& text) const;
  int recordValues(const std::vector<std::string>& texts, UpdateRow& row, Recordset& errors) const;

  const BulkUpdate& update_;
  const CompanyContext& company_;
  Connection& connection_;
  std::function<bool()> rowDone_;
  std::vector<std::string> fieldNames_;
  std::vector<Recorded> rows_;
  int updatedCount_ = 0;
};

}  // namespace orva
