#include "platform/embedded/sqlite_handle.h"

#include <charconv>
#include <variant>

#include "platform/values/text.h"

namespace orva::embedded {
namespace {

constexpr char kTag = '\x01';

struct EngineError {
  int code;
  std::int32_t number;
  const char* text;
};

constexpr EngineError kEngineErrors[] = {
    {SQLITE_BUSY, provider_number::kUnspecified, "The database is locked by another program."},
    {SQLITE_LOCKED, provider_number::kUnspecified, "The database is locked by another program."},
    {SQLITE_READONLY, provider_number::kUnspecified, "The database or its folder is read-only."},
    {SQLITE_FULL, provider_number::kUnspecified, "The disk is full."},
    {SQLITE_CORRUPT, provider_number::kUnspecified, "The database file is damaged."},
    {SQLITE_NOTADB, provider_number::kUnspecified, "The file is not a company database."},
    {SQLITE_CANTOPEN, provider_number::kUnspecified, "The database file cannot be opened."},
    {SQLITE_NOMEM, provider_number::kUnspecified, "There is not enough memory for the statement."},
    {SQLITE_TOOBIG, provider_number::kDataOverflow, "A value or the statement is too long."},
};

std::string duplicateText(const char* message) {
  std::string text = "Duplicate value in the primary key or a unique index";
  const std::string_view view = message;
  const std::size_t colon = view.find(": ");
  const std::size_t point = view.find('.');
  if (colon != std::string_view::npos && point != std::string_view::npos && point > colon) {
    text += " of table '" + std::string(view.substr(colon + 2, point - colon - 2)) + "'";
  }
  return text + ".";
}

struct Binder {
  sqlite3_stmt* statement;
  int at;
  bool keep;
  void operator()(std::monostate) const { sqlite3_bind_null(statement, at); }
  void operator()(bool value) const { sqlite3_bind_int(statement, at, value ? 1 : 0); }
  void operator()(std::int64_t value) const { sqlite3_bind_int64(statement, at, value); }
  void operator()(double value) const { sqlite3_bind_double(statement, at, value); }
  void operator()(Currency value) const { sqlite3_bind_int64(statement, at, value.units()); }
  void operator()(Date value) const { sqlite3_bind_int(statement, at, value.dayNumber()); }
  void operator()(const std::string& value) const { bindText(statement, at, value, keep); }
};

std::string_view textOf(sqlite3_stmt* statement, int at) {
  const auto* text = static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(statement, at)));
  return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, at)))
              : std::string_view();
}

Value untypedColumn(sqlite3_stmt* statement, int at) {
  switch (sqlite3_column_type(statement, at)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_column_int64(statement, at)};
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement, at);
    default:
      return textOf(statement, at);
  }
}

}  // namespace

ProviderError engineError(sqlite3* database, int code) {
  const char* message = sqlite3_errmsg(database);
  if (message[0] == kTag) {
    std::int32_t number = 0;
    const std::string_view text = message + 1;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    return ProviderError(number, std::string(parsed.ptr + 1));
  }
  if ((code & 0xFF) == SQLITE_CONSTRAINT) {
    return ProviderError(provider_number::kUnspecified, duplicateText(message));
  }
  for (const EngineError& error : kEngineErrors) {
    if (error.code == (code & 0xFF)) return ProviderError(error.number, error.text);
  }
  return ProviderError(provider_number::kUnspecified, std::string("The statement failed: ") + message + ".");
}

void throwEngineError(sqlite3* database, int code) { throw engineError(database, code); }

StatementHandle prepare(sqlite3* database, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                      &statement, nullptr);
  if (code != SQLITE_OK) throwEngineError(database, code);
  return StatementHandle(statement);
}

void run(sqlite3* database, const std::string& sql) {
  const int code = sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) throwEngineError(database, code);
}

void bindText(sqlite3_stmt* statement, int at, std::string_view text, bool keep) {
  // A null pointer would bind a null.
  const char* data = text.data() ? text.data() : "";
  sqlite3_bind_text(statement, at, data, static_cast<int>(text.size()), keep ? SQLITE_STATIC : SQLITE_TRANSIENT);
}

void bindValue(sqlite3_stmt* statement, int at, const Value& value, bool keep) {
  std::visit(Binder{statement, at, keep}, value.storage());
}

Value readColumn(sqlite3_stmt* statement, int at, sql::SqlType type) {
  if (sqlite3_column_type(statement, at) == SQLITE_NULL) return {};
  switch (type) {
    case sql::SqlType::kBoolean:
      return sqlite3_column_int(statement, at) != 0;
    case sql::SqlType::kInteger:
      return std::int64_t{sqlite3_column_int64(statement, at)};
    case sql::SqlType::kDouble:
      return sqlite3_column_double(statement, at);
    case sql::SqlType::kCurrency:
      return Currency::fromUnits(sqlite3_column_int64(statement, at));
    case sql::SqlType::kDate:
      return Date::fromDayNumber(sqlite3_column_int(statement, at));
    case sql::SqlType::kText:
      return textOf(statement, at);
    case sql::SqlType::kNull:
      return untypedColumn(statement, at);
  }
  return {};
}

std::string quoteName(std::string_view name) { return "\"" + replaceAll(name, "\"", "\"\"") + "\""; }

std::string taggedError(const ProviderError& error) {
  return std::string(1, kTag) + std::to_string(error.number()) + "|" + error.description();
}

}  // namespace orva::embedded
