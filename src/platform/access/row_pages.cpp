#include "platform/access/row_pages.h"

#include <algorithm>

namespace orva::access {
namespace {

/// Pages with room that are tried before a new one is taken.
constexpr int kCandidates = 4;
/// Less room than this is not worth remembering.
constexpr std::size_t kWorthKeeping = 256;

}  // namespace

bool RowPages::takes(PageNumber page, std::size_t rowSize) {
  return file_.at(page, [&] {
    const DataPage view(file_.page(page));
    require(view.owner() == owner_, "the page belongs to another table than its map says");
    // Row numbers start anew on a page that holds no row any more.
    if (view.slotCount() > 0 && !view.hasLiveRows()) DataPageEditor::format(file_.change(page), owner_);
    const std::size_t slots = data_at::kSlots + 2 * DataPage(file_.page(page)).slotCount();
    const std::size_t lowest = DataPage(file_.page(page)).lowest();
    require(lowest >= slots, "the rows of the page overlap its row table");
    return (slots - data_at::kSlots) / 2 < kMaximumSlots && lowest - slots >= rowSize + 2;
  });
}

PageNumber RowPages::pageFor(std::size_t rowSize) {
  if (last_ != 0 && last_ < file_.pageCount() && owned_.contains(last_) && takes(last_, rowSize)) return last_;
  for (int tries = 0; tries < kCandidates; ++tries) {
    const auto candidate = room_.next(nextCandidate_);
    if (!candidate) break;
    nextCandidate_ = *candidate + 1;
    if (takes(*candidate, rowSize)) return last_ = *candidate;
    if (DataPage(file_.page(*candidate)).freeSpace() < kWorthKeeping) room_.remove(*candidate);
  }
  nextCandidate_ = 0;
  return last_ = takePage(0);
}

PageNumber RowPages::takePage(PageNumber lowest) {
  const PageNumber page = allocator_.allocate(lowest);
  DataPageEditor::format(file_.change(page), owner_);
  owned_.add(page, allocator_);
  room_.add(page, allocator_);
  return page;
}

/// The highest page with a row on it, or the lowest page of all; 0 when there is none.
PageNumber RowPages::lastPageInUse() const {
  PageNumber lowest = 0;
  for (auto page = owned_.previous(kMaximumPages); page; page = owned_.previous(*page - 1)) {
    lowest = *page;
    const bool inUse = file_.at(*page, [&] { return DataPage(file_.page(*page)).hasLiveRows(); });
    if (inUse || *page == 0) break;
  }
  return lowest;
}

PageNumber RowPages::pageAtEnd(std::size_t rowSize) {
  if (end_ == 0) end_ = lastPageInUse();
  if (end_ == 0) return end_ = takePage(0);
  if (takes(end_, rowSize)) return end_;
  // What stands behind it is empty.
  for (auto page = owned_.next(end_ + 1); page; page = owned_.next(*page + 1)) {
    if (takes(*page, rowSize)) return end_ = *page;
  }
  return end_ = takePage(end_ + 1);
}

SlotAddress RowPages::add(ByteView row, std::uint16_t flags) {
  const PageNumber page = pageFor(row.size());
  if (end_ != 0) end_ = std::max(end_, page);
  return insertInto(page, row, flags);
}

SlotAddress RowPages::append(ByteView row) {
  const PageNumber page = pageAtEnd(row.size());
  return insertInto(page, row, 0);
}

SlotAddress RowPages::insertInto(PageNumber page, ByteView row, std::uint16_t flags) {
  const auto parts = DataPageEditor::partsOfInsert(DataPage(file_.page(page)), row.size());
  return {page, DataPageEditor(file_.change(page, parts)).insert(row, flags)};
}

void RowPages::remove(SlotAddress address) {
  file_.at(address.page, [&] { DataPageEditor(file_.change(address.page)).remove(address.row); });
  room_.add(address.page, allocator_);
}

void RowPages::removeAndFree(SlotAddress address) {
  remove(address);
  if (DataPage(file_.page(address.page)).hasLiveRows()) return;
  owned_.remove(address.page);
  room_.remove(address.page);
  allocator_.free(address.page);
  if (last_ == address.page) last_ = 0;
  if (end_ == address.page) end_ = 0;
}

void RowPages::freeAll() {
  for (auto page = owned_.next(0); page; page = owned_.next(*page + 1)) {
    owned_.remove(*page);
    room_.remove(*page);
    allocator_.free(*page);
  }
  last_ = 0;
  end_ = 0;
}

}  // namespace orva::access
