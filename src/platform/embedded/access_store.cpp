#include "platform/embedded/access_store.h"

#include <algorithm>
#include <optional>

#include "platform/embedded/access_layout.h"
#include "platform/embedded/access_plan.h"
#include "platform/embedded/sqlite_open.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

/// Names that SQLite keeps for itself; such a table cannot be shown.
bool isShowable(const std::string& name) { return !toLower(name).starts_with("sqlite_"); }

/// The column that a part of a look-up reads; nothing when it reads none, or one without an order.
std::optional<LookupPart> partOf(const AccessTable& table, const std::string& text) {
  for (std::size_t i = 0; i < table.layout.columns.size(); ++i) {
    const std::string name = quoteName(table.layout.columns[i].name);
    if (text.find(name) == std::string::npos) continue;
    if (table.layout.columns[i].type == ColumnType::kMemo) return std::nullopt;
    return LookupPart{table.positions[i], text == name ? std::string() : text};
  }
  return std::nullopt;
}

}  // namespace

void AccessStore::create(const std::string& file, const std::string& password) { AccessFile::create(file, password); }

AccessStore::AccessStore(const std::string& file, const std::string& password) {
  tables_.file = AccessFile::open(file, password);
  database_ = openEngine(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  run(handle(), "PRAGMA temp_store = MEMORY; PRAGMA recursive_triggers = OFF");
  registerAccessModule(handle(), tables_);
  show();
}

AccessStore::~AccessStore() = default;

/// Makes the virtual tables and the catalogue those of the file as it is now. SQLite's own transaction stays open
/// until the next time: it holds no rows, and would otherwise be begun and ended for every statement.
void AccessStore::show() {
  const auto& present = tables_.file->tables();
  auto loaded = std::make_shared<Catalogue>();
  if (sqlite3_get_autocommit(handle()) == 0) run(handle(), "COMMIT");
  run(handle(), "BEGIN");
  for (auto at = shown_.begin(); at != shown_.end();) {
    const bool stays = std::find(present.begin(), present.end(), at->second) != present.end();
    if (!stays) run(handle(), "DROP TABLE " + quoteName(at->first));
    at = stays ? std::next(at) : shown_.erase(at);
  }
  for (const auto& table : present) {
    if (!isShowable(table->layout.name)) continue;
    if (shown_.emplace(table->layout.name, table).second) {
      run(handle(), "CREATE VIRTUAL TABLE " + quoteName(table->layout.name) + " USING " + kAccessModule);
    }
    loaded->add(table->layout);
  }
  run(handle(), "COMMIT; BEGIN");
  catalogue_ = std::move(loaded);
  generation_ = tables_.file->generation();
}

bool AccessStore::refreshCatalogue() {
  if (generation_ == tables_.file->generation()) return false;
  show();
  return true;
}

/// One statement or record: everything or nothing.
template <typename Action>
auto AccessStore::changeData(Action action) {
  try {
    auto result = action();
    tables_.file->commit();
    return result;
  } catch (const ProviderError&) {
    tables_.file->rollback();
    throw;
  } catch (const std::exception& error) {
    tables_.file->rollback();
    throw ProviderError(provider_number::kUnspecified, error.what());
  }
}

std::optional<std::int64_t> AccessStore::addRow(const TableDef& table, const std::vector<const Value*>& values) {
  const AccessTable* const shown = find(table);
  if (!shown || !shown->isCurrent || shown->positions.size() != values.size()) return std::nullopt;
  return changeData([&]() -> std::optional<std::int64_t> {
    access::Table& target = *shown->table;
    access::Row row = target.emptyRow();
    for (std::size_t i = 0; i < values.size(); ++i) {
      // Most columns of a wide table stay empty, as the row is.
      if (values[i]->isNull()) continue;
      const std::size_t at = shown->positions[i];
      row[at] = cellOf(target.definition().columns[at], scalarOf(*values[i]));
    }
    return target.insert(std::move(row));
  });
}

bool AccessStore::walkTexts(const TableDef& table, std::span<const int> columns, const TextVisitor& visit) {
  const AccessTable* const shown = find(table);
  if (!shown || !shown->isCurrent) return false;
  std::vector<std::size_t> places;
  for (const int column : columns) {
    places.push_back(shown->positions[static_cast<std::size_t>(column)]);
    if (shown->table->definition().columns[places.back()].type != access::ColumnType::kText) return false;
  }
  shown->table->walkTexts(places, visit);
  return true;
}

bool AccessStore::canChangeRows(const TableDef& table) const {
  const AccessTable* const shown = find(table);
  return shown && shown->isCurrent;
}

std::int64_t AccessStore::changeRows(const TableDef& table, std::span<const int> columns, std::span<const Value> values,
                                     std::span<const std::int64_t> keys) {
  const AccessTable& shown = *find(table);
  return changeData([&] {
    access::Table& target = *shown.table;
    std::vector<access::Change> changes;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::size_t at = shown.positions[static_cast<std::size_t>(columns[i])];
      changes.push_back({at, cellOf(target.definition().columns[at], scalarOf(values[i]))});
    }
    std::int64_t changed = 0;
    for (const std::int64_t key : keys) {
      const auto row = static_cast<access::RowId>(key);
      if (!target.rows().exists(row)) continue;
      target.update(row, changes);
      ++changed;
    }
    return changed;
  });
}

std::int64_t AccessStore::runChange(sqlite3_stmt* change) {
  tables_.updated.clear();
  tables_.repeated = 0;
  const int code = sqlite3_step(change);
  const std::int64_t rows = sqlite3_changes64(handle()) - tables_.repeated;
  sqlite3_reset(change);
  if (code != SQLITE_DONE && code != SQLITE_ROW) {
    const ProviderError error = engineError(handle(), code);
    tables_.file->rollback();
    throw error;
  }
  try {
    tables_.file->commit();
  } catch (...) {
    tables_.file->rollback();
    throw;
  }
  return rows;
}

/// One definition: everything or nothing.
template <typename Action>
void AccessStore::changeDefinition(const std::string& table, Action action) {
  access::SchemaChange schema(tables_.file->database());
  try {
    action(schema);
    tables_.file->commit();
  } catch (...) {
    tables_.file->rollback();
    tables_.file->reloadTable(table);
    show();
    throw;
  }
  tables_.file->reloadTable(table);
  show();
}

void AccessStore::createTable(const TableDef& table) {
  changeDefinition(table.name, [&table](access::SchemaChange& schema) {
    std::vector<access::NewColumn> columns;
    for (const ColumnDef& column : table.columns) columns.push_back(newColumnOf(column));
    schema.createTable(table.name, columns);
    for (const IndexDef& index : table.indexes) schema.createIndex(table.name, newIndexOf(index));
  });
}

void AccessStore::dropTable(const TableDef& table) {
  changeDefinition(table.name, [&table](access::SchemaChange& schema) { schema.dropTable(table.name); });
}

void AccessStore::addColumns(const TableDef& table, const std::vector<ColumnDef>& columns) {
  changeDefinition(table.name, [&](access::SchemaChange& schema) {
    for (const ColumnDef& column : columns) schema.addColumn(table.name, newColumnOf(column));
  });
}

/// What the properties of a table say about one column.
void AccessStore::applyRules(const TableDef& table, const ColumnDef& column) {
  access::AccessDatabase& database = tables_.file->database();
  access::Table& target = database.table(table.name);
  access::TableProperties properties = target.properties();
  const auto preset = defaultExpression(column.defaultValue);
  if (preset) properties.setDefaultValue(column.name, *preset);
  if (!preset) properties.removeProperty(column.name, "DefaultValue");
  if (column.required || properties.isRequired(column.name)) properties.setRequired(column.name, column.required);
  if (column.isText()) properties.setAllowsZeroLength(column.name, column.allowZeroLength);
  const access::CatalogueObject* object = database.catalogue().tableAt(target.definition().page);
  if (object) database.catalogue().setProperties(*object, properties);
  target.setProperties(std::move(properties));
}

void AccessStore::alterColumn(const TableDef& table, std::size_t column, const ColumnDef& changed) {
  changeDefinition(table.name, [&](access::SchemaChange& schema) {
    schema.alterColumn(table.name, table.columns[column].name, newColumnOf(changed));
    applyRules(table, changed);
  });
}

void AccessStore::dropColumn(const TableDef& table, std::size_t column) {
  changeDefinition(table.name,
                   [&](access::SchemaChange& schema) { schema.dropColumn(table.name, table.columns[column].name); });
}

void AccessStore::createIndex(const TableDef& table, const IndexDef& index) {
  changeDefinition(table.name, [&](access::SchemaChange& schema) {
    try {
      schema.createIndex(table.name, newIndexOf(index));
    } catch (const access::AccessFileError& error) {
      if (error.number() != provider_number::kIntegrity) throw;
      throw ProviderError(provider_number::kUnspecified, error.description());
    }
  });
}

void AccessStore::dropIndex(const TableDef& table, const IndexDef& index) {
  changeDefinition(table.name, [&](access::SchemaChange& schema) { schema.dropIndex(table.name, index.name); });
}

AccessTable* AccessStore::find(const TableDef& table) const {
  const auto found = shown_.find(table.name);
  return found == shown_.end() ? nullptr : found->second.get();
}

std::shared_ptr<const std::uint64_t> AccessStore::changesOf(const TableDef& table) const {
  const auto found = shown_.find(table.name);
  if (found == shown_.end() || !found->second->isCurrent) return nullptr;
  return {found->second, &found->second->changes};
}

void AccessStore::ensureLookup(const TableDef& table, const std::vector<std::string>& texts) {
  AccessTable* const shown = find(table);
  if (!shown) return;
  std::vector<LookupPart> parts;
  for (const std::string& text : texts) {
    const auto part = partOf(*shown, text);
    if (!part) return;
    parts.push_back(*part);
  }
  for (const LookupPart& part : parts) {
    const auto& known = shown->expressions;
    if (part.expression.empty() || std::find(known.begin(), known.end(), part) != known.end()) continue;
    if (known.size() == kExpressionColumns) return;
    shown->expressions.push_back(part);
  }
  if (std::find(shown->wanted.begin(), shown->wanted.end(), parts) == shown->wanted.end()) {
    shown->wanted.push_back(std::move(parts));
  }
}

std::string AccessStore::expressionColumn(const TableDef& table, const std::string& part) {
  const AccessTable* const shown = find(table);
  if (!shown) return {};
  for (std::size_t i = 0; i < shown->expressions.size(); ++i) {
    if (shown->expressions[i].expression == part) return expressionColumnName(i);
  }
  return {};
}

}  // namespace orva::embedded
