#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/database.h"

namespace orva::embedded {

/// Types of a column, numbered as the store keeps them.
enum class ColumnType { kBoolean = 1, kInteger = 2, kDouble = 3, kCurrency = 4, kDate = 5, kText = 6, kMemo = 7 };

struct ColumnDef {
  std::string name;
  ColumnType type = ColumnType::kText;
  int size = 0;  ///< characters of a text column; 0 for every other type
  bool required = false;
  bool allowZeroLength = true;
  Value defaultValue;  ///< null: none; already of the column's type

  bool isText() const { return type == ColumnType::kText || type == ColumnType::kMemo; }
};

struct IndexDef {
  std::string name;
  std::vector<std::string> columns;
  bool unique = false;
  bool primary = false;
  /// False for an index whose texts stand in another order than the engine's: it
  /// finds equal texts and those with one beginning, but sorts none.
  bool keepsTextOrder = true;
};

/// Layout of one table. Names are found without regard to case.
struct TableDef {
  std::string name;
  std::vector<ColumnDef> columns;
  std::vector<IndexDef> indexes;

  /// Position of a column; -1 when there is none.
  int find(std::string_view column) const;
  const IndexDef* findIndex(std::string_view index) const;
  bool hasPrimaryKey() const;
};

/// All tables of a database at one moment. Never changed once it is published,
/// so that prepared statements may point into it.
class Catalogue {
 public:
  void add(TableDef table);
  TableDef* find(std::string_view table);
  const TableDef* find(std::string_view table) const;
  /// The table; throws kNoSuchTable.
  const TableDef& get(std::string_view table) const;
  const std::vector<TableDef>& tables() const { return tables_; }

 private:
  std::vector<TableDef> tables_;
  std::unordered_map<std::string, std::size_t> positions_;
};

/// The type that record sets report for a column.
FieldType fieldTypeOf(ColumnType type, bool server);

}  // namespace orva::embedded
