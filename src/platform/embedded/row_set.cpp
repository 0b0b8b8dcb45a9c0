#include "platform/embedded/row_set.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/embedded/conversion.h"
#include "platform/embedded/session.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

// Numbers of the data-access library for faults of the caller.
constexpr std::int32_t kNoSuchField = 3265;
constexpr std::int32_t kNotUpdatable = 3251;

}  // namespace

RowSet::RowSet(Session& session, std::string_view sql, bool updatable, bool firstOnly)
    : session_(&session), text_(sql), criterionAt_(sql.size()), updatable_(updatable), firstOnly_(firstOnly) {
  session_->enter(this);
  try {
    runQuery();
  } catch (...) {
    session_->leave(this);
    throw;
  }
}

RowSet::~RowSet() {
  if (!session_) return;
  letGo();
  session_->leave(this);
}

void RowSet::close() {
  if (running_) prepared_->reset();
  running_ = false;
  updateRow_.reset();
  prepared_.reset();
  session_ = nullptr;
}

void RowSet::checkOpen() const {
  if (!session_) throw ProviderError(provider_number::kObjectClosed, "The record set is closed.");
}

void RowSet::failNoRow() { throw ProviderError(provider_number::kNoCurrentRecord, "There is no current record."); }

const TableDef* RowSet::table() const { return prepared_ && isKeyed() ? prepared_->translation().table : nullptr; }

/// Another program may have changed the layout since the query was translated.
void RowSet::runQuery() {
  try {
    runOnce();
    if (!prepared_->wasPreparedAnew() || !session_->noticeLayoutChange()) return;
  } catch (const ProviderError&) {
    if (!session_->noticeLayoutChange()) throw;
  }
  if (running_) prepared_->reset();
  running_ = false;
  runOnce();
}

void RowSet::runOnce() {
  letGo();
  rowLoaded_ = false;
  onAddedRow_ = false;
  continueByKey_ = false;
  editing_ = Editing::kNone;
  pending_.clear();
  keys_.clear();
  rows_.clear();
  selected_.clear();
  next_ = 0;
  if (const auto answer = session_->answers().find(text_, criterionAt_, firstOnly_)) {
    takeAnswer(*answer);
  } else {
    start();
  }
}

void RowSet::use(std::shared_ptr<Prepared> prepared) {
  if (prepared == prepared_) return;
  updateRow_.reset();
  prepared_ = std::move(prepared);
}

void RowSet::takeAnswer(const Answer& answer) {
  use(answer.prepared);
  eof_ = answer.keys.empty();
  if (eof_) return;
  key_ = answer.keys[0];
  selected_ = answer.selected;
  if (firstOnly_) return;
  keys_.assign(answer.keys.begin() + 1, answer.keys.end());
  continueByKey_ = prepared_->translation().wholeTable;
}

void RowSet::start() {
  session_->beginReading();
  use(session_->query(text_, criterionAt_, literals_));
  const sql::Translation& translation = prepared_->translation();
  const bool mayKeep = translation.keyed && !translation.readsOthers && prepared_->isWorthKeeping();
  changes_ = mayKeep ? session_->changesOf(*translation.table) : nullptr;
  if (changes_) asOf_ = *changes_;
  eof_ = !prepared_->start({text_, &literals_});
  if (eof_) return keepAnswer();
  running_ = true;
  session_->takeOver(this);
  if (isKeyed()) key_ = prepared_->key();
}

/// Gives up the running statement and all rows. Its answer is kept for whoever asks the same.
void RowSet::letGo() noexcept {
  if (!running_) return;
  running_ = false;
  try {
    if (changes_) readAhead(Answers::kMostRows) ? keepAnswer() : prepared_->noteAnswerTried();
  } catch (...) {
    // No answer, then: whoever asks again meets the error.
  }
  changes_.reset();
  prepared_->reset();
}

/// Reads the current row and the keys of those behind it, as far as there are not more than `most`.
bool RowSet::readAhead(std::size_t most) {
  selected_.clear();
  for (const int column : prepared_->selected()) selected_.push_back(prepared_->at(prepared_->place(column), column));
  if (firstOnly_) return true;
  continueByKey_ = prepared_->translation().wholeTable;
  while (!continueByKey_ && prepared_->step()) {
    if (keys_.size() == most) return false;
    keys_.push_back(prepared_->key());
  }
  return true;
}

/// The row that the set stands on is the first of the answer.
void RowSet::keepAnswer() {
  const auto changes = std::exchange(changes_, nullptr);
  if (!changes) return;
  prepared_->noteAnswerTried();
  if (keys_.size() > Answers::kMostRows) return;
  Answer answer{.prepared = prepared_,
                .criterionAt = criterionAt_,
                .firstOnly = firstOnly_,
                .keys = {},
                .selected = selected_,
                .changes = changes,
                .asOf = asOf_};
  if (!eof_) answer.keys.push_back(key_);
  answer.keys.insert(answer.keys.end(), keys_.begin(), keys_.end());
  session_->answers().keep(text_, std::move(answer));
}

bool RowSet::eof() {
  checkOpen();
  return eof_ && editing_ != Editing::kAdding;
}

std::int64_t RowSet::recordCount() {
  checkOpen();
  if (!running_) {
    session_->beginReading();
    session_->query(text_, criterionAt_, literals_);
  }
  return prepared_->count({text_, &literals_});
}

void RowSet::moveFirst() {
  checkOpen();
  if (editing_ != Editing::kNone) update();
  runQuery();
}

void RowSet::requery() {
  checkOpen();
  runQuery();
}

void RowSet::filter(std::string_view criterion) {
  checkOpen();
  letGo();
  text_.resize(criterionAt_);
  if (!trimSpace(criterion).empty()) text_ += criterion;
  runQuery();
}

void RowSet::putAside() {
  if (!running_) return;
  running_ = false;
  if (!isKeyed()) {
    const auto columns = static_cast<int>(prepared_->translation().columns.size());
    do {
      std::vector<Value> row(static_cast<std::size_t>(columns));
      for (int i = 0; i < columns; ++i) row[static_cast<std::size_t>(i)] = prepared_->at(i, i);
      rows_.push_back(std::move(row));
    } while (prepared_->step());
    prepared_->reset();
    return;
  }
  readAhead(std::numeric_limits<std::size_t>::max());
  keepAnswer();
  prepared_->reset();
}

void RowSet::keepRow() {
  if (!session_ || eof_ || !isKeyed() || rowLoaded_) return;
  rowLoaded_ = prepared_->readRow(key_, row_);
}

/// A column that nobody has asked for before is seldom alone: then the whole row is read.
void RowSet::load(bool askedOnly) {
  if (!running_) session_->beginReading();
  rowLoaded_ = !askedOnly && prepared_->readRow(key_, row_);
  if (rowLoaded_ || (askedOnly && prepared_->readAsked(key_, selected_))) return;
  selected_.clear();
  throw ProviderError(provider_number::kNoCurrentRecord, "The record has been deleted.");
}

void RowSet::moveToKey() {
  selected_.clear();
  rowLoaded_ = false;
  session_->beginReading();
  if (continueByKey_) {
    key_ = prepared_->nextKey(key_);
    eof_ = key_ == 0;
    return;
  }
  // Rows that have been deleted meanwhile are passed over.
  while (next_ < keys_.size()) {
    key_ = keys_[next_++];
    if (prepared_->readAsked(key_, selected_)) return;
  }
  eof_ = true;
}

void RowSet::moveNext() {
  checkOpen();
  if (editing_ != Editing::kNone) update();
  if (eof_) failNoRow();
  if (firstOnly_) letGo();
  changes_.reset();
  if (onAddedRow_ || firstOnly_) {
    // A new row stands behind all others.
    onAddedRow_ = false;
    eof_ = true;
  } else if (running_) {
    rowLoaded_ = false;
    selected_.clear();
    running_ = prepared_->step();
    eof_ = !running_;
    if (running_ && isKeyed()) key_ = prepared_->key();
    if (eof_) session_->takeOver(nullptr);
  } else if (isKeyed()) {
    moveToKey();
  } else {
    eof_ = ++next_ >= rows_.size();
  }
}

std::vector<FieldInfo> RowSet::fields() const {
  checkOpen();
  std::vector<FieldInfo> all;
  for (const sql::ResultColumn& column : prepared_->translation().columns) {
    all.push_back({column.name, column.fieldType, column.size});
  }
  return all;
}

int RowSet::column(std::string_view field) const {
  checkOpen();
  const int at = prepared_->names().find(field);
  if (at < 0) throw ProviderError(kNoSuchField, "There is no field '" + std::string(field) + "' in the record set.");
  return at;
}

const ColumnDef& RowSet::definition(int column) const {
  const sql::Translation& translation = prepared_->translation();
  return translation.table->columns[static_cast<std::size_t>(translation.columnOf[static_cast<std::size_t>(column)])];
}

Value* RowSet::pendingValue(int column) {
  const auto at = static_cast<std::size_t>(column);
  if (at >= pendingAt_.size() || pendingAt_[at] >= pending_.size()) return nullptr;
  auto& [place, value] = pending_[pendingAt_[at]];
  return place == column ? &value : nullptr;
}

Value RowSet::defaultOf(int column) const {
  const ColumnDef& def = definition(column);
  const bool startsAsNo = def.type == ColumnType::kBoolean && session_->dialect() == SqlDialect::kAccess;
  return def.defaultValue.isNull() && startsAsNo ? Value(false) : def.defaultValue;
}

Value RowSet::get(std::string_view field) {
  const int at = column(field);
  if (const Value* value = pendingValue(at)) return *value;
  if (editing_ == Editing::kAdding) return defaultOf(at);
  if (eof_) failNoRow();
  return current(at);
}

Value RowSet::current(int at) {
  if (!isKeyed()) {
    return running_ ? prepared_->at(at, at) : rows_[next_][static_cast<std::size_t>(at)];
  }
  const int place = prepared_->place(at);
  if (place >= 0 && running_ && !rowLoaded_) return prepared_->at(place, at);
  const bool wasAsked = prepared_->askFor(at);
  if (!rowLoaded_ && prepared_->askedPlace(at) >= selected_.size()) load(wasAsked);
  return rowLoaded_ ? row_[static_cast<std::size_t>(at)] : selected_[prepared_->askedPlace(at)];
}

void RowSet::addNew() {
  checkOpen();
  if (editing_ != Editing::kNone) update();
  if (!updatable_ || !isKeyed()) throw ProviderError(kNotUpdatable, "The record set cannot be changed.");
  editing_ = Editing::kAdding;
  pending_.clear();
}

void RowSet::set(std::string_view field, const Value& value) {
  const int at = column(field);
  if (!updatable_ || !isKeyed()) throw ProviderError(kNotUpdatable, "The record set cannot be changed.");
  if (eof_ && editing_ == Editing::kNone) failNoRow();
  const ColumnDef& def = definition(at);
  // A null in a required column is a fault of the finished record only.
  Value stored = value.isNull() ? Value() : convertForColumn(def, value, DateOrder::kDayMonthYear);
  if (editing_ == Editing::kNone) editing_ = Editing::kChanging;
  if (Value* const pending = pendingValue(at)) {
    *pending = std::move(stored);
    return;
  }
  if (pendingAt_.size() <= static_cast<std::size_t>(at)) pendingAt_.resize(prepared_->translation().columns.size());
  pendingAt_[static_cast<std::size_t>(at)] = pending_.size();
  pending_.emplace_back(at, std::move(stored));
}

void RowSet::update() {
  checkOpen();
  if (editing_ == Editing::kNone) return;
  if (editing_ == Editing::kAdding) {
    storeNew();
  } else {
    storeChanges();
  }
  editing_ = Editing::kNone;
  pending_.clear();
}

void RowSet::storeNew() {
  const TableDef& layout = *prepared_->translation().table;
  newValues_.assign(layout.columns.size(), nullptr);
  for (const auto& [place, value] : pending_) {
    newValues_[static_cast<std::size_t>(prepared_->translation().columnOf[static_cast<std::size_t>(place)])] = &value;
  }
  const bool access = session_->dialect() == SqlDialect::kAccess;
  const Value no(false);
  for (std::size_t i = 0; i < newValues_.size(); ++i) {
    const ColumnDef& def = layout.columns[i];
    const Value*& value = newValues_[i];
    const bool isGiven = value != nullptr;
    if (!isGiven) value = &def.defaultValue;
    if (!isGiven && value->isNull() && access && def.type == ColumnType::kBoolean) value = &no;
    if (value->isNull() && def.required) convertForColumn(def, Value(), DateOrder::kDayMonthYear);
  }
  key_ = session_->addRow(*prepared_, newValues_);
  eof_ = false;
  onAddedRow_ = true;
  rowLoaded_ = false;
  selected_.clear();
}

void RowSet::storeChanges() {
  const TableDef& table = *prepared_->translation().table;
  session_->beforeChange(table, this);
  std::sort(pending_.begin(), pending_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < pending_.size(); ++i) pendingAt_[static_cast<std::size_t>(pending_[i].first)] = i;
  std::vector<int> columns;
  std::vector<Value> values;
  for (const auto& [place, value] : pending_) {
    if (value.isNull() && definition(place).required) {
      convertForColumn(definition(place), value, DateOrder::kDayMonthYear);
    }
    columns.push_back(prepared_->translation().columnOf[static_cast<std::size_t>(place)]);
    values.push_back(value);
  }
  const auto changed = session_->changeRow(table, columns, values, key_);
  if ((changed ? *changed : updateBySql(columns)) == 0) {
    throw ProviderError(provider_number::kNoCurrentRecord, "The record has been deleted.");
  }
  rowLoaded_ = false;
  selected_.clear();
}

std::int64_t RowSet::updateBySql(const std::vector<int>& columns) {
  if (!updateRow_ || columns != updateColumns_) {
    updateRow_ = prepared_->updateRow(columns);
    updateColumns_ = columns;
  }
  int at = 0;
  for (const auto& change : pending_) bindValue(updateRow_.get(), ++at, change.second, true);
  sqlite3_bind_int64(updateRow_.get(), ++at, key_);
  return session_->runChange(updateRow_.get());
}

void RowSet::cancel() {
  checkOpen();
  editing_ = Editing::kNone;
  pending_.clear();
}

}  // namespace orva::embedded
