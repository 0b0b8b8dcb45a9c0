#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/access/access_database.h"

namespace orva::access {

/// A column that is to be made.
struct NewColumn {
  std::string name = {};
  ColumnType type = ColumnType::kText;
  /// Characters of a text, bytes of a binary; 0 elsewhere.
  int size = 0;
  bool isAutoNumber = false;
  bool isRequired = false;
  bool allowsZeroLength = true;
  /// An expression: "0", "\"A\"", "=No".
  std::optional<std::string> defaultValue = {};
  bool isCompressed = true;
};

struct NewIndex {
  struct Part {
    std::string column = {};
    bool descending = false;
  };
  std::string name = {};
  std::vector<Part> columns = {};
  bool isPrimary = false;
  bool isUnique = false;
  bool ignoresNulls = false;
  bool refusesNulls = false;
};

/// Changes the structure of a database. Every call checks names and limits
/// before it changes anything, belongs to the transaction of the database, and
/// after an exception has to be rolled back with it.
class SchemaChange {
 public:
  explicit SchemaChange(AccessDatabase& database) : database_(database) {}

  void createTable(std::string_view name, const std::vector<NewColumn>& columns);
  /// Refuses a table that takes part in a relationship.
  void dropTable(std::string_view name);
  /// Rows that exist have no value in the new column.
  void addColumn(std::string_view table, const NewColumn& column);
  /// Refuses a column that an index or a relationship uses.
  void dropColumn(std::string_view table, std::string_view column);
  /// Gives a column another size or type, and converts the values; the name in
  /// `changed` is not looked at. Throws `kErrorsOccurred` when a value does not fit.
  void alterColumn(std::string_view table, std::string_view column, const NewColumn& changed);
  /// Throws `kUnspecified` when rows have equal keys, `kIntegrity` for a null in a primary key.
  void createIndex(std::string_view table, const NewIndex& index);
  void dropIndex(std::string_view table, std::string_view index);

 private:
  struct KeptIndex;

  Table& userTable(std::string_view name);
  SlotAddress newMap(TableDefinition& definition);
  void removeMap(SlotAddress map);
  Column layColumn(TableDefinition& definition, const NewColumn& column);
  void freeColumnPages(const Column& column);
  void finish(Table& table);
  void replaceColumn(Table& table, std::size_t column, const NewColumn& changed);
  void copyValues(Table& table, std::size_t from, std::size_t to);
  void removeRealIndex(Table& table, std::size_t index);
  void setColumnProperties(TableProperties& properties, const NewColumn& column);
  void storeProperties(Table& table, TableProperties properties);

  AccessDatabase& database_;
};

}  // namespace orva::access
