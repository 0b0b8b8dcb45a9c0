#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/embedded/sql/tokens.h"
#include "platform/embedded/sql/translation.h"
#include "platform/embedded/sqlite_handle.h"

namespace orva::embedded {

/// An ASCII name without regard to case, to be compared word by word; not usable when it is too long or holds other
/// letters.
class FoldedName {
 public:
  explicit FoldedName(std::string_view name);

  bool isUsable() const { return isUsable_; }
  std::size_t hash() const { return hash_; }
  bool operator==(const FoldedName& other) const;

 private:
  void add(std::uint64_t word);

  std::array<std::uint64_t, 8> words_{};
  std::uint32_t count_ = 0;
  std::size_t size_;
  std::uint64_t hash_ = 0;
  bool isUsable_;
};

/// Finds the place of a result column by its name without regard to case.
class NameIndex {
 public:
  void build(const std::vector<sql::ResultColumn>& columns);
  /// -1 when there is no such column; the first of several.
  int find(std::string_view name) const;

 private:
  /// A name that was asked for: most callers ask again with the same text at the same place.
  struct Asked {
    const char* at = nullptr;
    std::string text;
    int column = -1;
  };

  int findFolded(std::string_view name) const;

  mutable std::vector<Asked> asked_;
  std::vector<std::string> names_;
  std::vector<FoldedName> folded_;
  std::vector<int> slots_;
  std::size_t mask_ = 0;
};

/// The text of a statement with its lifted literals.
struct StatementText {
  std::string_view text;
  const std::vector<sql::Literal>* literals = nullptr;

  std::string_view inside(int literal) const {
    const sql::Literal& at = (*literals)[static_cast<std::size_t>(literal)];
    return text.substr(at.offset, at.length);
  }
};

/// A statement ready to run, shared by all texts that differ in literals only.
///
/// A query whose rows have keys selects the key and those columns that callers
/// have asked for so far: a test whether a row exists reads nothing but the index,
/// however wide the table is. Another column is read through the key, and is
/// selected from the next run on.
class Prepared {
 public:
  Prepared(sqlite3* database, std::shared_ptr<const Catalogue> catalogue, sql::Translation translation,
           SqlDialect dialect);

  const sql::Translation& translation() const { return translation_; }
  const NameIndex& names() const { return names_; }
  bool fits(const StatementText& text) const;

  /// Binds the literals and steps to the first row; false when there is none.
  /// The text must stay where it is until the statement is reset.
  bool start(const StatementText& text);
  bool step();
  void reset() { sqlite3_reset(statement_.get()); }
  /// The change with its literals bound, to be run while the text is there.
  sqlite3_stmt* change(const StatementText& text);
  /// Of a change with `assigned` columns: their values, and the keys of the rows.
  std::vector<Value> assignedValues(const StatementText& text) const;
  std::vector<std::int64_t> keysToChange(const StatementText& text);
  std::int64_t count(const StatementText& text);
  /// True when the statement was prepared again since the last call, as it is
  /// when anyone has changed the layout.
  bool wasPreparedAnew();

  std::int64_t key() const { return sqlite3_column_int64(statement_.get(), 0); }
  /// The result columns that the row under way has, in the order of their places.
  std::span<const int> selected() const { return std::span(asked_).first(selected_); }
  /// Place in the row under way of a result column; -1 when it is not selected.
  int place(int column) const;
  Value at(int place, int column) const;
  /// Selects a column from the next run on; true when it had been asked for before.
  bool askFor(int column);
  /// Place among the columns asked for so far, of which it must be one.
  std::size_t askedPlace(int column) const {
    return static_cast<std::size_t>(places_[static_cast<std::size_t>(column)]);
  }

  std::size_t askedCount() const { return asked_.size(); }

  /// True unless the answers that were kept, or were to be kept, served too seldom of late.
  bool isWorthKeeping();
  void noteAnswerTried() { ++tried_; }
  void noteAnswerUsed() { ++used_; }

  sqlite3_stmt* insertRow();
  /// An update of these columns of the row with a key, the last parameter.
  StatementHandle updateRow(const std::vector<int>& columns) const;
  /// All columns of the row with this key in the order of the result; false when it is gone.
  bool readRow(std::int64_t key, std::vector<Value>& row);
  /// The columns asked for so far of the row with this key, each at its `askedPlace`; false when it is gone.
  bool readAsked(std::int64_t key, std::vector<Value>& asked);
  /// The key that follows in the whole table; 0 when there is none.
  std::int64_t nextKey(std::int64_t key);

  /// The query plan, for tests that must see an index in use.
  std::string plan() const;

 private:
  void bindAll(sqlite3_stmt* statement, const StatementText& text) const;
  Value valueOf(const sql::Binding& binding, const StatementText& text) const;
  void bindLiteral(sqlite3_stmt* statement, int at, const sql::Binding& binding, const StatementText& text) const;
  void prepareQuery();
  /// The key, then some columns of the result.
  std::string selectOf(const std::vector<int>& columns) const;

  /// Reads some columns of a row by its key.
  struct RowReader {
    StatementHandle statement;
    std::vector<int> columns;
  };
  bool read(RowReader& reader, std::int64_t key, std::vector<Value>& values) const;

  sqlite3* database_;
  std::shared_ptr<const Catalogue> catalogue_;
  sql::Translation translation_;
  SqlDialect dialect_;
  NameIndex names_;
  StatementHandle statement_;
  StatementHandle count_;
  StatementHandle keysToChange_;
  StatementHandle insert_;
  RowReader rowReader_;
  RowReader askedReader_;
  StatementHandle next_;
  std::vector<int> asked_;   ///< result columns in the order in which they were asked for
  std::vector<int> places_;  ///< place of each result column in `asked_`, or -1
  bool preparedAnew_ = false;
  std::size_t selected_ = 0;  ///< how many of `asked_` the statement selects
  std::size_t tried_ = 0;     ///< to keep answers, and how often one was used
  std::size_t used_ = 0;
  std::size_t notKept_ = 0;
};

}  // namespace orva::embedded
