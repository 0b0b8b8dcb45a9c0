#include "platform/access/data_page.h"

#include <algorithm>
#include <cstring>

#include "platform/access/access_file_error.h"

namespace orva::access {

DataPage::DataPage(ByteView page) : page_(page), slotCount_(u16At(page, data_at::kSlotCount)) {
  require(page[0] == static_cast<Byte>(PageType::kData), "this is not the data page that a pointer leads to");
  require(data_at::kSlots + 2 * slotCount_ <= kPageSize, "the number of row slots is larger than the page");
}

Slot DataPage::slot(std::size_t row) const {
  require(row < slotCount_, "a pointer leads to a row that the page does not have");
  const std::size_t at = data_at::kSlots + 2 * row;
  const std::uint16_t entry = u16At(page_, at);
  const std::size_t end = row == 0 ? kPageSize : u16At(page_, at - 2) & kSlotStart;
  const std::size_t start = entry & kSlotStart;
  require(start <= end && end <= kPageSize && start >= data_at::kSlots + 2 * slotCount_,
          "the rows of the page overlap each other");
  return {static_cast<std::uint16_t>(start), static_cast<std::uint16_t>(end),
          static_cast<std::uint16_t>(entry & kSlotDeleted)};
}

ByteView DataPage::row(std::size_t row) const {
  const Slot found = slot(row);
  require(!found.isDeleted(), "a pointer leads to a deleted row");
  return bytes(found);
}

bool DataPage::hasLiveRows() const {
  for (std::size_t row = slotCount_; row-- > 0;) {
    if (!slot(row).isDeleted()) return true;
  }
  return false;
}

std::size_t DataPage::lowest() const {
  return slotCount_ == 0 ? kPageSize : u16At(page_, data_at::kSlots + 2 * (slotCount_ - 1)) & kSlotStart;
}

void DataPageEditor::format(ByteSpan page, std::uint32_t owner) {
  std::fill(page.begin(), page.end(), Byte{0});
  page[0] = static_cast<Byte>(PageType::kData);
  page[1] = 1;
  putU16(page, data_at::kFree, kPageSize - data_at::kSlots);
  putU32(page, data_at::kOwner, owner);
}

std::size_t DataPageEditor::roomForRow() const {
  const DataPage page(page_);
  const std::size_t slots = data_at::kSlots + 2 * page.slotCount();
  const std::size_t lowest = page.lowest();
  if (page.slotCount() >= kMaximumSlots || lowest < slots + 2) return 0;
  return lowest - slots - 2;
}

std::array<ByteRange, 2> DataPageEditor::partsOfInsert(const DataPage& page, std::size_t rowSize) {
  return {{{0, data_at::kSlots + 2 * (page.slotCount() + 1)}, {page.lowest() - rowSize, rowSize}}};
}

std::array<ByteRange, 2> DataPageEditor::partsOfReplace(const DataPage& page, std::size_t row, std::size_t newSize) {
  const Slot slot = page.slot(row);
  if (newSize == slot.size()) return {{{data_at::kSlots + 2 * row, 2}, {slot.start, newSize}}};
  const std::size_t lowest = page.lowest() - (newSize > slot.size() ? newSize - slot.size() : 0);
  return {{{0, data_at::kSlots + 2 * page.slotCount()}, {lowest, slot.end - lowest}}};
}

Byte DataPageEditor::insert(ByteView row, std::uint16_t flags) {
  const DataPage page(page_);
  const std::size_t slot = page.slotCount();
  const std::size_t start = page.lowest() - row.size();
  std::copy(row.begin(), row.end(), page_.begin() + static_cast<std::ptrdiff_t>(start));
  putU16(page_, data_at::kSlots + 2 * slot, start | flags);
  putU16(page_, data_at::kSlotCount, slot + 1);
  putU16(page_, data_at::kFree, start - (data_at::kSlots + 2 * (slot + 1)));
  return static_cast<Byte>(slot);
}

bool DataPage::canReplace(std::size_t row, std::size_t newSize) const {
  const std::size_t room = lowest() - (data_at::kSlots + 2 * slotCount_);
  return newSize <= slot(row).size() + room;
}

void DataPageEditor::resize(std::size_t row, std::size_t newSize) {
  const DataPage page(page_);
  const Slot slot = page.slot(row);
  if (newSize == slot.size()) return;
  const std::size_t lowest = page.lowest();
  const auto shift = static_cast<std::ptrdiff_t>(slot.size()) - static_cast<std::ptrdiff_t>(newSize);
  std::memmove(page_.data() + static_cast<std::ptrdiff_t>(lowest) + shift, page_.data() + lowest, slot.start - lowest);
  for (std::size_t r = row; r < page.slotCount(); ++r) {
    const std::size_t at = data_at::kSlots + 2 * r;
    putU16(page_, at, static_cast<std::size_t>(u16At(page_, at) + shift));
  }
  putU16(page_, data_at::kFree, page.lowest() - (data_at::kSlots + 2 * page.slotCount()));
}

void DataPageEditor::replace(std::size_t row, ByteView bytes, std::uint16_t flags) {
  resize(row, bytes.size());
  const std::size_t at = data_at::kSlots + 2 * row;
  const std::size_t start = u16At(page_, at) & kSlotStart;
  std::copy(bytes.begin(), bytes.end(), page_.begin() + static_cast<std::ptrdiff_t>(start));
  putU16(page_, at, start | flags);
}

void DataPageEditor::remove(std::size_t row) {
  resize(row, 0);
  const std::size_t at = data_at::kSlots + 2 * row;
  putU16(page_, at, (u16At(page_, at) & kSlotStart) | kSlotDeleted);
}

}  // namespace orva::access
