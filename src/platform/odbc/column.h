#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/embedded/catalogue.h"
#include "platform/odbc/driver_manager.h"

namespace orva::odbc {

/// A type as parameters are declared to the server.
struct WireType {
  SQLSMALLINT type = SQL_VARCHAR;
  SQLULEN size = 0;
  SQLSMALLINT decimals = 0;
};

/// A column of a result.
struct Column {
  /// Name, type and size as values are converted for it.
  embedded::ColumnDef definition;
  FieldType fieldType = FieldType::kOther;
  WireType wire;

  /// Long texts cannot be compared by the server.
  bool isComparable() const { return definition.type != embedded::ColumnType::kMemo; }
};

/// The columns of a result, found by name without regard to case.
class ColumnList {
 public:
  void add(Column column);
  const std::vector<Column>& all() const { return columns_; }
  const Column& at(int place) const { return columns_[static_cast<std::size_t>(place)]; }
  int count() const { return static_cast<int>(columns_.size()); }
  /// -1 when there is no such column; the first of several.
  int find(std::string_view name) const;

 private:
  std::vector<Column> columns_;
  std::unordered_map<std::string, int> places_;
};

/// A value of a row. A point in time is kept beside a date when it has a time of day, which
/// a comparison with the stored value must not lose.
struct Cell {
  Value value;
  std::optional<SQL_TIMESTAMP_STRUCT> instant = {};
};
using Row = std::vector<Cell>;

/// One argument of a statement.
struct Argument {
  WireType wire;
  Cell cell;
};

/// A statement with its arguments, one for each "?".
struct BoundText {
  std::string sql;
  std::vector<Argument> arguments = {};
};

}  // namespace orva::odbc
