#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace orva {

/// One workbook row of a bulk update, with its asset.
struct UpdateRow {
  std::string assetId = {};
  /// The other columns of the update as text, in the order of its table.
  std::vector<std::string> cells = {};
  Recordset& asset;
};

/// One check of a row. A failing check sets the row's description and counts
/// one error; a later one replaces the description and counts again.
struct UpdateCheck {
  bool (*fails)(const UpdateRow& row);
  std::string_view text;
};

/// A bulk update: what it reads, checks and writes.
struct BulkUpdate {
  std::string_view caption;
  /// Table that holds the rows of the last run with their errors.
  std::string_view errorTable;
  /// Names of the sheet's columns after the identifier, and of the error table's fields.
  std::span<const std::string_view> columns;
  std::span<const UpdateCheck> checks;
  /// Sets the fields of the asset from a row of the error table.
  void (*apply)(Recordset& asset, Recordset& errorRow);
};

/// Lease end dates of existing assets.
const BulkUpdate& leaseEndDateUpdate();
/// Overriding depreciation rate and method of existing assets.
const BulkUpdate& rateAndMethodUpdate();

}  // namespace orva
