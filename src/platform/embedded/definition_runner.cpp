#include "platform/embedded/definition_runner.h"

#include <algorithm>

#include "platform/embedded/sql/definitions.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

constexpr std::size_t kMostColumns = 255;

[[noreturn]] void fail(std::int32_t number, const std::string& text) { throw ProviderError(number, text); }

/// Carries out one kind of definition per overload.
class Runner {
 public:
  Runner(Store& store, SqlDialect dialect) : store_(store), dialect_(dialect), catalogue_(store.catalogue()) {}

  void operator()(const sql::CreateTable& statement) {
    if (catalogue_->find(statement.table)) {
      fail(provider_number::kSyntaxOrExists, "The table '" + statement.table + "' exists already.");
    }
    if (statement.table.find(':') != std::string::npos || toLower(statement.table).starts_with("sqlite_")) {
      fail(provider_number::kSyntaxOrExists, "'" + statement.table + "' is no name for a table.");
    }
    TableDef table = sql::tableOf(statement, dialect_);
    if (table.columns.empty()) fail(provider_number::kSyntaxOrExists, "A table has at least one field.");
    checkColumnCount(table.columns.size());
    const std::vector<IndexDef> indexes = std::exchange(table.indexes, {});
    for (const IndexDef& index : indexes) table.indexes.push_back(checkedIndex(table, index));
    for (const IndexDef& index : table.indexes) {
      for (const std::string& column : index.columns) {
        if (index.primary) table.columns[static_cast<std::size_t>(table.find(column))].required = true;
      }
    }
    store_.createTable(table);
  }

  /// Several columns in one statement are added together or not at all.
  void operator()(const sql::AddColumns& statement) {
    const TableDef& table = catalogue_->get(statement.table);
    std::vector<ColumnDef> columns;
    std::vector<IndexDef> keys;
    TableDef changed = table;
    for (const sql::ColumnSpec& spec : statement.columns) {
      if (changed.find(spec.name) >= 0) {
        fail(isServer() ? provider_number::kErrorsOccurred : provider_number::kUnspecified,
             "The field '" + spec.name + "' exists already in the table '" + table.name + "'.");
      }
      columns.push_back(sql::columnOf(spec, dialect_));
      changed.columns.push_back(columns.back());
      if (spec.primary || spec.unique) {
        keys.push_back(sql::indexOf({spec.constraintName, {spec.name}, spec.primary}, true));
      }
    }
    checkColumnCount(changed.columns.size());
    store_.addColumns(table, columns);
    for (const IndexDef& key : keys) addIndex(statement.table, key);
  }

  void operator()(const sql::AddKey& statement) { addIndex(statement.table, sql::indexOf(statement.key, true)); }

  void operator()(const sql::CreateIndex& statement) {
    addIndex(statement.table, sql::indexOf(statement.index, statement.unique));
  }

  void operator()(const sql::AlterColumn& statement) {
    const TableDef& table = catalogue_->get(statement.table);
    const std::size_t at = columnAt(table, statement.column.name);
    const ColumnDef& before = table.columns[at];
    ColumnDef changed = sql::columnOf(statement.column, dialect_);
    changed.name = before.name;
    if (!statement.column.required) changed.required = before.required && !isServer();
    if (changed.defaultValue.isNull() && changed.type == before.type) changed.defaultValue = before.defaultValue;
    changed.required = changed.required || isInPrimaryKey(table, changed.name);
    store_.alterColumn(table, at, changed);
  }

  void operator()(const sql::DropColumns& statement) {
    for (const std::string& name : statement.columns) columnAt(catalogue_->get(statement.table), name);
    for (const std::string& name : statement.columns) {
      const TableDef& table = store_.catalogue()->get(statement.table);
      const std::size_t at = columnAt(table, name);
      for (const IndexDef& index : table.indexes) {
        const auto isIt = [&name](const std::string& column) { return equalsNoCase(column, name); };
        if (std::none_of(index.columns.begin(), index.columns.end(), isIt)) continue;
        fail(provider_number::kErrorsOccurred, "The field '" + name + "' is part of the index '" + index.name + "'.");
      }
      if (table.columns.size() == 1) fail(provider_number::kErrorsOccurred, "A table keeps at least one field.");
      const auto kept = store_.catalogue();
      store_.dropColumn(kept->get(statement.table), at);
    }
  }

  void operator()(const sql::DropTable& statement) { store_.dropTable(catalogue_->get(statement.table)); }

  void operator()(const sql::DropIndex& statement) {
    const TableDef& table = catalogue_->get(statement.table);
    const IndexDef* index = table.findIndex(statement.index);
    if (!index) fail(provider_number::kSyntaxOrExists, "There is no index '" + statement.index + "'.");
    store_.dropIndex(table, *index);
  }

  template <typename Other>
  void operator()(const Other&) {}

 private:
  bool isServer() const { return dialect_ == SqlDialect::kSqlServer; }

  static void checkColumnCount(std::size_t count) {
    if (count > kMostColumns) fail(provider_number::kUnspecified, "A table has at most 255 fields.");
  }

  static bool isInPrimaryKey(const TableDef& table, const std::string& column) {
    for (const IndexDef& index : table.indexes) {
      for (const std::string& name : index.columns) {
        if (index.primary && equalsNoCase(name, column)) return true;
      }
    }
    return false;
  }

  std::size_t columnAt(const TableDef& table, const std::string& name) const {
    const int at = table.find(name);
    if (at >= 0) return static_cast<std::size_t>(at);
    fail(isServer() ? provider_number::kSyntaxOrExists : provider_number::kErrorsOccurred,
         "There is no field '" + name + "' in the table '" + table.name + "'.");
  }

  /// The index with its columns spelled as the table spells them.
  IndexDef checkedIndex(const TableDef& table, IndexDef index) const {
    if (table.findIndex(index.name)) {
      fail(provider_number::kSyntaxOrExists, "The index '" + index.name + "' exists already.");
    }
    if (index.primary && table.hasPrimaryKey()) {
      fail(provider_number::kSyntaxOrExists, "The table '" + table.name + "' has a primary key already.");
    }
    for (std::string& column : index.columns) {
      const int at = table.find(column);
      if (at < 0) fail(provider_number::kSyntaxOrExists, "There is no field '" + column + "' for the index.");
      column = table.columns[static_cast<std::size_t>(at)].name;
    }
    return index;
  }

  void addIndex(const std::string& name, const IndexDef& index) {
    const auto catalogue = store_.catalogue();
    const TableDef& table = catalogue->get(name);
    store_.createIndex(table, checkedIndex(table, index));
  }

  Store& store_;
  SqlDialect dialect_;
  std::shared_ptr<const Catalogue> catalogue_;
};

}  // namespace

bool isDefinition(const sql::Statement& statement) {
  return !std::holds_alternative<sql::SelectStatement>(statement) &&
         !std::holds_alternative<sql::InsertStatement>(statement) &&
         !std::holds_alternative<sql::UpdateStatement>(statement) &&
         !std::holds_alternative<sql::DeleteStatement>(statement);
}

std::int64_t runDefinition(Store& store, SqlDialect dialect, const sql::Statement& statement) {
  std::visit(Runner(store, dialect), statement);
  return 0;
}

}  // namespace orva::embedded
