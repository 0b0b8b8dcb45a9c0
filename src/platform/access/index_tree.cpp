#include "platform/access/index_tree.h"

#include <algorithm>

namespace orva::access {
namespace {

constexpr std::size_t kDeepest = 24;

}  // namespace

Bytes IndexEntry::bytes() const {
  Bytes bytes = key;
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
    const std::size_t position = file_.at(page, [&] { return content.lowerBound(wanted); });
    if (content.isLeaf()) {
      path.push_back({page, position});
      return path;
    }
    if (content.childCount() == 0) file_.fail(page, "an index node has no children");
    if (path.size() >= kDeepest) file_.fail(page, "the pages of an index form a ring");
    const std::size_t child = std::min(position, content.childCount() - 1);
    path.push_back({page, child});
    page = file_.at(page, [&] { return content.child(child); });
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

IndexCursor IndexTree::lowerBound(ByteView wanted) const {
  IndexCursor cursor(*this);
  const Step leaf = descend(wanted).back();
  cursor.standOn(leaf.page, leaf.child);
  return cursor;
}

IndexCursor IndexTree::before(ByteView wanted) const {
  IndexCursor cursor(*this);
  Step leaf = descend(wanted).back();
  for (PageNumber steps = 0; leaf.child == 0; ++steps) {
    const PageNumber previous = view(leaf.page).previous();
    if (previous == 0 || steps > file_.pageCount()) return cursor;
    leaf = {previous, view(previous).size()};
  }
  cursor.standOn(leaf.page, leaf.child - 1);
  return cursor;
}

IndexCursor IndexTree::last() const {
  IndexCursor cursor(*this);
  const PageNumber leaf = edgeLeaf(root_, true);
  const std::size_t size = view(leaf).size();
  if (size > 0) cursor.standOn(leaf, size - 1);
  return cursor;
}

void IndexCursor::standOn(PageNumber page, std::size_t position) {
  valid_ = false;
  version_ = tree_->version_;
  for (PageNumber steps = 0; page != 0; ++steps) {
    const IndexPageView content = tree_->view(page);
    if (!content.isLeaf() || steps > tree_->file_.pageCount()) {
      tree_->file_.fail(page, "the chain of index leaves is broken");
    }
    if (position < content.size()) {
      page_ = page;
      position_ = position;
      tree_->file_.at(page, [&] { content.copyEntry(position, entry_); });
      valid_ = true;
      return;
    }
    page = content.next();
    position = 0;
  }
}

void IndexCursor::next() {
  if (version_ == tree_->version_) return standOn(page_, position_ + 1);
  // The tree has changed: look for the first entry after the one left behind.
  Bytes after = entry_;
  after.push_back(0);
  *this = tree_->lowerBound(after);
}

void IndexCursor::previous() {
  if (version_ == tree_->version_ && position_ > 0) return standOn(page_, position_ - 1);
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
