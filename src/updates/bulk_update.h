#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace orva {

/// One workbook row of a bulk update as the error table keeps it.
struct UpdateRow {
  std::string assetId = {};
  /// Values of the update's columns, in the order of its table; null for a blank cell and for a text that the
  /// error table cannot hold.
  std::vector<Value> values = {};
};

/// One column of the sheet after the identifier; the error table has a field of the same name.
struct UpdateColumn {
  std::string_view name;
  /// Otherwise a blank cell is refused like any other text that is no value for the field.
  bool mayBeBlank = true;
};

/// One check of a row whose asset exists. A failing check sets the row's description and counts
/// one error; a later one replaces the description and counts again.
struct UpdateCheck {
  bool (*fails)(const UpdateRow& row, Recordset& asset);
  std::string_view text;
};

/// A bulk update: what it reads, checks and writes.
struct BulkUpdate {
  std::string_view caption;
  /// Table that holds the rows of the last run with their errors.
  std::string_view errorTable;
  std::span<const UpdateColumn> columns;
  std::span<const UpdateCheck> checks;
  /// Sets the fields of the asset.
  void (*apply)(Recordset& asset, const UpdateRow& row);
};

/// Lease end dates of existing assets.
const BulkUpdate& leaseEndDateUpdate();
/// Overriding depreciation rate and method of existing assets.
const BulkUpdate& rateAndMethodUpdate();

}  // namespace orva
