#pragma once

#include <string>
#include <vector>

#include "platform/embedded/catalogue.h"
#include "platform/embedded/sql/tokens.h"
#include "platform/embedded/sql/types.h"

namespace orva::sql {

/// Name of the hidden whole-number key that every table has in SQLite.
inline constexpr const char* kRowKey = "\"orva:id\"";

/// What a lifted literal is bound as.
enum class BindAs : std::uint8_t {
  kText,
  kNumber,
  kCurrency,
  kDate,
  kBoolean,
  kPrefixEnd,  ///< the text behind which no text with this prefix comes
  kColumn      ///< as the column stores it
};

/// Parameter n of the translated text is binding n - 1.
struct Binding {
  int literal = 0;
  BindAs as = BindAs::kText;
  bool negative = false;
  const embedded::ColumnDef* column = nullptr;
};

struct ResultColumn {
  std::string name;
  SqlType type = SqlType::kNull;
  FieldType fieldType = FieldType::kOther;
  int size = 0;
};

/// A literal whose value the translation depends on.
struct Assumption {
  int literal = 0;
  std::string text;
  bool equal = true;  ///< false: its value is another one
};

/// An index that keeps the cost of a look-up independent of the table's size:
/// key parts as SQLite expressions over the table's columns.
struct LookupIndex {
  const embedded::TableDef* table = nullptr;
  std::string alias;  ///< of the table in the statement
  std::vector<std::string> parts;
  /// The index holds the rows that meet this condition only. Empty: every row.
  std::string condition = {};
};

/// A statement of a dialect as SQLite reads it. It points into the catalogue.
struct Translation {
  /// Changes, and queries whose rows have no key.
  std::string sql;
  /// Queries over plain columns of one table: the text from " FROM" on, without
  /// the ordering, and the ordering. The caller chooses what to select.
  bool keyed = false;
  std::string tail;
  std::string ordering;
  /// A change of one table that gives these columns the first literals, one each: `tail` tells the rows, as in a query.
  std::vector<int> assigned;
  bool wholeTable = false;                    ///< keyed, every row, in the order of the key
  bool readsOthers = false;                   ///< a query inside the statement may read other tables
  std::vector<int> columnOf;                  ///< keyed: the table's column of each result column
  const embedded::TableDef* table = nullptr;  ///< the keyed or changed table
  std::vector<ResultColumn> columns;
  std::vector<Binding> bindings;
  std::vector<Assumption> assumptions;
  std::vector<LookupIndex> lookups;
};

}  // namespace orva::sql
