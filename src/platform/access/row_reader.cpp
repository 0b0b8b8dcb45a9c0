#include "platform/access/row_reader.h"

#include <algorithm>

#include "platform/access/text_cell.h"

namespace orva::access {
namespace {

constexpr int kLongestPointerChain = 16;

}  // namespace

const RowReader::Place& RowReader::locate(RowId row) const {
  if (row == lastRow_ && lastVersion_ == file_.version() && !lastPlace_.bytes.empty()) return lastPlace_;
  lastParts_.reset();
  lastPlace_ = follow(row);
  lastRow_ = row;
  lastVersion_ = file_.version();
  return lastPlace_;
}

const StoredRow& RowReader::parts(const Place& place) const {
  if (!lastParts_) lastParts_.emplace(place.bytes, definition_);
  return *lastParts_;
}

RowReader::Place RowReader::follow(RowId row) const {
  SlotAddress at = addressOf(row);
  for (int i = 0; i < kLongestPointerChain; ++i) {
    const auto place = file_.at(at.page, [&]() -> std::optional<Place> {
      const DataPage page(file_.page(at.page));
      require(page.owner() == definition_.page, "a row pointer leads to the page of another table");
      const Slot slot = page.slot(at.row);
      require(!slot.isDeleted(), "a pointer leads to a deleted row");
      if (!slot.isPointer()) return Place{at, page.bytes(slot)};
      require(slot.size() >= kMinimumRow, "the pointer to a moved row is too short");
      at = slotAddressAt(page.bytes(slot), 0);
      return std::nullopt;
    });
    if (place) return *place;
  }
  file_.fail(at.page, "the pointers to a moved row form a ring");
}

bool RowReader::exists(RowId row) const {
  const SlotAddress at = addressOf(row);
  if (at.page >= file_.pageCount()) return false;
  const Page& bytes = file_.page(at.page);
  if (bytes[0] != static_cast<Byte>(PageType::kData)) return false;
  return file_.at(at.page, [&] {
    const DataPage page(bytes);
    return page.owner() == definition_.page && at.row < page.slotCount() && page.slot(at.row).isFirst();
  });
}

Cell RowReader::decode(const Column& column, const StoredRow& stored) const {
  const auto bytes = stored.bytes(column);
  if (column.type == ColumnType::kBoolean) return bytes.has_value();
  if (!bytes) return {};
  if (!isLongValue(column.type)) return decodeCell(column, *bytes);
  Bytes value = longValues_.read(*bytes);
  if (column.type == ColumnType::kMemo) return textOf(value);
  return value;
}

Cell RowReader::cell(RowId row, std::size_t column) const {
  const Place& place = locate(row);
  return file_.at(place.address.page, [&] { return decode(definition_.columns[column], parts(place)); });
}

std::optional<std::string_view> RowReader::plainText(RowId row, std::size_t column) const {
  const Column& definition = definition_.columns[column];
  if (definition.type != ColumnType::kText) return std::nullopt;
  const Place& place = locate(row);
  const auto bytes = file_.at(place.address.page, [&] { return parts(place).bytes(definition); });
  return bytes ? plainTextOf(*bytes) : std::nullopt;
}

Row RowReader::row(RowId row, const std::vector<bool>* wanted) const {
  const Place place = locate(row);
  return file_.at(place.address.page, [&] {
    const StoredRow stored(place.bytes, definition_);
    Row cells(definition_.columns.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (!wanted || (*wanted)[i]) cells[i] = decode(definition_.columns[i], stored);
    }
    return cells;
  });
}

StoredCells RowReader::storedCells(RowId row) const {
  const Place place = locate(row);
  return file_.at(place.address.page, [&] {
    const StoredRow stored(place.bytes, definition_);
    StoredCells cells(definition_.columns.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const auto bytes = stored.bytes(definition_.columns[i]);
      if (bytes) cells.set(i, *bytes);
    }
    return cells;
  });
}

std::size_t RowScan::slotsOf(PageNumber number) const {
  if (number >= file_.pageCount()) return 0;
  const Page& bytes = file_.page(number);
  if (bytes[0] != static_cast<Byte>(PageType::kData)) return 0;
  const DataPage page(bytes);
  return page.owner() == definition_.page ? std::min(page.slotCount(), kMaximumSlots) : 0;
}

bool RowScan::nextOnPage() {
  return file_.at(page_, [&] {
    const std::size_t slots = slotsOf(page_);
    for (; slot_ < slots; ++slot_) {
      if (DataPage(file_.page(page_)).slot(slot_).isFirst()) return true;
    }
    return false;
  });
}

bool RowScan::previousOnPage() {
  return file_.at(page_, [&] {
    for (slot_ = std::min(slot_, slotsOf(page_)); slot_ > 0;) {
      --slot_;
      if (DataPage(file_.page(page_)).slot(slot_).isFirst()) return true;
    }
    return false;
  });
}

void RowScan::standOn(RowId row) {
  const SlotAddress at = addressOf(row);
  page_ = at.page;
  slot_ = at.row;
  started_ = true;
}

bool RowScan::previous() {
  if (started_ && previousOnPage()) return true;
  for (;;) {
    if (started_ && page_ == 0) return false;
    const auto page = owned_.previous(started_ ? page_ - 1 : kMaximumPages);
    if (!page) return false;
    started_ = true;
    page_ = *page;
    slot_ = kMaximumSlots;
    if (previousOnPage()) return true;
  }
}

bool RowScan::next() {
  if (started_) {
    ++slot_;
    if (nextOnPage()) return true;
  }
  for (;;) {
    const auto page = owned_.next(started_ ? page_ + 1 : 0);
    if (!page) return false;
    started_ = true;
    page_ = *page;
    slot_ = 0;
    if (nextOnPage()) return true;
  }
}

}  // namespace orva::access
