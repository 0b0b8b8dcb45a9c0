#include "platform/access/index_page.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "platform/access/access_file_error.h"

namespace orva::access {

std::strong_ordering compareEntries(ByteView left, ByteView right) {
  const std::size_t common = std::min(left.size(), right.size());
  // Most entries differ at once, for which a call costs too much.
  if (common >= sizeof(std::uint64_t)) {
    const std::uint64_t ofLeft = bigEndianWord(left.data());
    const std::uint64_t ofRight = bigEndianWord(right.data());
    if (ofLeft != ofRight) return ofLeft <=> ofRight;
  }
  const int order = common == 0 ? 0 : std::memcmp(left.data(), right.data(), common);
  return order != 0 ? order <=> 0 : left.size() <=> right.size();
}

IndexPageView::IndexPageView(ByteView page)
    : page_(page), prefix_(u16At(page, index_at::kPrefix)), ends_(page), used_(ends_.last()) {
  require(page[0] == static_cast<Byte>(PageType::kIndexNode) || isLeaf(), "this is not a page of an index");
  const std::size_t first = ends_.next(0);
  require(first == 0 || prefix_ + trailing() <= first, "the shared prefix is longer than the first entry");
}

ByteView IndexPageView::stored(std::size_t end) const {
  require(end > 0, "the index page has fewer entries than it should");
  return stored(ends_.previous(end - 1), end);
}

ByteView IndexPageView::stored(std::size_t begin, std::size_t end) const {
  const std::size_t length = end - begin + (begin > 0 ? prefix_ : 0);
  require(length > kRowIdSize + trailing(), "an entry of the index page has no key");
  return page_.subspan(index_at::kEntries + begin, end - begin);
}

void IndexPageView::copyEntryEndingAt(std::size_t end, Bytes& into) const {
  require(end > 0, "the index page has fewer entries than it should");
  const std::size_t begin = ends_.previous(end - 1);
  into.clear();
  into.reserve(prefix_ + end - begin);
  appendEntry(begin, end, into);
}

void IndexPageView::appendEntry(std::size_t begin, std::size_t end, Bytes& into) const {
  const ByteView own = stored(begin, end);
  require(own.size() >= trailing(), "an entry of the index node has no child");
  if (begin != 0) append(into, page_.subspan(index_at::kEntries, prefix_));
  append(into, own.first(own.size() - trailing()));
}

bool IndexPageView::equals(std::size_t end, ByteView entry, std::size_t except) const {
  require(end > 0, "the index page has fewer entries than it should");
  const std::size_t begin = ends_.previous(end - 1);
  ByteView own = stored(begin, end);
  if (!isLeaf()) own = own.first(own.size() - std::min(own.size(), kChildSize));
  const std::size_t shared = begin == 0 ? 0 : prefix_;
  if (shared + own.size() != entry.size() || entry.size() < shared + except) return false;
  return std::memcmp(page_.data() + index_at::kEntries, entry.data(), shared) == 0 &&
         std::memcmp(own.data(), entry.data() + shared, own.size() - except) == 0;
}

Bytes IndexPageView::entryEndingAt(std::size_t end) const {
  Bytes bytes;
  copyEntryEndingAt(end, bytes);
  return bytes;
}

PageNumber IndexPageView::child(std::size_t i) const {
  const std::size_t end = ends_.at(i);
  return end == 0 ? tail() : childEndingAt(end);
}

PageNumber IndexPageView::childEndingAt(std::size_t end) const {
  const ByteView bytes = stored(end);
  require(bytes.size() >= kChildSize, "an entry of the index node has no child");
  return bigEndianAt(bytes, bytes.size() - kChildSize, kChildSize);
}

/// Halves the bytes rather than the entries, whose number need not be known for that.
std::size_t IndexPageView::placeOf(ByteView wanted) const {
  if (used_ == 0) return 0;
  const ByteView shared = page_.subspan(index_at::kEntries, prefix_);
  const auto order = compareEntries(shared, wanted.first(std::min(prefix_, wanted.size())));
  if (order != 0) return order < 0 ? used_ : 0;
  wanted = wanted.subspan(prefix_);
  std::size_t low = 0;
  std::size_t high = used_;
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    const std::size_t end = ends_.next(middle + 1);
    const std::size_t begin = ends_.previous(middle);
    // The first entry has the prefix itself.
    const ByteView own = stored(begin, end).subspan(begin == 0 ? prefix_ : 0);
    if (compareEntries(own.first(own.size() - trailing()), wanted) < 0) {
      low = end;
    } else {
      high = begin;
    }
  }
  return low;
}

PageNumber IndexPageView::childFor(ByteView wanted) const {
  const std::size_t end = endOfEntryAt(placeOf(wanted));
  if (end != 0) return childEndingAt(end);
  if (tail() != 0 || used_ == 0) return tail();
  return childEndingAt(used_);
}

LeafEditor::LeafEditor(ByteSpan page, const IndexPageView& view)
    : page_(page), prefix_(view.prefix()), used_(view.used()) {
  if (used_ == 0) putU16(page, index_at::kPrefix, prefix_ = 0);
}

bool LeafEditor::takes(const IndexPageView& view, ByteView entry) {
  const std::size_t prefix = view.used() == 0 ? 0 : view.prefix();
  return entry.size() >= prefix + kRowIdSize && view.used() + entry.size() - prefix <= kIndexCapacity &&
         view.startsWithPrefix(entry);
}

/// The numbers at the beginning, the ends of the entries, the entries.
std::array<ByteRange, 3> LeafEditor::partsFrom(std::size_t place, std::size_t used) {
  return {{{0, index_at::kEnds},
           {index_at::kEnds + place / 8, used / 8 - place / 8 + 1},
           {index_at::kEntries + place, used - place}}};
}

void LeafEditor::insert(std::size_t place, ByteView entry) {
  const std::size_t added = entry.size() - prefix_;
  Byte* const data = page_.data() + index_at::kEntries;
  // The old first entry loses the prefix, which the new first entry brings.
  const std::size_t keepFrom = place == 0 ? prefix_ : place;
  std::memmove(data + keepFrom + added, data + keepFrom, used_ - keepFrom);
  const ByteView stored = place == 0 ? entry : entry.subspan(prefix_);
  std::memcpy(data + place, stored.data(), stored.size());
  moveEntryEndsUp(page_, place, added, used_);
  setEntryEnd(page_, place + stored.size());
  writeFree(used_ + added);
}

void LeafEditor::erase(std::size_t place, std::size_t to) {
  // The second entry becomes the first and takes the prefix over.
  const std::size_t from = place == 0 && to < used_ ? prefix_ : place;
  Byte* const data = page_.data() + index_at::kEntries;
  std::memmove(data + from, data + to, used_ - to);
  moveEntryEndsDown(page_, from, to, used_);
  const EntryEnds ends(page_);
  const std::size_t left = ends.last();
  if (left == 0 || ends.previous(left - 1) == 0) putU16(page_, index_at::kPrefix, 0);
  writeFree(left);
}

void LeafEditor::writeFree(std::size_t used) { putU16(page_, index_at::kFree, kIndexCapacity - used); }

std::optional<ByteRange> nameOf(const IndexPageView& node, std::size_t end, std::size_t size) {
  const std::size_t begin = node.ends().previous(end - 1);
  if (node.prefix() != 0 || end - begin != size + kChildSize) return std::nullopt;
  return ByteRange{index_at::kEntries + begin, size};
}

IndexPage IndexPage::read(ByteView bytes) {
  const IndexPageView view(bytes);
  IndexPage page(static_cast<PageType>(bytes[0]), view.table(), view.level());
  page.previous = view.previous();
  page.next = view.next();
  page.tail = view.tail();
  // One entry more is on its way, as a rule.
  const std::size_t count = view.size() + 1;
  page.entries_.reserve(count);
  page.bytes_.reserve(2 * view.used() + count * view.prefix());
  std::size_t begin = 0;
  for (std::size_t end = view.endOfEntryAt(0); end != 0; end = view.endOfEntryAt(begin)) {
    const std::size_t offset = page.bytes_.size();
    view.appendEntry(begin, end, page.bytes_);
    page.entries_.push_back({offset, page.bytes_.size() - offset, view.isLeaf() ? 0 : view.childEndingAt(end)});
    begin = end;
  }
  return page;
}

void IndexPage::insert(std::size_t i, ByteView entry, PageNumber child) {
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(i), {bytes_.size(), entry.size(), child});
  append(bytes_, entry);
}

void IndexPage::replaceEntry(std::size_t i, ByteView entry) {
  entries_[i].offset = bytes_.size();
  entries_[i].size = entry.size();
  append(bytes_, entry);
}

void IndexPage::eraseChild(std::size_t i) {
  if (i < entries_.size()) return erase(i);
  tail = 0;
  if (entries_.size() < 2) return;
  tail = entries_.back().child;
  erase(entries_.size() - 1);
}

/// What the first and the last entry share, row and child left out.
std::size_t IndexPage::sharedPrefix() const {
  if (entries_.size() < 2 || !isLeaf()) return 0;
  const ByteView first = entry(0);
  const ByteView last = entry(entries_.size() - 1);
  const std::size_t most = std::min(first.size(), last.size()) - kRowIdSize;
  const auto differ = std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(most), last.begin());
  return static_cast<std::size_t>(differ.first - first.begin());
}

std::size_t IndexPage::usedBytes(bool compressed) const {
  std::size_t used = isLeaf() ? 0 : kChildSize * entries_.size();
  for (const Entry& entry : entries_) used += entry.size;
  const std::size_t saved = compressed && !entries_.empty() ? sharedPrefix() * (entries_.size() - 1) : 0;
  return used - saved;
}

void IndexPage::write(ByteSpan page, bool compressed) const {
  require(fits(compressed), "the entries of an index page do not fit on it");
  const std::size_t prefix = compressed ? sharedPrefix() : 0;
  std::fill(page.begin(), page.begin() + index_at::kEntries, Byte{0});
  page[0] = static_cast<Byte>(type_);
  page[1] = 1;
  putU32(page, index_at::kTable, table_);
  putU32(page, index_at::kPrevious, previous);
  putU32(page, index_at::kNext, next);
  putU32(page, index_at::kTail, tail);
  putU16(page, index_at::kPrefix, prefix);
  page[index_at::kLevel] = level_;
  std::size_t at = 0;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const ByteView bytes = entry(i).subspan(i == 0 ? 0 : prefix);
    std::copy(bytes.begin(), bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(index_at::kEntries + at));
    at += bytes.size();
    if (!isLeaf()) {
      for (std::size_t b = 0; b < kChildSize; ++b) {
        page[index_at::kEntries + at++] = static_cast<Byte>(entries_[i].child >> (8 * (kChildSize - 1 - b)));
      }
    }
    page[index_at::kEnds + at / 8] |= static_cast<Byte>(1u << (at % 8));
  }
  putU16(page, index_at::kFree, kIndexCapacity - at);
}

/// Where about half of the bytes are on either side.
std::size_t IndexPage::middle() const {
  const std::size_t half = usedBytes(false) / 2;
  std::size_t at = 0;
  for (std::size_t used = 0; at + 1 < entries_.size() && used < half; ++at) {
    used += entries_[at].size + (isLeaf() ? 0 : kChildSize);
  }
  return std::max<std::size_t>(at, 1);
}

std::size_t IndexPage::dividingPoint(std::size_t insertedAt) const {
  const std::size_t last = entries_.size() - 1;
  // Entries that arrive in order fill the pages: the last one starts a new page.
  if (next == 0 && insertedAt == last) return last;
  const std::size_t half = middle();
  if (!isLeaf() || (insertedAt != 0 && insertedAt != last)) return half;
  // One that does not share the prefix of all others may cost them all their room: it goes alone.
  IndexPage left = *this;
  const IndexPage right = left.splitOff(half);
  if (left.fits(true) && right.fits(true)) return half;
  return insertedAt == 0 ? 1 : last;
}

std::vector<IndexPage> IndexPage::divide(std::size_t insertedAt) {
  std::vector<IndexPage> parts;
  IndexPage right = splitOff(dividingPoint(insertedAt));
  if (!fits(true)) parts = divide(middle());
  parts.push_back(std::move(right));
  if (!parts.back().fits(true)) {
    std::vector<IndexPage> more = parts.back().divide(parts.back().middle());
    std::move(more.begin(), more.end(), std::back_inserter(parts));
  }
  return parts;
}

Bytes IndexPage::giveLast() {
  const ByteView given = entry(entries_.size() - 1);
  Bytes last(given.begin(), given.end());
  if (isLeaf() || entries_.size() == 1) return last;
  tail = entries_.back().child;
  erase(entries_.size() - 1);
  return last;
}

IndexPage IndexPage::splitOff(std::size_t at) {
  IndexPage right(type_, table_, level_);
  right.entries_.reserve(entries_.size() - at);
  right.bytes_.reserve(bytes_.size());
  for (std::size_t i = at; i < entries_.size(); ++i) right.insert(right.size(), entry(i), entries_[i].child);
  entries_.resize(at);
  right.tail = tail;
  tail = 0;
  return right;
}

}  // namespace orva::access
