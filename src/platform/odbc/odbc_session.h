#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/odbc/answers.h"
#include "platform/odbc/link.h"
#include "platform/odbc/statement.h"
#include "platform/odbc/statement_text.h"

namespace orva::odbc {

class OdbcRowSet;

/// What a record set that can be changed knows of its table.
struct TableLayout {
  std::shared_ptr<const ColumnList> columns;
  /// Places of the key's columns; without a primary key, of all columns that the server can
  /// compare.
  std::vector<int> key;
  bool hasPrimaryKey = false;
};

/// One open connection. At most one record set at a time stands on a result under way; it is
/// put aside before anything else runs.
class OdbcSession final : public Connection {
 public:
  /// Throws `ProviderError`.
  OdbcSession(const std::string& connectionText, const TimeLimits& limits);
  ~OdbcSession() override;

  std::int64_t execute(std::string_view sql) override;
  std::unique_ptr<Recordset> open(std::string_view sql, CursorKind cursor, LockKind lock) override;
  void beginLookups() override { answers_.begin(); }
  void endLookups() override { answers_.end(); }

  // For record sets.

  /// Runs a query; the result is under way.
  std::shared_ptr<Statement> query(const BoundText& text);
  /// Runs a change; how many rows it hit.
  std::int64_t change(const BoundText& text);
  Answers& answers() { return answers_; }
  /// Puts the running record set aside and makes `next` the running one.
  void takeOver(OdbcRowSet* next);
  void enter(OdbcRowSet* set) { open_.insert(set); }
  void leave(OdbcRowSet* set);
  /// The layout behind a query of one table, read once until a statement may change it.
  std::shared_ptr<const TableLayout> layoutOf(const QueryShape& shape);

 private:
  std::shared_ptr<Statement> prepared(const BoundText& text);
  std::vector<std::string> primaryKeyOf(const std::string& table);
  void forgetLayouts();

  Link link_;
  std::unordered_map<std::string, std::shared_ptr<Statement>> statements_;
  std::map<std::string, std::shared_ptr<const TableLayout>> layouts_;
  Answers answers_;
  OdbcRowSet* running_ = nullptr;
  std::set<OdbcRowSet*> open_;
};

}  // namespace orva::odbc
