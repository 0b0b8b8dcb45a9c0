#pragma once

#include <map>
#include <string>

#include "platform/embedded/access_module.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/embedded/store.h"

namespace orva::embedded {

/// A company database in an Access 2000-2003 file. The tables of the file are
/// virtual tables of an SQLite database in memory, which holds no rows of its own.
/// The key of a row is its place in the file. Equal values, beginnings of texts,
/// ranges and orders of numbers are found through the file's own indexes, the rest
/// through look-ups in memory. All connections of this program share the open file;
/// another program cannot open it meanwhile.
class AccessStore final : public Store {
 public:
  /// Makes a new file; throws kUnspecified when it exists or cannot be made.
  static void create(const std::string& file, const std::string& password);
  /// Throws kUnspecified (no file, no database, damaged, locked), kLoginFailed.
  AccessStore(const std::string& file, const std::string& password);
  ~AccessStore() override;

  sqlite3* handle() override { return database_.get(); }
  void beginReading() override {}
  std::shared_ptr<const std::uint64_t> changesOf(const TableDef& table) const override;
  std::optional<std::int64_t> addRow(const TableDef& table, const std::vector<const Value*>& values) override;
  bool walkTexts(const TableDef& table, std::span<const int> columns, const TextVisitor& visit) override;
  bool canChangeRows(const TableDef& table) const override;
  std::int64_t changeRows(const TableDef& table, std::span<const int> columns, std::span<const Value> values,
                          std::span<const std::int64_t> keys) override;
  void beginTogether() override { tables_.file->database().file().holdBack(); }
  void endTogether() override { tables_.file->database().file().letGo(); }
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
  void ensureLookup(const TableDef& table, const std::vector<std::string>& parts) override;
  bool keepsLookups() const override { return false; }
  std::string expressionColumn(const TableDef& table, const std::string& part) override;

 private:
  template <typename Action>
  void changeDefinition(const std::string& table, Action action);
  template <typename Action>
  auto changeData(Action action);
  void show();
  AccessTable* find(const TableDef& table) const;
  void applyRules(const TableDef& table, const ColumnDef& column);

  AccessTables tables_;
  DatabaseHandle database_;
  std::shared_ptr<const Catalogue> catalogue_;
  std::uint64_t generation_ = 0;
  std::map<std::string, std::shared_ptr<AccessTable>> shown_;
};

}  // namespace orva::embedded
