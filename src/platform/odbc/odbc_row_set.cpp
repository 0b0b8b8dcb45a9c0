#include "platform/odbc/odbc_row_set.h"

#include <algorithm>

#include "platform/embedded/conversion.h"
#include "platform/values/text.h"

namespace orva::odbc {
namespace {

// Numbers of the data-access library for faults of the caller.
constexpr std::int32_t kNoSuchField = 3265;
constexpr std::int32_t kNotUpdatable = 3251;
/// The row was changed or deleted by another user since it was read.
constexpr auto kChangedByAnother = static_cast<std::int32_t>(0x80040E38);

/// Rows read at once: enough that nearly every look-up ends in one go.
constexpr std::size_t kReadAhead = 64;
/// Whole rows that a set put aside keeps; behind them it keeps keys.
constexpr std::size_t kMostWholeRows = 2000;

[[noreturn]] void failNoRow() { throw ProviderError(provider_number::kNoCurrentRecord, "There is no current record."); }

std::string quoted(const Column& column) { return "[" + replaceAll(column.definition.name, "]", "]]") + "]"; }

}  // namespace

OdbcRowSet::OdbcRowSet(OdbcSession& session, std::string_view sql, CursorKind cursor, LockKind lock)
    : session_(&session),
      shape_(cursor == CursorKind::kFirstRow ? firstRowOf(sql) : std::string(sql)),
      asksAnew_(cursor == CursorKind::kFirstRow),
      isChangeable_(lock != LockKind::kReadOnly && !shape_.table().empty()) {
  session_->enter(this);
  try {
    if (isChangeable_ || (cursor == CursorKind::kForwardOnly && !shape_.table().empty())) {
      layout_ = session_->layoutOf(shape_);
      columns_ = layout_->columns;
    } else {
      startOrRecall();
    }
  } catch (...) {
    session_->leave(this);
    throw;
  }
}

OdbcRowSet::~OdbcRowSet() {
  if (!session_) return;
  if (statement_) statement_->close();
  session_->leave(this);
}

void OdbcRowSet::close() {
  if (statement_) statement_->close();
  statement_.reset();
  session_ = nullptr;
}

void OdbcRowSet::checkOpen() const {
  if (!session_) throw ProviderError(provider_number::kObjectClosed, "The record set is closed.");
}

void OdbcRowSet::reset() {
  if (statement_) std::exchange(statement_, nullptr)->close();
  rows_.clear();
  fault_.reset();
  passed_ = 0;
  onAddedRow_ = false;
  isBeginning_ = false;
  editing_ = Editing::kNone;
  pending_.clear();
}

/// Asks the server.
void OdbcRowSet::start() {
  reset();
  run(lifted(shape_.with(criterion_)));
}

void OdbcRowSet::run(const BoundText& text) {
  statement_ = session_->query(text);
  started_ = true;
  session_->takeOver(this);
  if (!layout_) columns_ = statement_->columns();
  readAhead(kReadAhead);
}

/// Asks the server unless the question was answered in the same scope of look-ups. That there
/// is no row to change is asked each time: what is not there may be made.
void OdbcRowSet::startOrRecall() {
  if (asksAnew_) return start();
  reset();
  const BoundText text = lifted(shape_.with(criterion_));
  const std::string question = questionOf(text);
  const Answer* const answer = session_->answers().find(question);
  if (!answer) {
    run(text);
    if (layout_ && rows_.empty()) return;
    const bool isComplete = !statement_;
    Answer given{columns_, {rows_.begin(), isComplete ? rows_.end() : rows_.begin() + 1}, isComplete};
    session_->answers().remember(question, std::move(given));
    return;
  }
  columns_ = answer->columns;
  rows_.assign(answer->rows.begin(), answer->rows.end());
  isBeginning_ = !answer->isComplete;
  started_ = true;
}

void OdbcRowSet::readAhead(std::size_t rows) {
  while (statement_ && rows > 0) {
    KeptRow next;
    bool found = false;
    try {
      found = statement_->givesRows() && statement_->fetch(next.cells);
    } catch (const ProviderError& error) {
      fault_ = error;
      statement_.reset();
      session_->takeOver(nullptr);
      throw;
    }
    if (!found) {
      statement_.reset();
      session_->takeOver(nullptr);
      return;
    }
    next.isWhole = !layout_ || !layout_->hasPrimaryKey || rows_.size() < kMostWholeRows;
    if (!next.isWhole) next.cells = keyOf(next.cells);
    rows_.push_back(std::make_shared<const KeptRow>(std::move(next)));
    --rows;
  }
}

void OdbcRowSet::putAside() { readAhead(static_cast<std::size_t>(-1)); }

void OdbcRowSet::ensureStarted() {
  checkOpen();
  if (!started_) start();
}

bool OdbcRowSet::eof() {
  checkOpen();
  if (editing_ == Editing::kAdding) return false;
  ensureStarted();
  // A set that could not be read to its end must not look like one that ends here.
  if (rows_.empty() && fault_) throw ProviderError(*fault_);
  return rows_.empty();
}

std::int64_t OdbcRowSet::recordCount() {
  checkOpen();
  if (started_ && !statement_ && !isBeginning_) return passed_ + static_cast<std::int64_t>(rows_.size());
  const auto count = session_->query(lifted(shape_.counting(criterion_)));
  Row row;
  const bool found = count->fetch(row);
  count->close();
  return found ? row[0].value.toInteger().value_or(0) : 0;
}

void OdbcRowSet::moveFirst() {
  checkOpen();
  if (editing_ != Editing::kNone) update();
  start();
}

void OdbcRowSet::requery() {
  checkOpen();
  start();
}

void OdbcRowSet::filter(std::string_view criterion) {
  checkOpen();
  criterion_ = criterion;
  startOrRecall();
}

void OdbcRowSet::moveNext() {
  checkOpen();
  if (editing_ != Editing::kNone) update();
  ensureStarted();
  if (rows_.empty()) failNoRow();
  // A new row stands behind all others.
  if (std::exchange(onAddedRow_, false)) {
    if (statement_) std::exchange(statement_, nullptr)->close();
    rows_.clear();
    return;
  }
  // Who goes on behind the beginning gets the rows of now.
  if (isBeginning_) start();
  if (!rows_.empty()) rows_.pop_front();
  ++passed_;
  if (rows_.empty()) readAhead(kReadAhead);
  // Rows that have been deleted meanwhile are passed over.
  while (!rows_.empty() && !rows_.front()->isWhole && !loadCurrent()) rows_.pop_front();
}

std::vector<FieldInfo> OdbcRowSet::fields() const {
  checkOpen();
  std::vector<FieldInfo> all;
  for (const Column& column : columns().all()) {
    all.push_back({column.definition.name, column.fieldType, column.definition.size});
  }
  return all;
}

int OdbcRowSet::column(std::string_view field) const {
  checkOpen();
  const int place = columns().find(field);
  if (place < 0) throw ProviderError(kNoSuchField, "There is no field '" + std::string(field) + "' in the record set.");
  return place;
}

const Value* OdbcRowSet::pendingValue(int column) const {
  const auto found = std::ranges::find(pending_, column, &std::pair<int, Value>::first);
  return found == pending_.end() ? nullptr : &found->second;
}

Value OdbcRowSet::get(std::string_view field) {
  const int place = column(field);
  if (const Value* value = pendingValue(place)) return *value;
  if (editing_ == Editing::kAdding) return {};
  ensureStarted();
  if (rows_.empty()) failNoRow();
  const KeptRow& current = *rows_.front();
  if (!current.known.empty() && !current.known[static_cast<std::size_t>(place)]) return addedValue(place);
  return current.cells[static_cast<std::size_t>(place)].value;
}

/// What the server gave a column of the new row that was not set.
Value OdbcRowSet::addedValue(int column) {
  const KeptRow& added = *rows_.front();
  const bool keyIsSet = layout_->hasPrimaryKey && std::ranges::all_of(layout_->key, [&](int place) {
                          return added.known[static_cast<std::size_t>(place)];
                        });
  if (keyIsSet) {
    const auto rows = rowsWithKey(keyOf(added.cells));
    if (rows.size() == 1) rows_.front() = rows.front();
  }
  return rows_.front()->cells[static_cast<std::size_t>(column)].value;
}

Row OdbcRowSet::keyOf(const Row& whole) const {
  Row key;
  for (const int place : layout_->key) key.push_back(whole[static_cast<std::size_t>(place)]);
  return key;
}

std::string OdbcRowSet::keyCondition(const Row& key, std::vector<Argument>& arguments) const {
  std::string text;
  for (std::size_t i = 0; i < key.size(); ++i) {
    const Column& part = columns().at(layout_->key[i]);
    text += (i == 0 ? "" : " and ") + quoted(part) + (key[i].value.isNull() ? " is null" : "=?");
    if (!key[i].value.isNull()) arguments.push_back({part.wire, key[i]});
  }
  return text;
}

KeptRows OdbcRowSet::rowsWithKey(const Row& key) {
  BoundText text;
  text.sql = shape_.where(keyCondition(key, text.arguments));
  const auto statement = session_->query(text);
  KeptRows rows;
  for (Row row; statement->fetch(row);) rows.push_back(std::make_shared<const KeptRow>(KeptRow{std::move(row)}));
  return rows;
}

/// False when the row is gone.
bool OdbcRowSet::loadCurrent() {
  const auto rows = rowsWithKey(rows_.front()->cells);
  if (rows.empty()) return false;
  rows_.front() = rows.front();
  return true;
}

void OdbcRowSet::checkChangeable() const {
  if (!isChangeable_) throw ProviderError(kNotUpdatable, "The record set cannot be changed.");
}

void OdbcRowSet::addNew() {
  checkOpen();
  if (editing_ != Editing::kNone) update();
  checkChangeable();
  editing_ = Editing::kAdding;
  pending_.clear();
}

void OdbcRowSet::set(std::string_view field, const Value& value) {
  const int place = column(field);
  checkChangeable();
  if (editing_ == Editing::kNone && eof()) failNoRow();
  const embedded::ColumnDef& definition = columns().at(place).definition;
  Value stored = embedded::convertForColumn(definition, value, embedded::DateOrder::kDayMonthYear);
  if (editing_ == Editing::kNone) editing_ = Editing::kChanging;
  const auto found = std::ranges::find(pending_, place, &std::pair<int, Value>::first);
  if (found != pending_.end()) {
    found->second = std::move(stored);
  } else {
    pending_.emplace_back(place, std::move(stored));
  }
}

void OdbcRowSet::update() {
  checkOpen();
  if (editing_ == Editing::kNone) return;
  // In the order of the table: rows with the same fields give the same statement.
  std::ranges::sort(pending_, {}, &std::pair<int, Value>::first);
  if (editing_ == Editing::kAdding) {
    storeNew();
  } else {
    storeChanges();
  }
  editing_ = Editing::kNone;
  pending_.clear();
}

void OdbcRowSet::storeNew() {
  BoundText text{"insert into " + shape_.table()};
  std::string names;
  std::string values;
  KeptRow added{
      .cells = Row(columns().all().size()), .isWhole = true, .known = std::vector<bool>(columns().all().size())};
  for (const auto& [place, value] : pending_) {
    const Column& column = columns().at(place);
    names += (names.empty() ? "" : ", ") + quoted(column);
    values += values.empty() ? "?" : ", ?";
    text.arguments.push_back({column.wire, {value}});
    added.cells[static_cast<std::size_t>(place)] = {value};
    added.known[static_cast<std::size_t>(place)] = true;
  }
  text.sql += names.empty() ? " default values" : " (" + names + ") values (" + values + ")";
  session_->change(text);
  if (statement_) std::exchange(statement_, nullptr)->close();
  rows_.clear();
  rows_.push_back(std::make_shared<const KeptRow>(std::move(added)));
  started_ = true;
  onAddedRow_ = true;
}

/// Without a primary key a row is told by its values: equal rows cannot be told apart.
void OdbcRowSet::checkOnlyRow(const Row& key) {
  if (layout_->hasPrimaryKey || rowsWithKey(key).size() < 2) return;
  throw ProviderError(provider_number::kUnspecified,
                      "The record cannot be changed: the table '" + shape_.tableName() +
                          "' has no primary key and holds the same record more than once.");
}

void OdbcRowSet::storeChanges() {
  if (rows_.empty()) failNoRow();
  if (!rows_.front()->known.empty()) addedValue(0);
  KeptRow current = *rows_.front();
  const Row key = keyOf(current.cells);
  BoundText text{"update " + shape_.table() + " set "};
  for (const auto& [place, value] : pending_) {
    text.sql += (text.arguments.empty() ? "" : ", ") + quoted(columns().at(place)) + "=?";
    text.arguments.push_back({columns().at(place).wire, {value}});
  }
  text.sql += " where " + keyCondition(key, text.arguments);
  for (const auto& change : pending_) {
    const int place = change.first;
    const Column& column = columns().at(place);
    const Cell& before = current.cells[static_cast<std::size_t>(place)];
    if (!column.isComparable() || std::ranges::find(layout_->key, place) != layout_->key.end()) continue;
    text.sql += " and " + quoted(column) + (before.value.isNull() ? " is null" : "=?");
    if (!before.value.isNull()) text.arguments.push_back({column.wire, before});
  }
  checkOnlyRow(key);
  if (session_->change(text) == 0) {
    throw ProviderError(kChangedByAnother,
                        "The record cannot be stored: another user has changed or deleted it since it was read.");
  }
  for (const auto& [place, value] : pending_) current.cells[static_cast<std::size_t>(place)] = {value};
  rows_.front() = std::make_shared<const KeptRow>(std::move(current));
}

void OdbcRowSet::cancel() {
  checkOpen();
  editing_ = Editing::kNone;
  pending_.clear();
}

}  // namespace orva::odbc
