#include "platform/embedded/prepared.h"

#include <cstring>
#include <utility>

#include "platform/embedded/conversion.h"
#include "platform/embedded/literal.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using sql::BindAs;

constexpr std::size_t kFewColumns = 4;

std::size_t hashName(std::string_view name) {
  std::size_t hash = 14695981039346656037u;
  for (char c : name) {
    if (static_cast<unsigned char>(c) >= 0x80) continue;
    hash = (hash ^ static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c)) * 1099511628211u;
  }
  return hash ^ hash >> 32;
}

}  // namespace

void NameIndex::build(const std::vector<sql::ResultColumn>& columns) {
  std::size_t size = 8;
  while (size < columns.size() * 2) size *= 2;
  mask_ = size - 1;
  slots_.assign(size, -1);
  for (const sql::ResultColumn& column : columns) {
    names_.push_back(column.name);
    if (find(column.name) >= 0) continue;
    std::size_t slot = hashName(column.name) & mask_;
    while (slots_[slot] >= 0) slot = (slot + 1) & mask_;
    slots_[slot] = static_cast<int>(names_.size()) - 1;
  }
}

int NameIndex::find(std::string_view name) const {
  for (std::size_t slot = hashName(name) & mask_; slots_[slot] >= 0; slot = (slot + 1) & mask_) {
    const std::string& candidate = names_[static_cast<std::size_t>(slots_[slot])];
    if (candidate.size() == name.size() && (candidate == name || equalsNoCase(candidate, name))) return slots_[slot];
  }
  return -1;
}

Prepared::Prepared(sqlite3* database, std::shared_ptr<const Catalogue> catalogue, sql::Translation translation,
                   SqlDialect dialect)
    : database_(database), catalogue_(std::move(catalogue)), translation_(std::move(translation)), dialect_(dialect) {
  names_.build(translation_.columns);
  places_.assign(translation_.columns.size(), -1);
  if (!translation_.keyed) {
    statement_ = prepare(database_, translation_.sql);
    return;
  }
  for (std::size_t i = 0; i < translation_.columns.size() && translation_.columns.size() <= kFewColumns; ++i) {
    askFor(static_cast<int>(i));
  }
  prepareQuery();
}

bool Prepared::fits(const StatementText& text) const {
  for (const sql::Assumption& assumption : translation_.assumptions) {
    if ((text.inside(assumption.literal) == assumption.text) != assumption.equal) return false;
  }
  return true;
}

void Prepared::prepareQuery() {
  std::string sql = std::string("SELECT ") + sql::kRowKey;
  for (int column : asked_) {
    const int of = translation_.columnOf[static_cast<std::size_t>(column)];
    sql += ", " + quoteName(translation_.table->columns[static_cast<std::size_t>(of)].name);
  }
  statement_ = prepare(database_, sql + translation_.tail + translation_.ordering);
  selected_ = asked_.size();
}

void Prepared::bindLiteral(sqlite3_stmt* statement, int at, const sql::Binding& binding,
                           const StatementText& text) const {
  const sql::Literal& literal = (*text.literals)[static_cast<std::size_t>(binding.literal)];
  const std::string_view inside = text.inside(binding.literal);
  if (binding.as == BindAs::kText && literal.kind == sql::TokenKind::kText) {
    if (!std::memchr(inside.data(), literal.quote, inside.size())) return bindText(statement, at, inside, true);
    return bindText(statement, at, sql::unquoted(inside, literal.quote));
  }
  bindValue(statement, at, literalValue(binding, literal, inside, dialect_));
}

void Prepared::bindAll(sqlite3_stmt* statement, const StatementText& text) const {
  int at = 0;
  for (const sql::Binding& binding : translation_.bindings) bindLiteral(statement, ++at, binding, text);
}

bool Prepared::start(const StatementText& text) {
  if (selected_ < asked_.size()) {
    prepareQuery();
    preparedAnew_ = true;
  }
  bindAll(statement_.get(), text);
  return step();
}

bool Prepared::step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  sqlite3_reset(statement_.get());
  if (code != SQLITE_DONE) throwEngineError(database_, code);
  return false;
}

sqlite3_stmt* Prepared::change(const StatementText& text) {
  bindAll(statement_.get(), text);
  return statement_.get();
}

std::int64_t Prepared::count(const StatementText& text) {
  if (!count_) {
    count_ = prepare(database_, translation_.keyed ? "SELECT count(*)" + translation_.tail
                                                   : "SELECT count(*) FROM (" + translation_.sql + ")");
  }
  bindAll(count_.get(), text);
  const int code = sqlite3_step(count_.get());
  const std::int64_t rows = code == SQLITE_ROW ? sqlite3_column_int64(count_.get(), 0) : 0;
  sqlite3_reset(count_.get());
  if (code != SQLITE_ROW) throwEngineError(database_, code);
  return rows;
}

bool Prepared::wasPreparedAnew() {
  const bool byEngine = sqlite3_stmt_status(statement_.get(), SQLITE_STMTSTATUS_REPREPARE, 1) > 0;
  return std::exchange(preparedAnew_, false) || byEngine;
}

int Prepared::place(int column) const {
  if (!translation_.keyed) return column;
  const int place = places_[static_cast<std::size_t>(column)];
  return place >= 0 && static_cast<std::size_t>(place) < selected_ ? place + 1 : -1;
}

Value Prepared::at(int place, int column) const {
  return readColumn(statement_.get(), place, translation_.columns[static_cast<std::size_t>(column)].type);
}

void Prepared::askFor(int column) {
  int& place = places_[static_cast<std::size_t>(column)];
  if (place >= 0) return;
  place = static_cast<int>(asked_.size());
  asked_.push_back(column);
}

sqlite3_stmt* Prepared::insertRow() {
  if (insert_) return insert_.get();
  std::string names;
  std::string values;
  for (const ColumnDef& column : translation_.table->columns) {
    names += (names.empty() ? "" : ", ") + quoteName(column.name);
    values += values.empty() ? "?" : ", ?";
  }
  insert_ = prepare(database_,
                    "INSERT INTO " + quoteName(translation_.table->name) + " (" + names + ") VALUES (" + values + ")");
  return insert_.get();
}

StatementHandle Prepared::updateRow(const std::vector<int>& columns) const {
  std::string sql;
  for (int column : columns) {
    sql += (sql.empty() ? "" : ", ") + quoteName(translation_.table->columns[static_cast<std::size_t>(column)].name) +
           " = ?";
  }
  return prepare(database_,
                 "UPDATE " + quoteName(translation_.table->name) + " SET " + sql + " WHERE " + sql::kRowKey + " = ?");
}

bool Prepared::readRow(std::int64_t key, std::vector<Value>& row) {
  if (!reader_) {
    std::string columns;
    for (int of : translation_.columnOf) {
      columns +=
          (columns.empty() ? "" : ", ") + quoteName(translation_.table->columns[static_cast<std::size_t>(of)].name);
    }
    reader_ = prepare(database_, "SELECT " + columns + " FROM " + quoteName(translation_.table->name) + " WHERE " +
                                     sql::kRowKey + " = ?");
  }
  sqlite3_bind_int64(reader_.get(), 1, key);
  const int code = sqlite3_step(reader_.get());
  row.clear();
  for (std::size_t i = 0; code == SQLITE_ROW && i < translation_.columns.size(); ++i) {
    row.push_back(readColumn(reader_.get(), static_cast<int>(i), translation_.columns[i].type));
  }
  sqlite3_reset(reader_.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) throwEngineError(database_, code);
  return code == SQLITE_ROW;
}

std::int64_t Prepared::nextKey(std::int64_t key) {
  if (!next_) {
    next_ = prepare(database_, std::string("SELECT ") + sql::kRowKey + " FROM " + quoteName(translation_.table->name) +
                                   " WHERE " + sql::kRowKey + " > ? ORDER BY " + sql::kRowKey + " LIMIT 1");
  }
  sqlite3_bind_int64(next_.get(), 1, key);
  const int code = sqlite3_step(next_.get());
  const std::int64_t next = code == SQLITE_ROW ? sqlite3_column_int64(next_.get(), 0) : 0;
  sqlite3_reset(next_.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) throwEngineError(database_, code);
  return next;
}

std::string Prepared::plan() const {
  const StatementHandle rows = prepare(database_, std::string("EXPLAIN QUERY PLAN ") + sqlite3_sql(statement_.get()));
  std::string text;
  while (sqlite3_step(rows.get()) == SQLITE_ROW) {
    text += readColumn(rows.get(), 3, sql::SqlType::kText).toText() + "\n";
  }
  return text;
}

}  // namespace orva::embedded
