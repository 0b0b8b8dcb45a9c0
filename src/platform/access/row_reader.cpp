#include "platform/access/row_reader.h"

#include <algorithm>

#include "platform/access/text_cell.h"

namespace orva::access {
namespace {

constexpr int kLongestPointerChain = 16;

}  // namespace

SlotAddress RowReader::resolve(RowId row) const {
  SlotAddress at = addressOf(row);
  for (int i = 0; i < kLongestPointerChain; ++i) {
    const auto target = file_.at(at.page, [&]() -> std::optional<SlotAddress> {
      const DataPage page(file_.page(at.page));
      require(page.owner() == definition_.page, "a row pointer leads to the page of another table");
      const Slot slot = page.slot(at.row);
      require(!slot.isDeleted(), "a pointer leads to a deleted row");
      if (!slot.isPointer()) return std::nullopt;
      require(slot.size() >= kMinimumRow, "the pointer to a moved row is too short");
      return slotAddressAt(page.bytes(slot), 0);
    });
    if (!target) return at;
    at = *target;
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

ByteView RowReader::bytes(RowId row) const {
  const SlotAddress at = resolve(row);
  return file_.at(at.page, [&] { return DataPage(file_.page(at.page)).row(at.row); });
}

Cell RowReader::decode(const Column& column, const StoredRow& stored) const {
  const auto bytes = stored.bytes(column);
  if (column.type == ColumnType::kBoolean) return bytes.has_value();
  if (!bytes) return {};
  if (!isLongValue(column.type)) return decodeCell(column, *bytes);
  Bytes value = longValues_.read(*bytes);
  if (column.type == ColumnType::kMemo) return toUtf8(decodeText(value));
  return value;
}

Cell RowReader::cell(RowId row, std::size_t column) const {
  const SlotAddress at = resolve(row);
  return file_.at(at.page, [&] {
    return decode(definition_.columns[column], StoredRow(DataPage(file_.page(at.page)).row(at.row), definition_));
  });
}

Row RowReader::row(RowId row, bool withLongValues) const {
  const SlotAddress at = resolve(row);
  return file_.at(at.page, [&] {
    const StoredRow stored(DataPage(file_.page(at.page)).row(at.row), definition_);
    Row cells;
    cells.reserve(definition_.columns.size());
    for (const Column& column : definition_.columns) {
      cells.push_back(withLongValues || !isLongValue(column.type) ? decode(column, stored) : Cell());
    }
    return cells;
  });
}

StoredCells RowReader::storedCells(RowId row) const {
  const SlotAddress at = resolve(row);
  return file_.at(at.page, [&] {
    const StoredRow stored(DataPage(file_.page(at.page)).row(at.row), definition_);
    StoredCells cells;
    cells.reserve(definition_.columns.size());
    for (const Column& column : definition_.columns) {
      const auto bytes = stored.bytes(column);
      cells.push_back(bytes ? std::optional<Bytes>(Bytes(bytes->begin(), bytes->end())) : std::nullopt);
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
