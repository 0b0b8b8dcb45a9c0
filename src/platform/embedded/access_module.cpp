#include "platform/embedded/access_module.h"

#include <algorithm>
#include <deque>
#include <new>

#include "platform/embedded/access_plan.h"
#include "platform/embedded/row_walk.h"
#include "platform/embedded/sql/translation.h"
#include "platform/embedded/sqlite_functions.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

/// Rows, or starts of a walk, between two looks at the memory that read pages take.
constexpr unsigned kRowsBetweenTrims = 256;

struct VirtualTable : sqlite3_vtab {
  AccessTables* tables = nullptr;
  std::shared_ptr<AccessTable> table;
  std::deque<AccessPlan> plans;
  unsigned walks = 0;
  std::vector<Scalar> arguments;  ///< of the walk that starts

  int columnCount() const { return static_cast<int>(table->layout.columns.size()); }
  std::size_t position(int column) const { return table->positions[static_cast<std::size_t>(column - kFirstColumn)]; }
};

struct Cursor : sqlite3_vtab_cursor {
  std::unique_ptr<RowWalk> walk;
  std::optional<access::RowId> row;
  unsigned count = 0;
};

VirtualTable& of(sqlite3_vtab* table) { return *static_cast<VirtualTable*>(table); }
Cursor& of(sqlite3_vtab_cursor* cursor) { return *static_cast<Cursor*>(cursor); }

void requireCurrent(const VirtualTable& table) {
  if (table.table->isCurrent) return;
  throw ProviderError(provider_number::kUnspecified,
                      "The layout of the table '" + table.table->layout.name + "' has changed.");
}

/// Runs a step; an error becomes the text of the table, from which the provider's number is read again.
template <typename Action>
int guarded(sqlite3_vtab* table, Action action) {
  std::string text;
  try {
    action();
    return SQLITE_OK;
  } catch (const ProviderError& error) {
    text = taggedError(error);
  } catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
  } catch (const std::exception& error) {
    text = taggedError(ProviderError(provider_number::kUnspecified, error.what()));
  }
  sqlite3_free(table->zErrMsg);
  table->zErrMsg = sqlite3_mprintf("%s", text.c_str());
  return SQLITE_ERROR;
}

std::string declaration(const AccessTable& table) {
  std::string sql = std::string("CREATE TABLE x(") + sql::kRowKey + " INTEGER HIDDEN";
  for (const ColumnDef& column : table.layout.columns) {
    sql += ", " + quoteName(column.name);
    if (column.isText()) {
      sql += std::string(" TEXT COLLATE ") + kAccessCollation;
    } else {
      sql += column.type == ColumnType::kDouble ? " REAL" : " INTEGER";
    }
  }
  for (std::size_t i = 0; i < kExpressionColumns; ++i) {
    sql += ", " + expressionColumnName(i) + " COLLATE " + kAccessCollation;
  }
  return sql + ")";
}

// SQLite prescribes the parameters.
// NOLINTNEXTLINE(readability-function-size)
int connect(sqlite3* database, void* context, int count, const char* const* arguments, sqlite3_vtab** made,
            char** message) {
  auto& tables = *static_cast<AccessTables*>(context);
  const std::string_view name = count > 2 ? arguments[2] : "";
  for (const auto& table : tables.file->tables()) {
    if (table->layout.name != name) continue;
    const int code = sqlite3_declare_vtab(database, declaration(*table).c_str());
    if (code != SQLITE_OK) return code;
    auto shown = std::make_unique<VirtualTable>();
    shown->tables = &tables;
    shown->table = table;
    *made = shown.release();
    return SQLITE_OK;
  }
  *message = sqlite3_mprintf("the file has no such table");
  return SQLITE_ERROR;
}

int disconnect(sqlite3_vtab* table) {
  delete &of(table);
  return SQLITE_OK;
}

int bestIndex(sqlite3_vtab* table, sqlite3_index_info* info) {
  return guarded(table, [&] {
    VirtualTable& self = of(table);
    AccessPlan plan = choosePlan(*self.table, *info);
    const auto known = std::find(self.plans.begin(), self.plans.end(), plan);
    info->idxNum = static_cast<int>(known - self.plans.begin());
    info->idxStr = sqlite3_mprintf("%s", plan.text.c_str());
    info->needToFreeIdxStr = 1;
    if (known == self.plans.end()) self.plans.push_back(std::move(plan));
  });
}

int openCursor(sqlite3_vtab*, sqlite3_vtab_cursor** made) {
  *made = std::make_unique<Cursor>().release();
  return SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor* cursor) {
  delete &of(cursor);
  return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* cursor, int plan, const char*, int count, sqlite3_value** values) {
  return guarded(cursor->pVtab, [&] {
    Cursor& self = of(cursor);
    VirtualTable& table = of(cursor->pVtab);
    requireCurrent(table);
    if (++table.walks % kRowsBetweenTrims == 0) table.table->table->letGoOfPages();
    std::vector<Scalar>& arguments = table.arguments;
    arguments.clear();
    for (int i = 0; i < count; ++i) arguments.push_back(scalarOf(values[i]));
    self.walk = startWalk(*table.tables->file, *table.table, table.plans[static_cast<std::size_t>(plan)], arguments);
    self.row = self.walk ? self.walk->next() : std::nullopt;
  });
}

int next(sqlite3_vtab_cursor* cursor) {
  return guarded(cursor->pVtab, [&] {
    Cursor& self = of(cursor);
    const VirtualTable& table = of(cursor->pVtab);
    requireCurrent(table);
    if (++self.count % kRowsBetweenTrims == 0) table.table->table->letGoOfPages();
    self.row = self.walk->next();
  });
}

int atEnd(sqlite3_vtab_cursor* cursor) { return of(cursor).row ? 0 : 1; }

Scalar columnValue(const VirtualTable& table, access::RowId row, int column) {
  const access::Table& source = *table.table->table;
  if (column <= table.columnCount()) return scalarOf(source.rows().cell(row, table.position(column)));
  const auto place = static_cast<std::size_t>(column - table.columnCount() - kFirstColumn);
  if (place >= table.table->expressions.size()) return {};
  const LookupPart& part = table.table->expressions[place];
  const Scalar cell = scalarOf(source.rows().cell(row, part.column));
  return table.tables->file->evaluator().value(part, source.definition().columns[part.column].name, cell);
}

int column(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int at) {
  const VirtualTable& table = of(cursor->pVtab);
  const access::RowId row = of(cursor).row.value_or(0);
  if (at == kKeyColumn) {
    sqlite3_result_int64(context, row);
    return SQLITE_OK;
  }
  // What an update leaves alone need not be read.
  if (sqlite3_vtab_nochange(context)) return SQLITE_OK;
  try {
    requireCurrent(table);
    const bool isOwn = at <= table.columnCount();
    const auto text = isOwn ? table.table->table->rows().plainText(row, table.position(at)) : std::nullopt;
    if (text) {
      sqlite3_result_text(context, text->data(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
    } else {
      giveResult(context, columnValue(table, row, at));
    }
  } catch (const ProviderError& error) {
    sqlite3_result_error(context, taggedError(error).c_str(), -1);
  }
  return SQLITE_OK;
}

int rowKey(sqlite3_vtab_cursor* cursor, sqlite3_int64* key) {
  *key = of(cursor).row.value_or(0);
  return SQLITE_OK;
}

access::RowId addRow(const VirtualTable& table, sqlite3_value** values) {
  access::Table& target = *table.table->table;
  access::Row row = target.emptyRow();
  for (int column = kFirstColumn; column <= table.columnCount(); ++column) {
    const std::size_t at = table.position(column);
    row[at] = cellOf(target.definition().columns[at], scalarOf(values[column]));
  }
  return target.insert(std::move(row));
}

void changeRow(const VirtualTable& table, access::RowId row, sqlite3_value** values) {
  access::Table& target = *table.table->table;
  std::vector<access::Change> changes;
  for (int column = kFirstColumn; column <= table.columnCount(); ++column) {
    if (sqlite3_value_nochange(values[column])) continue;
    const std::size_t at = table.position(column);
    changes.push_back({at, cellOf(target.definition().columns[at], scalarOf(values[column]))});
  }
  const std::uint64_t key = std::uint64_t{target.definition().page} << 32 | row;
  if (!table.tables->updated.insert(key).second) ++table.tables->repeated;
  target.update(row, changes);
}

int update(sqlite3_vtab* shown, int count, sqlite3_value** values, sqlite3_int64* key) {
  return guarded(shown, [&] {
    const VirtualTable& table = of(shown);
    requireCurrent(table);
    const auto row = static_cast<access::RowId>(sqlite3_value_int64(values[0]));
    if (count == 1) return table.table->table->remove(row);
    constexpr int kFirstValue = 2;
    if (sqlite3_value_type(values[0]) != SQLITE_NULL) return changeRow(table, row, values + kFirstValue);
    *key = addRow(table, values + kFirstValue);
  });
}

sqlite3_module makeModule() {
  sqlite3_module module{};
  module.iVersion = 1;
  module.xCreate = connect;
  module.xConnect = connect;
  module.xBestIndex = bestIndex;
  module.xDisconnect = disconnect;
  module.xDestroy = disconnect;
  module.xOpen = openCursor;
  module.xClose = closeCursor;
  module.xFilter = filter;
  module.xNext = next;
  module.xEof = atEnd;
  module.xColumn = column;
  module.xRowid = rowKey;
  module.xUpdate = update;
  return module;
}

}  // namespace

std::string expressionColumnName(std::size_t place) { return quoteName("orva:x" + std::to_string(place)); }

void registerAccessModule(sqlite3* database, AccessTables& tables) {
  static const sqlite3_module module = makeModule();
  sqlite3_create_module_v2(database, kAccessModule, &module, &tables, nullptr);
}

}  // namespace orva::embedded
