#include "platform/access/usage_map.h"

#include <algorithm>
#include <bit>

#include "platform/access/data_page.h"

namespace orva::access {
namespace {

constexpr std::size_t kInlineHead = 5;
constexpr std::size_t kBitPageHead = 4;
constexpr std::size_t kReferences = (kInlineMapRow - 1) / 4;

bool bitAt(ByteView bits, PageNumber i) { return (bits[i / 8] >> (i % 8) & 1) != 0; }

/// First set bit at or after `from`.
std::optional<PageNumber> nextBit(ByteView bits, PageNumber from) {
  const auto count = static_cast<PageNumber>(bits.size() * 8);
  while (from < count) {
    if (from % 64 == 0 && from + 64 <= count && u64At(bits, from / 8) == 0) {
      from += 64;
    } else if (bitAt(bits, from)) {
      return from;
    } else {
      ++from;
    }
  }
  return std::nullopt;
}

std::optional<PageNumber> previousBit(ByteView bits, PageNumber from) {
  for (PageNumber i = from + 1; i-- > 0;) {
    if (bits[i / 8] == 0) {
      i -= i % 8;
    } else if (bitAt(bits, i)) {
      return i;
    }
  }
  return std::nullopt;
}

}  // namespace

ByteView UsageMap::row() const {
  return file_.at(address_.page, [this] {
    const ByteView bytes = DataPage(file_.page(address_.page)).row(address_.row);
    require(bytes.size() >= kInlineHead && bytes[0] <= 1, "this row is not a map of pages");
    return bytes;
  });
}

std::size_t UsageMap::rowOffset() const {
  return static_cast<std::size_t>(row().data() - file_.page(address_.page).data());
}

std::vector<PageNumber> UsageMap::bitPages() const {
  std::vector<PageNumber> pages;
  if (isInline()) return pages;
  const ByteView references = row();
  for (std::size_t at = 1; at + 4 <= references.size(); at += 4) {
    const std::uint32_t page = u32At(references, at);
    if (page != 0 && page < kMaximumPages) pages.push_back(page);
  }
  return pages;
}

/// How many runs of bits the map may have.
PageNumber UsageMap::windowCount(ByteView row) const {
  return isInline() ? 1 : static_cast<PageNumber>(std::min((row.size() - 1) / 4, kReferences));
}

/// A run of bits; nothing when the map has no such run.
std::optional<UsageMap::Window> UsageMap::window(ByteView row, PageNumber number) const {
  if (isInline()) {
    const std::uint32_t first = u32At(row, 1);
    if (first >= kMaximumPages) file_.fail(address_.page, "a map of pages starts past the largest page");
    return Window{first, static_cast<PageNumber>((row.size() - kInlineHead) * 8), address_.page,
                  rowOffset() + kInlineHead};
  }
  const std::uint32_t page = u32At(row, 1 + std::size_t{4} * number);
  if (page == 0 || page >= kMaximumPages) return std::nullopt;
  if (file_.page(page)[0] != static_cast<Byte>(PageType::kUsageBits)) {
    file_.fail(page, "this is not the page of usage bits that a map refers to");
  }
  return Window{number * kPagesPerBitPage, kPagesPerBitPage, page, kBitPageHead};
}

std::optional<UsageMap::Window> UsageMap::windowOf(PageNumber page) const {
  const ByteView bytes = row();
  const PageNumber number = isInline() ? 0 : page / kPagesPerBitPage;
  const auto found = number < windowCount(bytes) ? window(bytes, number) : std::nullopt;
  return found && page >= found->first && page - found->first < found->count ? found : std::nullopt;
}

bool UsageMap::contains(PageNumber page) const {
  const auto window = windowOf(page);
  return window && bitAt(ByteView(file_.page(window->page)).subspan(window->offset), page - window->first);
}

std::optional<PageNumber> UsageMap::next(PageNumber from) const {
  const ByteView bytes = row();
  for (PageNumber number = isInline() ? 0 : from / kPagesPerBitPage; number < windowCount(bytes); ++number) {
    const auto run = window(bytes, number);
    if (!run || run->first + run->count <= from) continue;
    const ByteView bits = ByteView(file_.page(run->page)).subspan(run->offset, run->count / 8);
    const auto bit = nextBit(bits, from > run->first ? from - run->first : 0);
    if (bit) return run->first + *bit;
  }
  return std::nullopt;
}

std::optional<PageNumber> UsageMap::previous(PageNumber from) const {
  const ByteView bytes = row();
  for (PageNumber number = windowCount(bytes); number-- > 0;) {
    const auto run = window(bytes, number);
    if (!run || run->first > from || run->count == 0) continue;
    const ByteView bits = ByteView(file_.page(run->page)).subspan(run->offset, run->count / 8);
    const auto bit = previousBit(bits, std::min(from - run->first, run->count - 1));
    if (bit) return run->first + *bit;
  }
  return std::nullopt;
}

void UsageMap::forEach(const std::function<void(PageNumber)>& action) const {
  for (auto page = next(0); page; page = next(*page + 1)) action(*page);
}

bool UsageMap::set(PageNumber page, bool value) {
  const auto window = windowOf(page);
  if (!window) return false;
  const PageNumber bit = page - window->first;
  const std::size_t at = window->offset + bit / 8;
  const auto mask = static_cast<Byte>(1u << (bit % 8));
  if (((file_.page(window->page)[at] & mask) != 0) == value) return true;
  Byte& byte = file_.change(window->page, std::array{ByteRange{at, 1}})[at];
  byte = static_cast<Byte>(value ? byte | mask : byte & ~mask);
  return true;
}

void UsageMap::remove(PageNumber page) { set(page, false); }

void UsageMap::add(PageNumber page, PageAllocator& allocator) {
  if (set(page, true)) return;
  if (isInline()) {
    if (moveWindow(page)) return;
    convertToReference(allocator);
    if (set(page, true)) return;
  }
  addBitPage(page, allocator);
  set(page, true);
}

bool UsageMap::moveWindow(PageNumber page) {
  const auto lowest = next(0);
  const auto highest = previous(kMaximumPages);
  const PageNumber first = std::min(lowest.value_or(page), page) & ~PageNumber{7};
  if (std::max(highest.value_or(page), page) - first >= window(row(), 0)->count) return false;
  std::vector<PageNumber> members;
  forEach([&members](PageNumber member) { members.push_back(member); });
  const std::size_t at = rowOffset();
  const ByteSpan bytes = ByteSpan(file_.change(address_.page)).subspan(at, row().size());
  std::fill(bytes.begin() + kInlineHead, bytes.end(), Byte{0});
  putU32(bytes, 1, first);
  members.push_back(page);
  for (const PageNumber member : members) set(member, true);
  return true;
}

void UsageMap::convertToReference(PageAllocator& allocator) {
  std::vector<PageNumber> members;
  forEach([&members](PageNumber member) { members.push_back(member); });
  const std::size_t size = row().size();
  if (size < kInlineMapRow) file_.fail(address_.page, "a map of pages is too short to grow");
  const std::size_t at = rowOffset();
  const ByteSpan bytes = ByteSpan(file_.change(address_.page)).subspan(at, size);
  std::fill(bytes.begin(), bytes.end(), Byte{0});
  bytes[0] = 1;
  for (const PageNumber member : members) {
    if (!windowOf(member)) addBitPage(member, allocator);
    set(member, true);
  }
}

void UsageMap::addBitPage(PageNumber page, PageAllocator& allocator) {
  const PageNumber bitPage = allocator.allocate();
  Page& bits = file_.change(bitPage);
  bits[0] = static_cast<Byte>(PageType::kUsageBits);
  bits[1] = 1;
  const std::size_t at = rowOffset() + 1 + std::size_t{4} * (page / kPagesPerBitPage);
  putU32(file_.change(address_.page), at, bitPage);
}

bool PageAllocator::isFree(PageNumber page) const {
  // Pages beyond the reach of a map in the row are new and therefore free.
  const auto window = freeMap_.windowOf(page);
  return window ? freeMap_.contains(page) : freeMap_.isInline();
}

PageNumber PageAllocator::allocate(PageNumber lowest) {
  const auto found = freeMap_.next(std::max(lowest, lowestFree_));
  const bool isNew = !found || *found >= file_.pageCount();
  const PageNumber page = isNew ? extend() : *found;
  if (lowest <= lowestFree_) lowestFree_ = page + 1;
  freeMap_.remove(page);
  file_.change(page).fill(0);
  return page;
}

/// A new page at the end of the file, still marked as free.
PageNumber PageAllocator::extend() {
  for (;;) {
    const PageNumber page = file_.append();
    coverNewPage(page);
    // Covering may have taken the new page for the map's own bits.
    if (freeMap_.contains(page)) return page;
  }
}

/// Makes sure that the map has a bit for a page just added to the file.
void PageAllocator::coverNewPage(PageNumber page) {
  if (freeMap_.windowOf(page) || lengthenRow(page)) return;
  if (freeMap_.isInline()) {
    convertToReference(page);
  } else {
    addFreeBits(page, page / kPagesPerBitPage);
    freeMap_.remove(page);
  }
}

bool PageAllocator::lengthenRow(PageNumber page) {
  if (!freeMap_.isInline()) return false;
  const SlotAddress address = freeMap_.address();
  const ByteView row = freeMap_.row();
  const PageNumber first = u32At(row, 1);
  if (page < first) file_.fail(address.page, "the map of free pages starts past the end of the file");
  const std::size_t wanted = kInlineHead + std::size_t{(page - first) / 32} * 4 + 4;
  if (!DataPage(file_.page(address.page)).canReplace(address.row, wanted)) return false;
  DataPageEditor editor(file_.change(address.page));
  Bytes longer(row.begin(), row.end());
  longer.resize(wanted, 0xFF);
  editor.replace(address.row, longer, 0);
  return true;
}

/// The bits move to pages of their own, of which `page` is the first.
void PageAllocator::convertToReference(PageNumber page) {
  const SlotAddress address = freeMap_.address();
  if (page >= kPagesPerBitPage) file_.fail(address.page, "the map of free pages does not cover the file");
  std::vector<PageNumber> members;
  freeMap_.forEach([&members](PageNumber member) { members.push_back(member); });
  const ByteSpan row = ByteSpan(file_.change(address.page)).subspan(freeMap_.rowOffset(), freeMap_.row().size());
  std::fill(row.begin(), row.end(), Byte{0});
  row[0] = 1;
  addFreeBits(page, 0);
  for (PageNumber used = 0; used <= page; ++used) freeMap_.remove(used);
  for (const PageNumber member : members) freeMap_.set(member, true);
}

void PageAllocator::addFreeBits(PageNumber page, PageNumber reference) {
  Page& bits = file_.change(page);
  bits[0] = static_cast<Byte>(PageType::kUsageBits);
  bits[1] = 1;
  std::fill(bits.begin() + kBitPageHead, bits.end(), Byte{0xFF});
  const SlotAddress address = freeMap_.address();
  putU32(file_.change(address.page), freeMap_.rowOffset() + 1 + std::size_t{4} * reference, page);
}

void PageAllocator::free(PageNumber page) {
  file_.change(page).fill(0);
  if (freeMap_.set(page, true)) lowestFree_ = std::min(lowestFree_, page);
}

}  // namespace orva::access
