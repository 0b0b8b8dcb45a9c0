#include "platform/access/index_tree.h"

#include <algorithm>

namespace orva::access {
namespace {

/// A split may make the way one step longer.
constexpr std::size_t kDeepest = 24;

}  // namespace

Bytes IndexEntry::bytes() && {
  Bytes bytes = std::move(key);
  appendBigEndian(bytes, row, kRowIdSize);
  return bytes;
}

IndexEntry IndexEntry::of(ByteView bytes) {
  const std::size_t keySize = bytes.size() - kRowIdSize;
  return {Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(keySize)),
          bigEndianAt(bytes, keySize, kRowIdSize)};
}

IndexPageView IndexTree::view(PageNumber page) const {
  return file_.at(page, [&] { return IndexPageView(file_.page(page)); });
}

IndexTree::Path IndexTree::descend(ByteView wanted) const {
  Path path;
  for (PageNumber page = root_;;) {
    const IndexPageView content = view(page);
    std::size_t place = file_.at(page, [&] { return content.placeOf(wanted); });
    if (content.isLeaf()) {
      path.add({page, place, 0});
      return path;
    }
    if (path.size() >= kDeepest) file_.fail(page, "the pages of an index form a ring");
    const std::size_t last = content.used();
    // Without a tail the last entry leads on to whatever is greater.
    if (place == last && last != 0 && content.tail() == 0) place = content.ends().previous(last - 1);
    const std::size_t end = content.endOfEntryAt(place);
    path.add({page, place, end});
    const PageNumber child = file_.at(page, [&] { return end == 0 ? content.tail() : content.childEndingAt(end); });
    if (child == 0) file_.fail(page, "an index node has no children");
    page = child;
  }
}

PageNumber IndexTree::edgeLeaf(PageNumber from, bool rightmost) const {
  for (std::size_t depth = 0;; ++depth) {
    const IndexPageView content = view(from);
    if (content.isLeaf()) return from;
    if (content.childCount() == 0 || depth > kDeepest) file_.fail(from, "an index node has no children");
    from = file_.at(from, [&] { return content.child(rightmost ? content.childCount() - 1 : 0); });
  }
}

/// The leaf at the end of the path, for whoever need not know the path.
IndexTree::Leaf IndexTree::leafFor(ByteView wanted) const {
  PageNumber page = root_;
  for (std::size_t depth = 0;; ++depth) {
    const IndexPageView content = view(page);
    if (content.isLeaf()) return {page, content};
    if (depth >= kDeepest) file_.fail(page, "the pages of an index form a ring");
    const PageNumber child = file_.at(page, [&] { return content.childFor(wanted); });
    if (child == 0) file_.fail(page, "an index node has no children");
    page = child;
  }
}

IndexCursor IndexTree::lowerBound(ByteView wanted) const {
  IndexCursor cursor(*this);
  const Leaf leaf = leafFor(wanted);
  cursor.standAt(leaf.page, leaf.content, file_.at(leaf.page, [&] { return leaf.content.placeOf(wanted); }));
  return cursor;
}

IndexCursor IndexTree::before(ByteView wanted) const {
  IndexCursor cursor(*this);
  const Leaf found = leafFor(wanted);
  PageNumber leaf = found.page;
  std::size_t end = file_.at(leaf, [&] { return found.content.placeOf(wanted); });
  for (PageNumber steps = 0; end == 0; ++steps) {
    leaf = view(leaf).previous();
    if (leaf == 0 || steps > file_.pageCount()) return cursor;
    end = view(leaf).used();
  }
  cursor.standAt(leaf, view(leaf).ends().previous(end - 1));
  return cursor;
}

IndexCursor IndexTree::last() const {
  IndexCursor cursor(*this);
  const PageNumber leaf = edgeLeaf(root_, true);
  const std::size_t end = view(leaf).used();
  if (end > 0) cursor.standAt(leaf, view(leaf).ends().previous(end - 1));
  return cursor;
}

void IndexCursor::standAt(PageNumber page, std::size_t place) { standAt(page, tree_->view(page), place); }

void IndexCursor::standAt(PageNumber page, IndexPageView content, std::size_t place) {
  valid_ = false;
  version_ = tree_->version_;
  for (PageNumber steps = 0;; ++steps) {
    if (!content.isLeaf() || steps > tree_->file_.pageCount()) {
      tree_->file_.fail(page, "the chain of index leaves is broken");
    }
    end_ = content.endOfEntryAt(place);
    if (end_ != 0) {
      page_ = page;
      tree_->file_.at(page, [&] { content.copyEntryEndingAt(end_, entry_); });
      valid_ = true;
      return;
    }
    page = content.next();
    if (page == 0) return;
    content = tree_->view(page);
    place = 0;
  }
}

void IndexCursor::next() {
  if (version_ == tree_->version_) return standAt(page_, end_);
  // The tree has changed: look for the first entry after the one left behind.
  Bytes after = entry_;
  after.push_back(0);
  *this = tree_->lowerBound(after);
}

void IndexCursor::previous() {
  if (version_ == tree_->version_) {
    const EntryEnds ends = tree_->view(page_).ends();
    const std::size_t begin = ends.previous(end_ - 1);
    if (begin > 0) return standAt(page_, ends.previous(begin - 1));
  }
  const Bytes here = entry_;
  *this = tree_->before(here);
}

bool IndexTree::containsKey(ByteView key, std::optional<RowId> except) const {
  for (IndexCursor at = lowerBound(key); !at.atEnd(); at.next()) {
    if (!std::equal(at.key().begin(), at.key().end(), key.begin(), key.end())) return false;
    if (!except || at.row() != *except) return true;
  }
  return false;
}

std::optional<IndexEntry> IndexTree::findRow(RowId row) const {
  for (IndexCursor at = first(); !at.atEnd(); at.next()) {
    if (at.row() == row) return IndexEntry::of(at.bytes());
  }
  return std::nullopt;
}

}  // namespace orva::access
