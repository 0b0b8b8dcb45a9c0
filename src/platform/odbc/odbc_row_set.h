#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/database.h"
#include "platform/odbc/odbc_session.h"

namespace orva::odbc {

/// The rows of one query, kept at the client. Rows are read ahead from a result under way;
/// put aside, the set keeps the rows that follow or, from some number on, only their keys (of
/// a query of one table that is opened to be changed or walked forward). Such a set reads no
/// row before one is asked for.
class OdbcRowSet final : public Recordset {
 public:
  OdbcRowSet(OdbcSession& session, std::string_view sql, CursorKind cursor, LockKind lock);
  ~OdbcRowSet() override;

  bool eof() override;
  std::int64_t recordCount() override;
  void moveFirst() override;
  void moveNext() override;
  void requery() override;
  void filter(std::string_view criterion) override;
  void addNew() override;
  void update() override;
  void cancel() override;
  std::vector<FieldInfo> fields() const override;
  Value get(std::string_view field) override;
  void set(std::string_view field, const Value& value) override;

  // For the session.

  /// Gives up the result under way; the rows behind the current one stay reachable.
  void putAside();
  void close();

 private:
  enum class Editing { kNone, kChanging, kAdding };

  void start();
  void startOrRecall();
  void run(const BoundText& text);
  void reset();
  void readAhead(std::size_t rows);
  void ensureStarted();
  void checkOpen() const;
  void checkChangeable() const;
  int column(std::string_view field) const;
  const ColumnList& columns() const { return *columns_; }
  const Value* pendingValue(int column) const;
  Row keyOf(const Row& whole) const;
  bool loadCurrent();
  Value addedValue(int column);
  std::string keyCondition(const Row& key, std::vector<Argument>& arguments) const;
  KeptRows rowsWithKey(const Row& key);
  void storeNew();
  void storeChanges();
  void checkOnlyRow(const Row& key);

  OdbcSession* session_;
  QueryShape shape_;
  std::string criterion_;
  bool asksAnew_;
  bool isChangeable_;
  std::shared_ptr<const TableLayout> layout_;  ///< of the table, for sets that know keys
  std::shared_ptr<const ColumnList> columns_;
  std::shared_ptr<Statement> statement_;  ///< under way
  bool started_ = false;
  std::optional<ProviderError> fault_;               ///< what kept the rows behind `rows_` from being read
  std::deque<std::shared_ptr<const KeptRow>> rows_;  ///< the current one is the first
  bool isBeginning_ = false;                         ///< `rows_` is the beginning of an answer given before
  std::int64_t passed_ = 0;
  bool onAddedRow_ = false;
  Editing editing_ = Editing::kNone;
  std::vector<std::pair<int, Value>> pending_;
};

}  // namespace orva::odbc
