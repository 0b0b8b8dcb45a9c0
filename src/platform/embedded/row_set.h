#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/embedded/answers.h"
#include "platform/embedded/prepared.h"

namespace orva::embedded {

class Session;

/// The rows of one query. As long as nothing else runs on the connection, fields
/// are read straight from the running statement; put aside, the set remembers the
/// keys of its rows (or, for rows without a key, the rows). A set whose question was
/// answered before, with nothing changed since, is put aside from the start.
class RowSet final : public Recordset {
 public:
  RowSet(Session& session, std::string_view sql, bool updatable, bool firstOnly);
  ~RowSet() override;

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

  /// Gives up the running statement; the current row and those behind it stay reachable.
  void putAside();
  /// Keeps the values of the current row, which is about to change.
  void keepRow();
  void close();
  const TableDef* table() const;

 private:
  enum class Editing { kNone, kChanging, kAdding };

  void runQuery();
  void runOnce();
  void start();
  void use(std::shared_ptr<Prepared> prepared);
  void takeAnswer(const Answer& answer);
  void letGo() noexcept;
  bool readAhead(std::size_t most);
  void keepAnswer();
  void checkOpen() const;
  int column(std::string_view field) const;
  const ColumnDef& definition(int column) const;
  bool isKeyed() const { return prepared_->translation().keyed; }
  Value* pendingValue(int column);
  Value defaultOf(int column) const;
  Value current(int column);
  void load(bool askedOnly);
  void moveToKey();
  void storeNew();
  void storeChanges();
  std::int64_t updateBySql(const std::vector<int>& columns);
  [[noreturn]] static void failNoRow();

  Session* session_;
  std::string text_;  ///< the query, then the filter
  std::size_t criterionAt_;
  bool updatable_;
  bool firstOnly_;  ///< the set ends behind its first row
  std::vector<sql::Literal> literals_;
  std::shared_ptr<Prepared> prepared_;

  /// While the set stands on the first row of an answer that may be kept: the changes of the table, and how many there
  /// were when it was asked.
  std::shared_ptr<const std::uint64_t> changes_;
  std::uint64_t asOf_ = 0;

  bool running_ = false;
  bool eof_ = true;
  std::int64_t key_ = 0;
  std::vector<Value> selected_;  ///< of the current row, unless it is `running_`: columns that were asked for
  std::vector<Value> row_;       ///< all columns of the current row, when `rowLoaded_`
  bool rowLoaded_ = false;
  std::vector<std::int64_t> keys_;        ///< keys behind the current row
  std::vector<std::vector<Value>> rows_;  ///< rows without keys: the current one and those behind it
  std::size_t next_ = 0;
  bool continueByKey_ = false;

  Editing editing_ = Editing::kNone;
  std::vector<std::pair<int, Value>> pending_;
  std::vector<std::size_t> pendingAt_;   ///< of each column that is pending, the place there; of others, anything
  std::vector<const Value*> newValues_;  ///< of the record that is being stored, one a column
  bool onAddedRow_ = false;
  std::vector<int> updateColumns_;
  StatementHandle updateRow_;
};

}  // namespace orva::embedded
