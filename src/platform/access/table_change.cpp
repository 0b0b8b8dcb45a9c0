#include <algorithm>
#include <random>

#include "platform/access/table.h"

namespace orva::access {
namespace {

Guid randomGuid() {
  static std::random_device source;
  Guid guid;
  for (Byte& byte : guid.bytes) byte = static_cast<Byte>(source());
  guid.bytes[6] = static_cast<Byte>((guid.bytes[6] & 0x0F) | 0x40);
  guid.bytes[8] = static_cast<Byte>((guid.bytes[8] & 0x3F) | 0x80);
  return guid;
}

}  // namespace

void Table::giveAutoNumbers(Row& row) {
  for (const std::size_t i : numbered_) {
    const Column& column = definition_.columns[i];
    if (column.type == ColumnType::kGuid) {
      if (isNull(row[i])) row[i] = randomGuid();
      continue;
    }
    const auto last = static_cast<std::int32_t>(definition_.lastAutoNumber);
    if (isNull(row[i])) row[i] = std::int64_t{last} + std::max<std::uint32_t>(definition_.autoNumberStep, 1);
    row[i] = convertFor(column, row[i]);
    const std::int64_t given = std::get<std::int64_t>(row[i]);
    if (given > last) definition_.lastAutoNumber = static_cast<std::uint32_t>(given);
  }
}

void Table::loadRules() {
  if (rules_.size() == definition_.columns.size()) return;
  rules_.clear();
  numbered_.clear();
  for (std::size_t i = 0; i < definition_.columns.size(); ++i) {
    const Column& each = definition_.columns[i];
    rules_.push_back({properties_.isRequired(each.name), properties_.allowsZeroLength(each.name)});
    const bool isNumbered = each.isAutoNumber() && each.type == ColumnType::kLong;
    const bool isIdentified = (each.flags & column_flag::kAutoGuid) != 0 && each.type == ColumnType::kGuid;
    if (isNumbered || isIdentified) numbered_.push_back(i);
  }
}

void Table::checkRules(std::size_t column, const Cell& cell) const {
  const auto* text = std::get_if<std::string>(&cell);
  const bool isMissing = isNull(cell) && rules_[column].isRequired;
  const bool isEmptyText = text && text->empty() && !rules_[column].allowsZeroLength;
  if (!isMissing && !isEmptyText) return;
  throw AccessFileError(provider_number::kIntegrity,
                        "Table '" + name_ + "': the column '" + definition_.columns[column].name +
                            (isMissing ? "' must have a value." : "' cannot hold an empty text."));
}

Row Table::emptyRow() {
  Row row = std::move(spareRow_);
  row.resize(definition_.columns.size());
  for (Cell& cell : row) {
    if (!isNull(cell)) cell = Cell();
  }
  return row;
}

RowId Table::insert(Row row) {
  requireKnownTypes();
  row.resize(definition_.columns.size());
  loadRules();
  giveAutoNumbers(row);
  for (std::size_t i = 0; i < row.size(); ++i) {
    const Column& column = definition_.columns[i];
    // Most columns of a wide table stay empty.
    if (isNull(row[i]) && column.type != ColumnType::kBoolean && !rules_[i].isRequired) continue;
    if (!isKeptAs(column, row[i])) row[i] = convertFor(column, std::move(row[i]));
    checkRules(i, row[i]);
  }
  std::vector<std::optional<Bytes>> keys;
  keys.reserve(trees_.size());
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    keys.push_back(keyFor(definition_.realIndexes[i], row));
    if (keys.back()) checkUnique(i, row, *keys.back(), std::nullopt);
  }
  checkParents(row, nullptr);
  encodeNew(row);
  const RowId id = rowIdOf(pages_->append(spareBytes_));
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    if (keys[i] && trees_[i]->insert({std::move(*keys[i]), id})) ++definition_.realIndexes[i].distinctKeys;
  }
  ++definition_.rowCount;
  writeTableCounts(file_, definition_);
  if (observer_) observer_->rowChanged(*this, id, nullptr);
  spareRow_ = std::move(row);
  return id;
}

void Table::requireRowSize(std::size_t size) const {
  if (size <= kMaximumRow) return;
  throw AccessFileError(provider_number::kDataOverflow, "Table '" + name_ + "': the row is longer than 4,060 bytes.");
}

/// Into the spare bytes. A row without long values needs no plan of its parts.
void Table::encodeNew(const Row& row) {
  bool hasLong = false;
  for (std::size_t i = 0; i < row.size() && !hasLong; ++i) {
    hasLong = !isNull(row[i]) && isLongValue(definition_.columns[i].type);
  }
  if (hasLong) {
    spareCells_.clear(row.size());
    storeCells(row, spareCells_, nullptr);
    encodeRow(spareBytes_, definition_, spareCells_);
  } else {
    encodeRow(spareBytes_, definition_, row);
  }
  requireRowSize(spareBytes_.size());
}

void Table::storeCells(const Row& row, StoredCells& cells, const std::vector<Change>* changes) {
  std::vector<std::pair<std::size_t, Bytes>> longValues;
  const auto store = [&](std::size_t i) {
    const Column& column = definition_.columns[i];
    cells.reset(i);
    if (const auto* yes = std::get_if<bool>(&row[i])) {
      if (*yes) cells.set(i, {});
    } else if (isNull(row[i])) {
      return;
    } else if (isLongValue(column.type)) {
      Bytes& value = longValues.emplace_back(i, Bytes()).second;
      appendCell(value, column, row[i]);
      const std::size_t inRow = value.size() <= long_value::kLargestInline ? value.size() : 0;
      cells.set(i, Bytes(long_value::kCell + inRow));
    } else {
      cells.fill(i, [&](Bytes& bytes) { appendCell(bytes, column, row[i]); });
    }
  };
  for (std::size_t i = 0; !changes && i < row.size(); ++i) store(i);
  for (std::size_t i = 0; changes && i < changes->size(); ++i) store((*changes)[i].column);
  storeLongValues(longValues, cells);
}

/// Long values leave the row when it would be too long with them.
void Table::storeLongValues(const std::vector<std::pair<std::size_t, Bytes>>& values, StoredCells& cells) {
  if (values.empty()) return;
  const bool mayStay = encodedRowSize(definition_, cells) <= kMaximumRow;
  if (!mayStay) {
    for (const auto& value : values) cells.shorten(value.first, long_value::kCell);
    requireRowSize(encodedRowSize(definition_, cells));
  }
  for (const auto& [i, value] : values) cells.set(i, longValues_.store(definition_.columns[i], value, mayStay));
}

void Table::removeLongValue(std::size_t column, const StoredCells& cells) {
  const Column& definition = definition_.columns[column];
  if (!cells.has(column) || !isLongValue(definition.type)) return;
  file_.at(definition_.page, [&] { longValues_.remove(definition, cells[column]); });
}

std::vector<Table::KeyChange> Table::keyChanges(RowId id, const Row& before, const Row& after,
                                                const std::vector<Change>& changes) const {
  std::vector<KeyChange> keys;
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    const RealIndex& index = definition_.realIndexes[i];
    if (!uses(index, changes)) continue;
    const auto next = keyFor(index, after);
    const bool hadEntry = !(index.ignoresNulls() && allNull(definition_, index, before));
    const auto old = hadEntry ? indexKey(definition_, index, before) : std::nullopt;
    if (old == next && hadEntry == next.has_value()) continue;
    if (next) checkUnique(i, after, *next, id);
    KeyChange change{.index = i, .before = {}, .after = {}};
    if (hadEntry) change.before = IndexEntry{old.value_or(Bytes()), id};
    if (next) change.after = IndexEntry{*next, id};
    keys.push_back(std::move(change));
  }
  return keys;
}

void Table::eraseKey(std::size_t index, const Row& row, RowId id) {
  const RealIndex& real = definition_.realIndexes[index];
  for (const DoubleLetters letters : {DoubleLetters::kTwoPlaces, DoubleLetters::kOnePlace}) {
    const auto key = indexKey(definition_, real, row, letters);
    if (key && trees_[index]->erase({*key, id})) return;
  }
  // A key that another engine made: rather read the whole index than leave it behind.
  const auto found = trees_[index]->findRow(id);
  if (found) trees_[index]->erase(*found);
}

void Table::applyKeys(RowId id, const Row& before, const std::vector<KeyChange>& keys) {
  for (const KeyChange& key : keys) {
    if (key.before) eraseKey(key.index, before, id);
    if (key.after && trees_[key.index]->insert(*key.after)) ++definition_.realIndexes[key.index].distinctKeys;
  }
  if (!keys.empty()) writeTableCounts(file_, definition_);
}

void Table::update(RowId id, const std::vector<Change>& changes) {
  requireKnownTypes();
  loadRules();
  const Row before = keyRow(id);
  Row after = before;
  for (const Change& change : changes) {
    const Column& column = definition_.columns[change.column];
    after[change.column] = convertFor(column, change.value);
    checkRules(change.column, after[change.column]);
  }
  const auto keys = keyChanges(id, before, after, changes);
  checkParents(after, &changes);
  checkChildrenBeforeUpdate(before, after);
  if (observer_) observer_->rowChanging(*this, id, &changes);
  if (!replaceNumbers(id, after, changes)) encodeChanged(id, after, changes);
  storeRow(id, spareBytes_);
  applyKeys(id, before, keys);
  if (observer_) observer_->rowChanged(*this, id, &changes);
  cascadeUpdate(before, after);
}

/// Makes the changed row in the spare bytes. False when it takes more than other numbers at their places.
bool Table::replaceNumbers(RowId id, const Row& after, const std::vector<Change>& changes) {
  const ByteView old = reader_.bytes(id);
  spareBytes_.assign(old.begin(), old.end());
  // The parts of a row are checked before they are trusted.
  file_.at(addressOf(id).page, [&] { static_cast<void>(StoredRow(spareBytes_, definition_)); });
  return std::all_of(changes.begin(), changes.end(), [&](const Change& change) {
    return replaceNumber(spareBytes_, definition_, definition_.columns[change.column], after[change.column]);
  });
}

/// The same for any changes.
void Table::encodeChanged(RowId id, const Row& after, const std::vector<Change>& changes) {
  const StoredCells old = reader_.storedCells(id);
  spareCells_ = old;
  storeCells(after, spareCells_, &changes);
  encodeRow(spareBytes_, definition_, spareCells_);
  requireRowSize(spareBytes_.size());
  for (const Change& change : changes) removeLongValue(change.column, old);
}

void Table::storeRow(RowId id, ByteView bytes) {
  const SlotAddress first = addressOf(id);
  const SlotAddress place = reader_.resolve(id);
  const bool moved = !(place == first);
  const DataPage page(file_.page(place.page));
  if (page.canReplace(place.row, bytes.size())) {
    const auto parts = DataPageEditor::partsOfReplace(page, place.row, bytes.size());
    DataPageEditor(file_.change(place.page, parts)).replace(place.row, bytes, moved ? kSlotHidden : std::uint16_t{0});
    return;
  }
  const SlotAddress target = pages_->add(bytes, kSlotHidden);
  if (moved) pages_->remove(place);
  // The slot keeps its length and becomes a pointer.
  const ByteView slot = DataPage(file_.page(first.page)).row(first.row);
  Bytes pointer(slot.begin(), slot.end());
  if (pointer.size() < kMinimumRow) file_.fail(first.page, "a row is too short to be moved");
  putSlotAddress(pointer, 0, target);
  DataPageEditor(file_.change(first.page)).replace(first.row, pointer, kSlotMoved);
}

/// Removes the first slot of a row and every slot that it leads to.
void Table::removeSlots(RowId id) {
  SlotAddress at = addressOf(id);
  const SlotAddress last = reader_.resolve(id);
  while (!(at == last)) {
    const SlotAddress next = slotAddressAt(DataPage(file_.page(at.page)).row(at.row), 0);
    pages_->removeAndFree(at);
    at = next;
  }
  pages_->removeAndFree(last);
}

void Table::remove(RowId id) {
  requireKnownTypes();
  const Row row = keyRow(id);
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    for (const IndexColumn& part : definition_.realIndexes[i].columns) {
      const std::size_t column = definition_.columnOfNumber(part.number).value();
      if (definition_.columns[column].isText() && !definition_.columns[column].isGeneralOrder()) {
        keyFor(definition_.realIndexes[i], row);
      }
    }
  }
  releaseChildren(id, row);
  if (observer_) observer_->rowChanging(*this, id, nullptr);
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    const RealIndex& index = definition_.realIndexes[i];
    if (!(index.ignoresNulls() && allNull(definition_, index, row))) eraseKey(i, row, id);
  }
  const StoredCells cells = reader_.storedCells(id);
  for (std::size_t i = 0; i < cells.size(); ++i) removeLongValue(i, cells);
  removeSlots(id);
  if (definition_.rowCount > 0) --definition_.rowCount;
  writeTableCounts(file_, definition_);
}

}  // namespace orva::access
