#include "platform/embedded/sqlite_store.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/embedded/conversion.h"
#include "platform/embedded/password.h"
#include "platform/embedded/sql/translation.h"
#include "platform/embedded/sqlite_functions.h"
#include "platform/embedded/sqlite_open.h"
#include "platform/local/path_lookup.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

constexpr int kApplicationId = 0x4F525641;  // "ORVA", so that no other SQLite file is taken for a company
constexpr char kNameSeparator = '\x1F';
/// Lookup indexes of another generation of the functions are not trusted.
constexpr const char* kLookupPrefix = "auto1:";

constexpr const char* kHiddenTables = R"(
  CREATE TABLE "orva:meta"(name TEXT PRIMARY KEY, value TEXT) WITHOUT ROWID;
  CREATE TABLE "orva:column"(owner TEXT, place INTEGER, name TEXT, type INTEGER, size INTEGER, required INTEGER,
                             empty INTEGER, preset TEXT, PRIMARY KEY(owner, place)) WITHOUT ROWID;
  CREATE TABLE "orva:index"(owner TEXT, name TEXT, columns TEXT, uniq INTEGER, prim INTEGER,
                            PRIMARY KEY(owner, name)) WITHOUT ROWID;
)";

[[noreturn]] void failFile(const std::string& text) { throw ProviderError(provider_number::kUnspecified, text); }

bool beginsAsDatabase(const std::filesystem::path& path) {
  std::array<char, 16> head{};
  std::ifstream file(path, std::ios::binary);
  if (!file) failFile("The file '" + pathText(path) + "' cannot be read.");
  file.read(head.data(), head.size());
  return file.gcount() == 16 && std::memcmp(head.data(), "SQLite format 3", 16) == 0;
}

std::int64_t numberFrom(sqlite3* database, const std::string& sql) {
  const StatementHandle statement = prepare(database, sql);
  const int code = sqlite3_step(statement.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) throwEngineError(database, code);
  return code == SQLITE_ROW ? sqlite3_column_int64(statement.get(), 0) : 0;
}

std::string joinNames(const std::vector<std::string>& names) {
  std::string joined;
  for (const std::string& name : names) joined += (joined.empty() ? "" : std::string(1, kNameSeparator)) + name;
  return joined;
}

std::vector<std::string> splitNames(std::string_view joined) {
  std::vector<std::string> names;
  for (std::size_t start = 0; start <= joined.size();) {
    const std::size_t end = std::min(joined.find(kNameSeparator, start), joined.size());
    names.emplace_back(joined.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

std::string physicalIndex(const TableDef& table, const IndexDef& index) {
  return quoteName(table.name + ":" + index.name);
}

/// Columns have their own collation; the text of a function has none.
bool givesText(const std::string& part) {
  for (const char* number : {"orva_len", "orva_val", "orva_whole", "orva_date_part"}) {
    if (part.starts_with(number)) return false;
  }
  return !part.starts_with('"');
}

void runWith(sqlite3* database, const std::string& sql, std::initializer_list<Value> values) {
  const StatementHandle statement = prepare(database, sql);
  int at = 0;
  for (const Value& value : values) bindValue(statement.get(), ++at, value);
  const int code = sqlite3_step(statement.get());
  if (code != SQLITE_DONE && code != SQLITE_ROW) throwEngineError(database, code);
}

}  // namespace

/// One definition: everything or nothing, and a new generation of the layout.
class SqliteStore::Change {
 public:
  explicit Change(SqliteStore& store) : store_(store) {
    store_.reading_.end();
    run(store.database_.get(), "BEGIN IMMEDIATE");
  }
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;
  ~Change() {
    if (!done_) sqlite3_exec(store_.database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  /// A changed view makes every other connection prepare its statements anew.
  void commit() {
    sqlite3* const database = store_.database_.get();
    run(database, R"(UPDATE "orva:meta" SET value = value + 1 WHERE name = 'generation';
                     DROP VIEW IF EXISTS "orva:mark"; CREATE VIEW "orva:mark" AS SELECT 1)");
    run(database, "COMMIT");
    done_ = true;
    store_.loadCatalogue();
  }

 private:
  SqliteStore& store_;
  bool done_ = false;
};

void SqliteStore::create(const std::string& file, const std::string& password, SqlDialect dialect) {
  const std::filesystem::path path = findPath(file);
  std::error_code ignored;
  if (path.empty() || std::filesystem::exists(path, ignored)) failFile("The database '" + file + "' exists already.");
  const DatabaseHandle database = openEngine(pathText(path), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  const char* collation = dialect == SqlDialect::kAccess ? kAccessCollation : kServerCollation;
  run(database.get(), "PRAGMA application_id = " + std::to_string(kApplicationId));
  run(database.get(), "PRAGMA journal_mode = WAL");
  run(database.get(), "BEGIN IMMEDIATE");
  run(database.get(), kHiddenTables);
  const auto meta = [&database](const char* name, const std::string& value) {
    runWith(database.get(), R"(INSERT INTO "orva:meta" VALUES (?, ?))", {Value(name), Value(value)});
  };
  meta("generation", "1");
  meta("collation", collation);
  meta("password", passwordMark(password));
  run(database.get(), "COMMIT");
}

SqliteStore::SqliteStore(const std::string& file, const std::string& password) {
  const std::filesystem::path path = findPath(file);
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) failFile("Could not find file '" + file + "'.");
  if (!beginsAsDatabase(path)) failFile("The file '" + file + "' is not a company database.");
  database_ = openEngine(pathText(path), SQLITE_OPEN_READWRITE);
  try {
    if (numberFrom(handle(), "PRAGMA application_id") != kApplicationId) {
      failFile("The file '" + file + "' is not a company database.");
    }
    if (sqlite3_db_readonly(handle(), "main") == 1) failFile("The database '" + file + "' is read-only.");
    run(handle(),
        "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -65536;"
        "PRAGMA temp_store = MEMORY; PRAGMA recursive_triggers = OFF");
    checkPassword(password);
    collation_ = meta("collation");
    loadCatalogue();
    reading_.attach(handle());
    const auto noteLogPages = [](void* pages, sqlite3*, const char*, int count) {
      *static_cast<int*>(pages) = count;
      return SQLITE_OK;
    };
    sqlite3_wal_hook(handle(), noteLogPages, &logPages_);
  } catch (const ProviderError& error) {
    if (error.description().find(file) != std::string::npos) throw;
    throw ProviderError(error.number(), "The database '" + file + "' cannot be opened. " + error.description());
  }
}

SqliteStore::~SqliteStore() = default;

std::int64_t SqliteStore::runChange(sqlite3_stmt* change) {
  reading_.begin();
  int code = sqlite3_step(change);
  if ((code & 0xFF) == SQLITE_BUSY) {
    // Somebody stores something, or has done so after the look at the log: once more on the newest
    // state. Inside a read transaction SQLite would not wait for the other.
    sqlite3_reset(change);
    reading_.end();
    code = sqlite3_step(change);
  }
  sqlite3_reset(change);
  if (code != SQLITE_DONE && code != SQLITE_ROW) {
    const ProviderError error = engineError(handle(), code);
    reading_.end();
    throw error;
  }
  reading_.afterOwnCommit();
  const std::int64_t rows = sqlite3_changes64(handle());
  checkpointWhenDue();
  return rows;
}

/// The log is moved into the file only while nobody reads from it, so the read
/// transaction is given up for that moment. Another program that reads makes the
/// attempt fail; the next one comes after as many pages again.
void SqliteStore::checkpointWhenDue() {
  constexpr int kCheckpointPages = 8192;
  if (logPages_ < pagesAtCheckpoint_) pagesAtCheckpoint_ = 0;
  if (logPages_ - pagesAtCheckpoint_ < kCheckpointPages) return;
  pagesAtCheckpoint_ = logPages_;
  reading_.end();
  sqlite3_wal_checkpoint_v2(handle(), "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

std::string SqliteStore::meta(const std::string& name) {
  const StatementHandle statement = prepare(handle(), R"(SELECT value FROM "orva:meta" WHERE name = ?)");
  bindText(statement.get(), 1, name);
  const int code = sqlite3_step(statement.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) throwEngineError(handle(), code);
  return code == SQLITE_ROW ? readColumn(statement.get(), 0, sql::SqlType::kText).toText() : std::string();
}

void SqliteStore::checkPassword(const std::string& password) {
  if (passwordFits(password, meta("password"))) return;
  throw ProviderError(provider_number::kLoginFailed, "The database password is not valid.");
}

bool SqliteStore::refreshCatalogue() {
  if (meta("generation") == generation_) return false;
  loadCatalogue();
  return true;
}

void SqliteStore::loadCatalogue() {
  auto loaded = std::make_shared<Catalogue>();
  generation_ = meta("generation");
  const StatementHandle columns = prepare(
      handle(), R"(SELECT owner, name, type, size, required, empty, preset FROM "orva:column" ORDER BY owner, place)");
  TableDef table;
  const auto textAt = [](const StatementHandle& rows, int at) {
    return readColumn(rows.get(), at, sql::SqlType::kText).toText();
  };
  while (sqlite3_step(columns.get()) == SQLITE_ROW) {
    const std::string owner = textAt(columns, 0);
    if (owner != table.name) {
      if (!table.columns.empty()) loaded->add(std::move(table));
      table = TableDef{owner, {}, {}};
    }
    ColumnDef column;
    column.name = textAt(columns, 1);
    column.type = static_cast<ColumnType>(sqlite3_column_int(columns.get(), 2));
    column.size = sqlite3_column_int(columns.get(), 3);
    column.allowZeroLength = sqlite3_column_int(columns.get(), 5) != 0;
    const Value preset = readColumn(columns.get(), 6, sql::SqlType::kText);
    column.defaultValue = convertForColumn(column, preset, DateOrder::kDayMonthYear);
    column.required = sqlite3_column_int(columns.get(), 4) != 0;
    table.columns.push_back(std::move(column));
  }
  if (!table.columns.empty()) loaded->add(std::move(table));
  const StatementHandle indexes =
      prepare(handle(), R"(SELECT owner, name, columns, uniq, prim FROM "orva:index" ORDER BY owner, name)");
  while (sqlite3_step(indexes.get()) == SQLITE_ROW) {
    TableDef* const owner = loaded->find(textAt(indexes, 0));
    if (!owner) continue;
    owner->indexes.push_back({textAt(indexes, 1), splitNames(textAt(indexes, 2)),
                              sqlite3_column_int(indexes.get(), 3) != 0, sqlite3_column_int(indexes.get(), 4) != 0});
  }
  catalogue_ = std::move(loaded);
}

void SqliteStore::writeColumns(const TableDef& table) {
  runWith(handle(), R"(DELETE FROM "orva:column" WHERE owner = ?)", {Value(table.name)});
  std::int64_t place = 0;
  for (const ColumnDef& column : table.columns) {
    const Value preset = column.defaultValue.isNull() ? Value() : Value(column.defaultValue.toText());
    runWith(handle(), R"(INSERT INTO "orva:column" VALUES (?, ?, ?, ?, ?, ?, ?, ?))",
            {Value(table.name), Value(place++), Value(column.name), Value(static_cast<int>(column.type)),
             Value(column.size), Value(column.required), Value(column.allowZeroLength), preset});
  }
}

void SqliteStore::writeIndex(const TableDef& table, const IndexDef& index) {
  runWith(handle(), R"(INSERT INTO "orva:index" VALUES (?, ?, ?, ?, ?))",
          {Value(table.name), Value(index.name), Value(joinNames(index.columns)), Value(index.unique),
           Value(index.primary)});
}

/// A yes/no column that is added to rows shows no in them; every other one null.
std::string SqliteStore::columnSql(const ColumnDef& column) const {
  const std::string name = quoteName(column.name);
  if (column.isText()) return name + " TEXT COLLATE " + collation_;
  if (column.type == ColumnType::kDouble) return name + " REAL";
  const bool startsAsNo = column.type == ColumnType::kBoolean && collation_ == kAccessCollation;
  return name + (startsAsNo ? " INTEGER DEFAULT 0" : " INTEGER");
}

void SqliteStore::makeIndex(const TableDef& table, const IndexDef& index) {
  std::string columns;
  for (const std::string& column : index.columns) columns += (columns.empty() ? "" : ", ") + quoteName(column);
  run(handle(), std::string(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + physicalIndex(table, index) +
                    " ON " + quoteName(table.name) + " (" + columns + ")");
}

void SqliteStore::createTable(const TableDef& table) {
  Change change(*this);
  std::string columns;
  for (const ColumnDef& column : table.columns) columns += ", " + columnSql(column);
  run(handle(), "CREATE TABLE " + quoteName(table.name) + " (" + sql::kRowKey + " INTEGER PRIMARY KEY" + columns + ")");
  writeColumns(table);
  for (const IndexDef& index : table.indexes) {
    makeIndex(table, index);
    writeIndex(table, index);
  }
  change.commit();
}

void SqliteStore::dropTable(const TableDef& table) {
  Change change(*this);
  run(handle(), "DROP TABLE " + quoteName(table.name));
  runWith(handle(), R"(DELETE FROM "orva:column" WHERE owner = ?)", {Value(table.name)});
  runWith(handle(), R"(DELETE FROM "orva:index" WHERE owner = ?)", {Value(table.name)});
  lookups_.clear();
  change.commit();
}

void SqliteStore::addColumns(const TableDef& table, const std::vector<ColumnDef>& columns) {
  Change change(*this);
  TableDef changed = table;
  for (const ColumnDef& column : columns) {
    run(handle(), "ALTER TABLE " + quoteName(table.name) + " ADD COLUMN " + columnSql(column));
    changed.columns.push_back(column);
  }
  writeColumns(changed);
  change.commit();
}

void SqliteStore::alterColumn(const TableDef& table, std::size_t column, const ColumnDef& changed) {
  const ColumnDef& before = table.columns[column];
  Change change(*this);
  const bool sameForm = before.isText() && changed.isText();
  if (sameForm && changed.size > 0 && (before.size == 0 || changed.size < before.size)) {
    const std::string tooLong = "SELECT EXISTS (SELECT 1 FROM " + quoteName(table.name) + " WHERE orva_len(" +
                                quoteName(before.name) + ") > " + std::to_string(changed.size) + ")";
    if (numberFrom(handle(), tooLong) != 0) {
      throw ProviderError(provider_number::kErrorsOccurred, "The field '" + before.name + "' holds longer texts than " +
                                                                std::to_string(changed.size) + ".");
    }
  }
  if (!sameForm && before.type != changed.type) convertColumn(table, before, changed);
  TableDef altered = table;
  altered.columns[column] = changed;
  writeColumns(altered);
  change.commit();
}

/// Builds the column anew under a name of its own and gives it the old name;
/// the order of the columns is the catalogue's, not the file's.
void SqliteStore::convertColumn(const TableDef& table, const ColumnDef& from, const ColumnDef& to) {
  dropLookups(table);
  const std::string name = quoteName(table.name);
  ColumnDef fresh = to;
  fresh.name = "orva:new";
  const auto usesColumn = [&from](const IndexDef& index) {
    for (const std::string& column : index.columns) {
      if (equalsNoCase(column, from.name)) return true;
    }
    return false;
  };
  for (const IndexDef& index : table.indexes) {
    if (usesColumn(index)) run(handle(), "DROP INDEX " + physicalIndex(table, index));
  }
  run(handle(), "ALTER TABLE " + name + " ADD COLUMN " + columnSql(fresh));
  try {
    run(handle(), "UPDATE " + name + " SET \"orva:new\" = orva_put(" + quoteName(from.name) + ", " +
                      std::to_string(static_cast<int>(sql::sqlTypeOf(from.type))) + ", " +
                      std::to_string(static_cast<int>(to.type)) + ", " + std::to_string(to.size) + ", " +
                      sqlQuote(to.name) + ", 2)");
  } catch (const ProviderError& error) {
    throw ProviderError(provider_number::kErrorsOccurred, "The type cannot be changed. " + error.description());
  }
  run(handle(), "ALTER TABLE " + name + " DROP COLUMN " + quoteName(from.name));
  run(handle(), "ALTER TABLE " + name + " RENAME COLUMN \"orva:new\" TO " + quoteName(to.name));
  for (const IndexDef& index : table.indexes) {
    if (usesColumn(index)) makeIndex(table, index);
  }
}

void SqliteStore::dropColumn(const TableDef& table, std::size_t column) {
  Change change(*this);
  dropLookups(table);
  run(handle(), "ALTER TABLE " + quoteName(table.name) + " DROP COLUMN " + quoteName(table.columns[column].name));
  TableDef changed = table;
  changed.columns.erase(changed.columns.begin() + static_cast<std::ptrdiff_t>(column));
  writeColumns(changed);
  change.commit();
}

void SqliteStore::createIndex(const TableDef& table, const IndexDef& index) {
  Change change(*this);
  TableDef changed = table;
  for (const std::string& name : index.columns) {
    if (!index.primary) break;
    ColumnDef& column = changed.columns[static_cast<std::size_t>(table.find(name))];
    column.required = true;
    const std::string nulls =
        "SELECT EXISTS (SELECT 1 FROM " + quoteName(table.name) + " WHERE " + quoteName(column.name) + " IS NULL)";
    if (numberFrom(handle(), nulls) != 0) failFile("The field '" + column.name + "' of a primary key has empty rows.");
  }
  makeIndex(table, index);
  writeIndex(table, index);
  writeColumns(changed);
  change.commit();
}

void SqliteStore::dropIndex(const TableDef& table, const IndexDef& index) {
  Change change(*this);
  run(handle(), "DROP INDEX " + physicalIndex(table, index));
  runWith(handle(), R"(DELETE FROM "orva:index" WHERE owner = ? AND name = ?)", {Value(table.name), Value(index.name)});
  change.commit();
}

void SqliteStore::dropLookups(const TableDef& table) {
  std::vector<std::string> names;
  const StatementHandle rows =
      prepare(handle(), "SELECT name FROM sqlite_schema WHERE type = 'index' AND tbl_name = ? AND name LIKE 'auto%:%'");
  bindText(rows.get(), 1, table.name);
  while (sqlite3_step(rows.get()) == SQLITE_ROW) {
    names.push_back(readColumn(rows.get(), 0, sql::SqlType::kText).toText());
  }
  sqlite3_reset(rows.get());
  for (const std::string& name : names) run(handle(), "DROP INDEX " + quoteName(name));
  lookups_.clear();
}

void SqliteStore::ensureLookupWhere(const TableDef& table, const std::vector<std::string>& parts,
                                    const std::string& condition) {
  std::string columns;
  for (const std::string& part : parts) {
    columns += (columns.empty() ? "" : ", ") + part + (givesText(part) ? " COLLATE " + collation_ : std::string());
  }
  const std::string rows = condition.empty() ? std::string() : " WHERE " + condition;
  const std::string name = kLookupPrefix + table.name + ":" + columns + rows;
  if (!lookups_.insert(name).second) return;
  const std::string place = quoteName(name) + " ON " + quoteName(table.name) + " (" + columns + ")" + rows;
  sqlite3_exec(handle(), ("CREATE INDEX IF NOT EXISTS " + place).c_str(), nullptr, nullptr, nullptr);
}

}  // namespace orva::embedded
