#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/embedded/answers.h"
#include "platform/embedded/prepared.h"
#include "platform/embedded/sql/syntax.h"
#include "platform/embedded/store.h"
#include "platform/embedded/text_hash.h"

namespace orva::embedded {

class RowSet;

/// One open connection of the engine. At most one record set at a time stands on
/// a running statement; it is put aside before anything else runs, so that no
/// answer comes from an older state of the database than the moment of asking.
class Session final : public Connection {
 public:
  Session(std::unique_ptr<Store> store, SqlDialect dialect);
  ~Session() override;

  std::int64_t execute(std::string_view sql) override;
  std::unique_ptr<Recordset> open(std::string_view sql, CursorKind cursor, LockKind lock) override;
  void beginTogether() override { store_->beginTogether(); }
  void endTogether() override { store_->endTogether(); }

  void walkTexts(std::string_view table, std::span<const std::string_view> columns, const TextVisitor& visit) override;

  /// The query plan of a statement, for tests.
  std::string plan(std::string_view sql);

  // For record sets.

  /// The statement for a query and a filter (empty: none). The literals of the
  /// two texts are left in `literals`, placed in the joined text.
  std::shared_ptr<Prepared> query(std::string_view text, std::size_t criterionAt, std::vector<sql::Literal>& literals);
  SqlDialect dialect() const { return dialect_; }
  Answers& answers() { return answers_; }
  /// Counts the changes of the table's rows, whoever makes them; null where that is not known.
  std::shared_ptr<const std::uint64_t> changesOf(const TableDef& table) const { return store_->changesOf(table); }
  /// Puts the running record set aside and makes `next` the running one.
  void takeOver(RowSet* next);
  void enter(RowSet* set);
  void leave(RowSet* set);
  /// Before a record set reads other than from its running statement.
  void beginReading();
  /// Runs one change of rows; the number of rows.
  std::int64_t runChange(sqlite3_stmt* change);
  /// Changes columns of one row; the number of rows, or nothing when that takes SQL.
  std::optional<std::int64_t> changeRow(const TableDef& table, std::span<const int> columns,
                                        std::span<const Value> values, std::int64_t key);
  /// Adds a row to the table of a query, one value a column; its key.
  std::int64_t addRow(Prepared& query, const std::vector<const Value*>& values);
  /// Before rows of a table change: other record sets keep what they stand on.
  void beforeChange(const TableDef& table, const RowSet* except);
  sqlite3* database() { return store_->handle(); }
  /// After a statement was prepared anew: true when the layout had changed.
  bool noticeLayoutChange();

 private:
  using Variants = std::vector<std::shared_ptr<Prepared>>;

  std::shared_ptr<Prepared> find(const StatementText& text);
  std::shared_ptr<Prepared> remember(const StatementText& text, sql::Translation translation);
  std::shared_ptr<Prepared> prepareChange(const StatementText& text, const sql::Statement& statement);
  std::int64_t executeOnce(std::string_view sql);
  std::int64_t runPrepared(Prepared& prepared, const StatementText& text);
  void ensureLookups(sql::Translation& translation);
  void forgetStatements();

  std::unique_ptr<Store> store_;
  SqlDialect dialect_;
  std::unordered_map<std::string, Variants, TextHash, std::equal_to<>> statements_;
  Answers answers_;
  std::string key_;
  std::vector<sql::Literal> literals_;
  RowSet* running_ = nullptr;
  std::vector<RowSet*> open_;
};

}  // namespace orva::embedded
