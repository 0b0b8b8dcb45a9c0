#include "platform/embedded/prepared.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>
#include <utility>

#include "platform/embedded/conversion.h"
#include "platform/embedded/literal.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using sql::BindAs;

constexpr std::size_t kFewColumns = 4;

constexpr std::uint64_t kOnes = 0x0101010101010101;

/// The capital letters of eight ASCII characters made small.
std::uint64_t lowered(std::uint64_t word) {
  const std::uint64_t fromA = word + kOnes * (0x80 - 'A');
  const std::uint64_t behindZ = word + kOnes * (0x7F - 'Z');
  return word | ((fromA & ~behindZ & kOnes * 0x80) >> 2);
}

std::uint64_t wordAt(const char* at) {
  std::uint64_t word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

/// All characters of a name that fills no word, some of them twice.
std::uint64_t shortWord(std::string_view name) {
  if (name.size() >= sizeof(std::uint32_t)) {
    std::uint32_t first;
    std::uint32_t last;
    std::memcpy(&first, name.data(), sizeof first);
    std::memcpy(&last, name.data() + name.size() - sizeof last, sizeof last);
    return first | std::uint64_t{last} << 32;
  }
  const auto at = [name](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(name[i])}; };
  return name.empty() ? 0 : at(0) | at(name.size() / 2) << 8 | at(name.size() - 1) << 16;
}

}  // namespace

FoldedName::FoldedName(std::string_view name) : size_(name.size()), isUsable_(name.size() <= sizeof words_) {
  if (!isUsable_) return;
  if (name.size() < sizeof(std::uint64_t)) {
    add(shortWord(name));
    return;
  }
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= name.size(); at += sizeof(std::uint64_t)) add(wordAt(name.data() + at));
  // The last word ends with the name and may begin within the one before.
  if (at < name.size()) add(wordAt(name.data() + name.size() - sizeof(std::uint64_t)));
}

void FoldedName::add(std::uint64_t word) {
  isUsable_ = isUsable_ && (word & kOnes * 0x80) == 0;
  const std::uint64_t folded = lowered(word);
  words_[count_++] = folded;
  hash_ = (hash_ ^ folded) * 0x9E3779B97F4A7C15u;
  hash_ ^= hash_ >> 32;
}

bool FoldedName::operator==(const FoldedName& other) const {
  return size_ == other.size_ && std::equal(words_.begin(), words_.begin() + count_, other.words_.begin());
}

void NameIndex::build(const std::vector<sql::ResultColumn>& columns) {
  std::size_t size = 8;
  while (size < columns.size() * 2) size *= 2;
  mask_ = size - 1;
  slots_.assign(size, -1);
  for (const sql::ResultColumn& column : columns) {
    const FoldedName folded(column.name);
    const bool isKnown = folded.isUsable() && findFolded(column.name) >= 0;
    names_.push_back(column.name);
    folded_.push_back(folded);
    if (!folded.isUsable() || isKnown) continue;
    std::size_t slot = folded.hash() & mask_;
    while (slots_[slot] >= 0) slot = (slot + 1) & mask_;
    slots_[slot] = static_cast<int>(names_.size()) - 1;
  }
}

int NameIndex::find(std::string_view name) const {
  constexpr std::size_t kAskedNames = 128;  // as many as seven bits tell apart
  if (asked_.empty()) asked_.resize(kAskedNames);
  const auto address = std::bit_cast<std::uintptr_t>(name.data());
  Asked& asked = asked_[address * 0x9E3779B97F4A7C15u >> 57];
  if (asked.at == name.data() && asked.text == name) return asked.column;
  const int column = findFolded(name);
  asked.at = name.data();
  asked.text = name;
  asked.column = column;
  return column;
}

int NameIndex::findFolded(std::string_view name) const {
  const FoldedName folded(name);
  if (!folded.isUsable()) {
    const auto same = [name](const std::string& candidate) { return equalsNoCase(candidate, name); };
    const auto found = std::find_if(names_.begin(), names_.end(), same);
    return found == names_.end() ? -1 : static_cast<int>(found - names_.begin());
  }
  for (std::size_t slot = folded.hash() & mask_; slots_[slot] >= 0; slot = (slot + 1) & mask_) {
    if (folded_[static_cast<std::size_t>(slots_[slot])] == folded) return slots_[slot];
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

std::string Prepared::selectOf(const std::vector<int>& columns) const {
  std::string sql = std::string("SELECT ") + sql::kRowKey;
  for (int column : columns) {
    const int of = translation_.columnOf[static_cast<std::size_t>(column)];
    sql += ", " + quoteName(translation_.table->columns[static_cast<std::size_t>(of)].name);
  }
  return sql;
}

void Prepared::prepareQuery() {
  statement_ = prepare(database_, selectOf(asked_) + translation_.tail + translation_.ordering);
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
  bindValue(statement, at, valueOf(binding, text));
}

Value Prepared::valueOf(const sql::Binding& binding, const StatementText& text) const {
  const sql::Literal& literal = (*text.literals)[static_cast<std::size_t>(binding.literal)];
  return literalValue(binding, literal, text.inside(binding.literal), dialect_);
}

std::vector<Value> Prepared::assignedValues(const StatementText& text) const {
  std::vector<Value> values;
  for (std::size_t i = 0; i < translation_.assigned.size(); ++i) {
    values.push_back(valueOf(translation_.bindings[i], text));
  }
  return values;
}

std::vector<std::int64_t> Prepared::keysToChange(const StatementText& text) {
  if (!keysToChange_) keysToChange_ = prepare(database_, std::string("SELECT ") + sql::kRowKey + translation_.tail);
  int at = static_cast<int>(translation_.assigned.size());
  for (std::size_t i = translation_.assigned.size(); i < translation_.bindings.size(); ++i) {
    bindLiteral(keysToChange_.get(), ++at, translation_.bindings[i], text);
  }
  std::vector<std::int64_t> keys;
  int code = sqlite3_step(keysToChange_.get());
  for (; code == SQLITE_ROW; code = sqlite3_step(keysToChange_.get())) {
    keys.push_back(sqlite3_column_int64(keysToChange_.get(), 0));
  }
  sqlite3_reset(keysToChange_.get());
  if (code != SQLITE_DONE) throwEngineError(database_, code);
  return keys;
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

bool Prepared::askFor(int column) {
  int& place = places_[static_cast<std::size_t>(column)];
  if (place >= 0) return true;
  place = static_cast<int>(asked_.size());
  asked_.push_back(column);
  return false;
}

/// A question about the identifier of each row never gets the answer of another row; but what comes later in a sheet
/// may be different, so it is tried again.
bool Prepared::isWorthKeeping() {
  constexpr std::size_t kTrial = 64;
  constexpr std::size_t kPause = 4096;
  if (tried_ < kTrial || used_ >= tried_ / 2) return true;
  if (++notKept_ < kPause) return false;
  tried_ = used_ = notKept_ = 0;
  return true;
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

bool Prepared::read(RowReader& reader, std::int64_t key, std::vector<Value>& values) const {
  if (!reader.statement) {
    reader.statement = prepare(database_, selectOf(reader.columns) + " FROM " + quoteName(translation_.table->name) +
                                              " WHERE " + sql::kRowKey + " = ?");
  }
  sqlite3_stmt* const statement = reader.statement.get();
  sqlite3_bind_int64(statement, 1, key);
  const int code = sqlite3_step(statement);
  values.clear();
  for (std::size_t i = 0; code == SQLITE_ROW && i < reader.columns.size(); ++i) {
    const sql::SqlType type = translation_.columns[static_cast<std::size_t>(reader.columns[i])].type;
    values.push_back(readColumn(statement, static_cast<int>(i) + 1, type));
  }
  sqlite3_reset(statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) throwEngineError(database_, code);
  return code == SQLITE_ROW;
}

bool Prepared::readRow(std::int64_t key, std::vector<Value>& row) {
  if (rowReader_.columns.size() < translation_.columns.size()) {
    rowReader_.columns.resize(translation_.columns.size());
    std::iota(rowReader_.columns.begin(), rowReader_.columns.end(), 0);
  }
  return read(rowReader_, key, row);
}

bool Prepared::readAsked(std::int64_t key, std::vector<Value>& asked) {
  if (askedReader_.columns.size() < asked_.size()) askedReader_ = {.statement = {}, .columns = asked_};
  return read(askedReader_, key, asked);
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
