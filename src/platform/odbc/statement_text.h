#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/odbc/column.h"

namespace orva::odbc {

/// What the adapter does to the text of a statement before it is sent. A text that it cannot
/// read (comments, variables, several statements) is sent as it is.

/// The statement with the texts that are compared (`= 'A1'`) as arguments, so that one
/// prepared statement serves every row. An argument has the type that its literal had: a
/// plain text, or a Unicode text for one that a plain text could not carry. Every other
/// literal with such characters gets the "N" of a Unicode text.
BoundText lifted(std::string_view sql);

/// True for a statement after which tables may look different.
bool mayChangeLayout(std::string_view sql);

/// The ordered query limited to its first row, so that the server need not find and order the
/// others; every other text as it is.
std::string firstRowOf(std::string_view sql);

/// Where the parts of a query stand.
class QueryShape {
 public:
  explicit QueryShape(std::string_view sql);

  /// The query with one more condition, written as a filter of a record set: dates may stand
  /// in number signs.
  std::string with(std::string_view criterion) const;
  /// The number of its rows.
  std::string counting(std::string_view criterion) const;
  /// A query of one table with a condition in place of its own, and without an ordering.
  std::string where(std::string_view condition) const;
  /// The one table whose rows the query gives, quoted; empty for every other query.
  const std::string& table() const { return table_; }
  const std::string& tableName() const { return tableName_; }

 private:
  std::string filtered(const std::string& head, std::string_view criterion) const;

  std::string whole_;
  std::string head_;       ///< up to the condition
  std::size_t from_ = 0;   ///< where the tables begin in it
  std::string condition_;  ///< of the query itself
  std::string order_;
  std::string table_;
  std::string tableName_;
  bool isPlain_ = false;  ///< a condition can be added where one stands
};

}  // namespace orva::odbc
