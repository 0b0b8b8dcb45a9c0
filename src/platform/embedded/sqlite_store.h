#pragma once

#include <set>
#include <string>

#include "platform/embedded/read_hold.h"
#include "platform/embedded/sql/dialect.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/embedded/store.h"

namespace orva::embedded {

/// A company database in an SQLite file. Beside the tables of the catalogue the
/// file holds hidden tables named with a ":" (layout, password) and hidden indexes
/// for look-ups. A finished statement survives the end of the program; the last
/// seconds may be lost in a power cut, but never the soundness of the file.
class SqliteStore : public Store {
 public:
  /// Makes a new file; throws kUnspecified when it exists or cannot be made.
  static void create(const std::string& file, const std::string& password, SqlDialect dialect);
  /// Throws kUnspecified (no file, no database, locked), kLoginFailed.
  SqliteStore(const std::string& file, const std::string& password);
  ~SqliteStore() override;

  sqlite3* handle() override { return database_.get(); }
  void beginReading() override { reading_.begin(); }
  std::int64_t runChange(sqlite3_stmt* change) override;
  std::shared_ptr<const Catalogue> catalogue() const override { return catalogue_; }
  bool refreshCatalogue() override;
  void createTable(const TableDef& table) override;
  void dropTable(const TableDef& table) override;
  void addColumns(const TableDef& table, const std::vector<ColumnDef>& columns) override;
  void alterColumn(const TableDef& table, std::size_t column, const ColumnDef& changed) override;
  void dropColumn(const TableDef& table, std::size_t column) override;
  void createIndex(const TableDef& table, const IndexDef& index) override;
  void dropIndex(const TableDef& table, const IndexDef& index) override;
  void ensureLookup(const TableDef& table, const std::vector<std::string>& parts) override {
    ensureLookupWhere(table, parts, {});
  }
  void ensureLookupWhere(const TableDef& table, const std::vector<std::string>& parts,
                         const std::string& condition) override;

 private:
  class Change;

  void checkpointWhenDue();
  std::string meta(const std::string& name);
  void checkPassword(const std::string& password);
  void loadCatalogue();
  void writeColumns(const TableDef& table);
  void writeIndex(const TableDef& table, const IndexDef& index);
  std::string columnSql(const ColumnDef& column) const;
  void makeIndex(const TableDef& table, const IndexDef& index);
  void convertColumn(const TableDef& table, const ColumnDef& from, const ColumnDef& to);
  void dropLookups(const TableDef& table);

  DatabaseHandle database_;
  ReadHold reading_;
  int logPages_ = 0;           ///< pages in the write-ahead log
  int pagesAtCheckpoint_ = 0;  ///< as of the last attempt to move them into the file
  std::string collation_;
  std::string generation_;
  std::shared_ptr<const Catalogue> catalogue_;
  std::set<std::string> lookups_;
};

}  // namespace orva::embedded
