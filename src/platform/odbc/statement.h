#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/odbc/column.h"
#include "platform/odbc/handles.h"
#include "platform/odbc/parameters.h"

namespace orva::odbc {

class Link;

/// One statement of a connection. At most one statement of a connection has a result under
/// way: it must be read to its end, or dropped, before another one runs.
class Statement {
 public:
  Statement(Link& link, std::string sql);

  /// Sends the statement with its arguments: as text the first time, which costs nothing
  /// besides, and prepared once it comes again. Throws `ProviderError`.
  void run(const std::vector<Argument>& arguments);
  /// True when the statement gave rows to fetch.
  bool givesRows() const { return givesRows_; }
  /// Rows that a change hit.
  std::int64_t changedRows();
  std::shared_ptr<const ColumnList> columns();
  /// The next row; false at the end, which ends the result.
  bool fetch(Row& row);
  /// The primary key of a table as the driver's catalogue tells it, a row a column.
  std::vector<Row> primaryKeys(const std::u16string& table);
  /// Drops what is left of the result.
  void close();

 private:
  void check(SQLRETURN done);
  void describe();
  Column describeColumn(SQLUSMALLINT number);
  Cell read(SQLUSMALLINT number, const Column& column);
  std::string readText(SQLUSMALLINT number, bool& isNull);
  void finish();

  Link& link_;
  std::string sql_;
  StatementHandle handle_;
  Parameters parameters_;
  std::shared_ptr<const ColumnList> columns_;
  int runs_ = 0;
  bool givesRows_ = false;
};

}  // namespace orva::odbc
