#pragma once

#include <sqlite3.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/embedded/catalogue.h"

namespace orva::embedded {

/// The storage seam: where tables live. The engine above it knows tables by the
/// catalogue and reaches their rows by SQL on one SQLite handle; how the rows are
/// kept is the store's own affair. A store over another file format offers each
/// table as a virtual table instead of a native one.
///
/// What every store guarantees:
/// - Catalogue: `catalogue()` names every table, column and index. Hidden tables
///   and indexes of the store are not in it.
/// - Names: a table is read and written on `handle()` under its own name, with one
///   more column, the whole-number key `sql::kRowKey`, by which a row is found
///   directly. A new row takes a key above all others; the key of a row never changes.
/// - Forms: text is UTF-8, a currency its ten-thousandths, a date its day number, a
///   Boolean 0 or 1, numbers as they are. Text columns compare and sort by the
///   collation of the store.
/// - Access: by key, by scan in the order of the key, and by range of any index of
///   the catalogue, in both directions (equal leading columns, then a range on the next).
/// - Changes: add, update and delete of a row by SQL; one statement is whole or
///   without effect, and is stored when it ends: the end of the program takes nothing
///   away. A unique index refuses a second equal key (two nulls are not equal).
///   Types, sizes and required columns are checked above the store.
/// - Definitions: each call is whole or without effect. The engine has checked names;
///   a store throws `ProviderError` for what only the rows can tell.
/// - After the store is closed one file remains.
class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  virtual ~Store() = default;

  virtual sqlite3* handle() = 0;
  /// Before a statement reads: it sees everything that anyone has stored so far.
  /// A store may stay in that state of the database until it is called again.
  virtual void beginReading() = 0;
  /// Counts the changes of the table's rows, whoever makes them: as long as it stays, so does every answer of the
  /// table. Null in a store that others can change unseen.
  virtual std::shared_ptr<const std::uint64_t> changesOf(const TableDef&) const { return nullptr; }
  /// Adds a row without SQL and returns its key; `values` are one a column, checked and in the forms of the columns.
  /// Throws, with nothing changed. A store that adds rows by SQL alone returns nothing.
  virtual std::optional<std::int64_t> addRow(const TableDef&, const std::vector<const Value*>& /*values*/) {
    return std::nullopt;
  }
  /// See `Connection::walkTexts`. False, with no row visited, when only SQL reads these columns.
  virtual bool walkTexts(const TableDef& /*table*/, std::span<const int> /*columns*/, const TextVisitor& /*visit*/) {
    return false;
  }
  /// True when `changeRows` can change rows of the table.
  virtual bool canChangeRows(const TableDef&) const { return false; }
  /// Gives columns of the rows with these keys other values without SQL; `values` are one a column, checked and in the
  /// forms of the columns. Throws, with nothing changed. The number of rows; a row that is not there any more is none.
  virtual std::int64_t changeRows(const TableDef& /*table*/, std::span<const int> /*columns*/,
                                  std::span<const Value> /*values*/, std::span<const std::int64_t> /*keys*/) {
    return 0;
  }
  /// Between these a finished statement may wait for others before it is stored.
  virtual void beginTogether() {}
  virtual void endTogether() {}
  /// Runs one prepared change of rows on `handle()` and resets it; no other
  /// statement may be under way. Throws, with nothing changed. The number of rows.
  virtual std::int64_t runChange(sqlite3_stmt* change) = 0;

  /// The layout as of the last definition or refresh; kept alive by its holders.
  virtual std::shared_ptr<const Catalogue> catalogue() const = 0;
  /// Reads the layout again if another program has changed it; true when it has.
  virtual bool refreshCatalogue() = 0;

  virtual void createTable(const TableDef& table) = 0;
  virtual void dropTable(const TableDef& table) = 0;
  virtual void addColumns(const TableDef& table, const std::vector<ColumnDef>& columns) = 0;
  /// Gives a column another type or size. Throws kErrorsOccurred when a value of
  /// the column does not fit.
  virtual void alterColumn(const TableDef& table, std::size_t column, const ColumnDef& changed) = 0;
  virtual void dropColumn(const TableDef& table, std::size_t column) = 0;
  /// Throws kUnspecified when rows have equal keys, or a null in a primary key.
  virtual void createIndex(const TableDef& table, const IndexDef& index) = 0;
  virtual void dropIndex(const TableDef& table, const IndexDef& index) = 0;

  /// Makes sure that an index over `parts`, SQLite expressions over the columns
  /// of the table, serves look-ups. A wish: a store may have none, and a failure
  /// (a locked or read-only file) is passed over.
  virtual void ensureLookup(const TableDef& table, const std::vector<std::string>& parts) = 0;
  /// The same for look-ups whose rows all meet `condition`. A store may keep every row.
  virtual void ensureLookupWhere(const TableDef& table, const std::vector<std::string>& parts,
                                 const std::string& condition) {
    static_cast<void>(condition);
    ensureLookup(table, parts);
  }
  /// True when a look-up, once made, serves all programs to come.
  virtual bool keepsLookups() const { return true; }
  /// The column, quoted, in which a table shows the value of an expression that is
  /// a part of a look-up; empty in a store that knows expressions by themselves.
  virtual std::string expressionColumn(const TableDef&, const std::string& /*part*/) { return {}; }
};

}  // namespace orva::embedded
