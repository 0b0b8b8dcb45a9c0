#include <algorithm>
#include <utility>

#include "platform/access/index_tree.h"

namespace orva::access {
namespace {

/// A leaf with fewer bytes than this moves its entries to its neighbour if that has the room.
constexpr std::size_t kSmallLeaf = kIndexCapacity / 5;
constexpr std::size_t kFullEnoughAfterMerge = kIndexCapacity * 4 / 5;
/// Room that a bulk-built page keeps for later entries.
constexpr std::size_t kBuildReserve = 256;
constexpr ByteRange kNeighbours{index_at::kPrevious, index_at::kTail - index_at::kPrevious};

}  // namespace

PageNumber IndexTree::createRoot(PageFile& file, PageAllocator& allocator, PageNumber table, SlotAddress map) {
  const PageNumber root = allocator.allocate();
  UsageMap(file, map).add(root, allocator);
  IndexPage(PageType::kIndexLeaf, table, 0).write(file.change(root), false);
  return root;
}

PageNumber IndexTree::newPage() {
  const PageNumber page = allocator_.allocate();
  map_.add(page, allocator_);
  return page;
}

void IndexTree::dropPage(PageNumber page) {
  latest_ = {};
  map_.remove(page);
  allocator_.free(page);
}

void IndexTree::write(PageNumber page, const IndexPage& content) {
  latest_ = {};
  content.write(file_.change(page), compresses(page));
}

bool IndexTree::isNewKeyAt(PageNumber leaf, const IndexPageView& content, std::size_t place, ByteView entry) const {
  return file_.at(leaf, [&] {
    const auto same = [&](std::size_t end) { return end != 0 && content.equals(end, entry, kRowIdSize); };
    return !same(place) && !same(content.endOfEntryAt(place));
  });
}

/// True when the key is a new one; nothing, with nothing done, when the entry may belong elsewhere or does not fit.
std::optional<bool> IndexTree::insertNearLatest(ByteView entry) {
  if (!latest_.isUsual) return std::nullopt;
  const PageNumber leaf = latest_.page;
  const IndexPageView content = view(leaf);
  const std::size_t place = file_.at(leaf, [&] { return content.placeOf(entry); });
  const bool isInside = place > 0 && (place < content.used() || (latest_.isOpen && content.next() == 0));
  if (!isInside || !LeafEditor::takes(content, entry)) {
    latest_.isUsual = false;
    return std::nullopt;
  }
  const bool isNewKey = isNewKeyAt(leaf, content, place, entry);
  insertIntoLeaf(leaf, content, place, entry);
  return isNewKey;
}

void IndexTree::noteLatest(const Path& path) {
  const PageNumber leaf = path.back().page;
  bool isOpen = true;
  for (std::size_t depth = 0; depth + 1 < path.size(); ++depth) isOpen = isOpen && path[depth].end == 0;
  latest_ = {.page = leaf, .isUsual = leaf == latest_.page, .isOpen = isOpen};
}

bool IndexTree::insert(IndexEntry entry) {
  ++version_;
  const Bytes bytes = std::move(entry).bytes();
  if (const auto isNewKey = insertNearLatest(bytes)) return *isNewKey;
  Path path = descend(bytes);
  noteLatest(path);
  const PageNumber leaf = path.back().page;
  const std::size_t place = path.back().place;
  const IndexPageView content = view(leaf);
  const bool isLast = place == content.used();
  const bool isNewKey = isNewKeyAt(leaf, content, place, bytes);
  if (LeafEditor::takes(content, bytes)) {
    insertIntoLeaf(leaf, content, place, bytes);
  } else {
    if (place == 0 && appendToLeaf(content.previous(), bytes)) return isNewKey;
    const std::size_t position = numberOf(path.back());
    IndexPage page = IndexPage::read(file_.page(leaf));
    page.insert(position, bytes);
    store(path, path.size() - 1, std::move(page), position);
    path = descend(bytes);
  }
  if (isLast && path.size() > 1) raiseLast(path, path.size() - 1, bytes);
  return isNewKey;
}

void IndexTree::insertIntoLeaf(PageNumber leaf, const IndexPageView& content, std::size_t place, ByteView entry) {
  const std::size_t used = content.used() + entry.size() - (content.used() == 0 ? 0 : content.prefix());
  LeafEditor(file_.change(leaf, LeafEditor::partsFrom(place, used)), content).insert(place, entry);
}

void IndexTree::eraseFromLeaf(PageNumber leaf, std::size_t place, std::size_t end) {
  const IndexPageView content = view(leaf);
  LeafEditor(file_.change(leaf, LeafEditor::partsFrom(place, content.used())), content).erase(place, end);
}

/// An entry between two leaves may stand in either: in the left one, when that has the room. Entries
/// of one key that arrive in the order of their rows would otherwise each split the page behind them.
bool IndexTree::appendToLeaf(PageNumber leaf, const Bytes& entry) {
  if (leaf == 0) return false;
  const IndexPageView content = view(leaf);
  const std::size_t end = content.used();
  if (end == 0) return false;
  const Bytes last = file_.at(leaf, [&] { return content.entryEndingAt(end); });
  if (!LeafEditor::takes(content, entry)) return false;
  insertIntoLeaf(leaf, content, end, entry);
  const Path path = descend(last);
  raiseLast(path, path.size() - 1, entry);
  return true;
}

/// Writes a page of the path after an entry came in at `insertedAt`.
void IndexTree::store(Path& path, std::size_t depth, IndexPage page, std::size_t insertedAt) {
  if (page.fits(compresses(path[depth].page))) return write(path[depth].page, page);
  if (depth == 0) {
    deepen(path, page);
    depth = 1;
    if (page.fits(true)) return write(path[depth].page, page);
  }
  split(path, depth, std::move(page), insertedAt);
}

/// The root's content moves to a new page, of which the root becomes the parent.
IndexTree::Path& IndexTree::deepen(Path& path, const IndexPage& root) {
  const PageNumber moved = newPage();
  IndexPage parent(PageType::kIndexNode, table_, static_cast<Byte>(root.level() + 1));
  parent.tail = moved;
  write(root_, parent);
  path[0].page = moved;
  path.putFirst({root_, 0, 0});
  return path;
}

/// Divides a page among itself and new ones to its right, and tells the parent.
void IndexTree::split(Path& path, std::size_t depth, IndexPage page, std::size_t insertedAt) {
  const Step& parentStep = path[depth - 1];
  const std::size_t child = numberOf(parentStep);
  IndexPage parent = IndexPage::read(file_.page(parentStep.page));
  const PageNumber follower = page.next;
  std::vector<IndexPage> parts = page.divide(insertedAt);
  parts.insert(parts.begin(), std::move(page));
  PageNumber place = path[depth].page;
  PageNumber before = parts.front().previous;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const bool isLast = i + 1 == parts.size();
    const PageNumber right = isLast ? follower : newPage();
    parts[i].previous = before;
    parts[i].next = right;
    if (!isLast) parent.insert(child + i, parts[i].giveLast(), place);
    write(place, parts[i]);
    if (isLast) parent.setChild(child + i, place);
    before = std::exchange(place, right);
  }
  relink(follower, before, std::nullopt);
  store(path, depth - 1, std::move(parent), child);
}

/// Gives a page other neighbours; no page, no effect.
void IndexTree::relink(PageNumber page, std::optional<PageNumber> previous, std::optional<PageNumber> next) {
  if (page == 0) return;
  Page& bytes = file_.change(page, std::array{kNeighbours});
  if (previous) putU32(bytes, index_at::kPrevious, *previous);
  if (next) putU32(bytes, index_at::kNext, *next);
}

/// After the last entry of a page changed: the nearest parent that names it follows.
void IndexTree::raiseLast(const Path& path, std::size_t depth, const Bytes& last) {
  for (; depth > 0; --depth) {
    const Step& step = path[depth - 1];
    const std::size_t end = step.end;
    if (end == 0) continue;  // the tail is not named
    const IndexPageView parent = view(step.page);
    if (file_.at(step.page, [&] { return parent.equals(end, last); })) return;
    const bool wasLast = end == parent.used() && parent.tail() == 0;
    if (const auto name = nameOf(parent, end, last.size())) {
      std::copy(last.begin(), last.end(), &file_.change(step.page, std::array{*name})[name->offset]);
      if (!wasLast) return;
      continue;
    }
    const std::size_t child = numberOf(step);
    IndexPage page = IndexPage::read(file_.page(step.page));
    page.replaceEntry(child, last);
    Path above = path;
    above.shorten(depth);
    store(above, depth - 1, std::move(page), child);
    if (!wasLast) return;
    return raiseLast(descend(last), depth - 1, last);
  }
}

Bytes IndexTree::lastEntry(PageNumber page) const {
  const IndexPageView leaf = view(edgeLeaf(page, true));
  if (leaf.size() == 0) file_.fail(page, "an index leaf below a node is empty");
  return leaf.entry(leaf.size() - 1);
}

bool IndexTree::erase(const IndexEntry& entry) {
  const Bytes bytes = entry.bytes();
  const Leaf found = leafFor(bytes);
  const PageNumber leaf = found.page;
  const IndexPageView& content = found.content;
  const std::size_t place = file_.at(leaf, [&] { return content.placeOf(bytes); });
  const std::size_t end = content.endOfEntryAt(place);
  if (end == 0 || file_.at(leaf, [&] { return content.entryEndingAt(end); }) != bytes) return false;
  ++version_;
  const bool wasLast = end == content.used();
  if (leaf == root_) {
    eraseFromLeaf(leaf, place, end);
    return true;
  }
  if (wasLast) {
    Path path = descend(bytes);
    eraseFromLeaf(leaf, place, end);
    if (place == 0) {
      removePage(path, path.size() - 1);
      return true;
    }
    raiseLast(path, path.size() - 1, view(leaf).entryEndingAt(place));
  } else {
    eraseFromLeaf(leaf, place, end);
  }
  mergeIfSmall(leaf);
  return true;
}

/// Unlinks an empty page from its neighbours and its parent and frees it.
void IndexTree::removePage(Path& path, std::size_t depth) {
  const PageNumber page = path[depth].page;
  const PageNumber previous = view(page).previous();
  const PageNumber next = view(page).next();
  relink(previous, std::nullopt, next);
  relink(next, previous, std::nullopt);
  dropPage(page);

  const Step step = path[depth - 1];
  const std::size_t child = numberOf(step);
  IndexPage parent = IndexPage::read(file_.page(step.page));
  const bool wasRightmost = child + 1 == parent.childCount();
  parent.eraseChild(child);
  if (parent.childCount() == 0) {
    if (depth == 1) return write(root_, IndexPage(PageType::kIndexLeaf, table_, 0));
    return removePage(path, depth - 1);
  }
  if (parent.childCount() == 1 && parent.tail != 0) {
    // An only child stands as an ordinary entry.
    const PageNumber only = parent.tail;
    parent.tail = 0;
    parent.insert(0, lastEntry(only), only);
  }
  const PageNumber rightmost = parent.child(parent.childCount() - 1);
  write(step.page, parent);
  if (wasRightmost && depth > 1) {
    path.shorten(depth);
    raiseLast(path, depth - 1, lastEntry(rightmost));
  }
  flattenRoot();
}

/// A root with one child takes that child's place.
void IndexTree::flattenRoot() {
  for (;;) {
    const IndexPageView root = view(root_);
    if (root.isLeaf() || root.childCount() != 1) return;
    const PageNumber child = root.child(0);
    IndexPage content = IndexPage::read(file_.page(child));
    if (!content.fits(false)) return;
    content.previous = content.next = 0;
    write(root_, content);
    dropPage(child);
  }
}

/// Moves the entries of a small leaf to its right neighbour under the same parent.
void IndexTree::mergeIfSmall(PageNumber leftPage) {
  const IndexPageView left = view(leftPage);
  if (left.used() >= kSmallLeaf) return;
  Path path = descend(left.entry(0));
  const Step step = path[path.size() - 2];
  const IndexPageView parent = view(step.page);
  const std::size_t child = numberOf(step);
  if (child + 1 >= parent.childCount()) return;
  const PageNumber rightPage = parent.child(child + 1);
  // Most neighbours are too full to take anything.
  if (view(rightPage).used() > kFullEnoughAfterMerge) return;
  IndexPage merged = IndexPage::read(file_.page(rightPage));
  for (std::size_t i = left.size(); i-- > 0;) merged.insert(0, left.entry(i));
  if (merged.usedBytes(false) > kFullEnoughAfterMerge) return;
  write(rightPage, merged);
  removePage(path, path.size() - 1);
}

void IndexTree::build(const std::vector<Bytes>& entries) {
  ++version_;
  if (entries.empty()) return;
  struct Built {
    Bytes last;
    PageNumber page;
  };
  std::vector<Built> level;
  IndexPage leaf(PageType::kIndexLeaf, table_, 0);
  std::size_t used = 0;
  const auto flush = [&](PageNumber previous) {
    const PageNumber page = newPage();
    leaf.previous = previous;
    relink(previous, std::nullopt, page);
    write(page, leaf);
    level.push_back({leaf.giveLast(), page});
    leaf = IndexPage(PageType::kIndexLeaf, table_, 0);
    used = 0;
  };
  for (const Bytes& entry : entries) {
    if (used + entry.size() > kIndexCapacity - kBuildReserve && leaf.size() > 0) {
      flush(level.empty() ? 0 : level.back().page);
    }
    leaf.insert(leaf.size(), entry);
    used += entry.size();
  }
  flush(level.empty() ? 0 : level.back().page);
  for (Byte depth = 1; level.size() > 1; ++depth) {
    std::vector<Built> above;
    IndexPage node(PageType::kIndexNode, table_, depth);
    used = 0;
    PageNumber previous = 0;
    for (std::size_t i = 0; i < level.size(); ++i) {
      const std::size_t size = level[i].last.size() + kChildSize;
      // A node closes when it is full, but never leaves a single child to the next.
      const bool full = used + size > kIndexCapacity - kBuildReserve && i + 2 < level.size();
      if (i + 1 < level.size() && !full) {
        node.insert(node.size(), level[i].last, level[i].page);
        used += size;
        continue;
      }
      node.tail = level[i].page;
      node.previous = previous;
      const PageNumber page = newPage();
      relink(previous, std::nullopt, page);
      write(page, node);
      previous = page;
      above.push_back({level[i].last, page});
      node = IndexPage(PageType::kIndexNode, table_, depth);
      used = 0;
    }
    level = std::move(above);
  }
  IndexPage top = IndexPage::read(file_.page(level[0].page));
  if (!top.fits(false)) {
    // A single compressed leaf that is too long without its prefix.
    IndexPage root(PageType::kIndexNode, table_, static_cast<Byte>(top.level() + 1));
    root.insert(0, level[0].last, level[0].page);
    return write(root_, root);
  }
  dropPage(level[0].page);
  write(root_, top);
}

void IndexTree::freeAll() {
  for (auto page = map_.next(0); page; page = map_.next(*page + 1)) dropPage(*page);
}

}  // namespace orva::access
