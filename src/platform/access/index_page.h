#pragma once

#include <array>
#include <compare>
#include <cstring>
#include <optional>
#include <vector>

#include "platform/access/entry_ends.h"

namespace orva::access {

/// Order of two entries: byte by byte, a shorter one before its continuation.
std::strong_ordering compareEntries(ByteView left, ByteView right);

/// One page of an index tree, read without copying. Throws `Damage`.
class IndexPageView {
 public:
  explicit IndexPageView(ByteView page);

  bool isLeaf() const { return page_[0] == static_cast<Byte>(PageType::kIndexLeaf); }
  Byte level() const { return page_[index_at::kLevel]; }
  PageNumber table() const { return u32At(page_, index_at::kTable); }
  PageNumber previous() const { return u32At(page_, index_at::kPrevious); }
  PageNumber next() const { return u32At(page_, index_at::kNext); }
  /// Rightmost child of a node; 0 on leaves and on nodes without one.
  PageNumber tail() const { return u32At(page_, index_at::kTail); }
  std::size_t prefix() const { return prefix_; }

  std::size_t size() const { return ends_.count(); }
  /// The whole entry, with the shared prefix; on nodes without the child's number.
  Bytes entry(std::size_t i) const { return entryEndingAt(ends_.at(i)); }
  Bytes entryEndingAt(std::size_t end) const;
  /// Where the bytes of entries end, counted from the first entry.
  const EntryEnds& ends() const { return ends_; }
  /// Where the last entry ends; 0 on a page without entries.
  std::size_t used() const { return used_; }
  /// Where the first entry starts that is not less than `wanted`.
  std::size_t placeOf(ByteView wanted) const;
  /// End of the entry that starts at a place; 0 behind the last one.
  std::size_t endOfEntryAt(std::size_t place) const { return place < used_ ? ends_.next(place + 1) : 0; }
  /// The child of a node that `wanted` leads to; 0 when it has none.
  PageNumber childFor(ByteView wanted) const;
  /// Children of a node: those of the entries, then the tail.
  std::size_t childCount() const { return size() + (tail() != 0 ? 1 : 0); }
  PageNumber child(std::size_t i) const;
  PageNumber childEndingAt(std::size_t end) const;

  /// True when an entry begins as all entries of the page do; on a page without entries every one does.
  bool startsWithPrefix(ByteView entry) const {
    return used_ == 0 || std::memcmp(entry.data(), page_.data() + index_at::kEntries, prefix_) == 0;
  }
  void copyEntryEndingAt(std::size_t end, Bytes& into) const;
  /// Appends the whole entry that stands between two offsets.
  void appendEntry(std::size_t begin, std::size_t end, Bytes& into) const;
  /// True when the entry that ends at an offset has these bytes; with the last `except` left out.
  bool equals(std::size_t end, ByteView entry, std::size_t except = 0) const;

 private:
  /// The stored bytes of the entry that ends at an offset.
  ByteView stored(std::size_t end) const;
  ByteView stored(std::size_t begin, std::size_t end) const;
  /// Bytes behind an entry: the child's number on nodes.
  std::size_t trailing() const { return isLeaf() ? 0 : kChildSize; }

  ByteView page_;
  std::size_t prefix_;
  EntryEnds ends_;
  std::size_t used_;
};

/// Adds or removes one entry of a leaf in place, for as long as the page has room and
/// the entries go on sharing their prefix.
class LeafEditor {
 public:
  /// `view` is one of the page as it is.
  LeafEditor(ByteSpan page, const IndexPageView& view);
  /// True when the entry can come into the page as it is; if not, the page has to be written anew.
  static bool takes(const IndexPageView& view, ByteView entry);
  /// `place` is where the entry behind the new one starts.
  void insert(std::size_t place, ByteView entry);
  void erase(std::size_t place, std::size_t end);
  /// The parts of the page that change when entries from `place` on move, up to so many bytes in use before or after.
  static std::array<ByteRange, 3> partsFrom(std::size_t place, std::size_t used);

 private:
  void writeFree(std::size_t used);

  ByteSpan page_;
  std::size_t prefix_;
  std::size_t used_;
};

/// Where the name of the node's entry that ends at an offset stands, when another of so many bytes can take its place;
/// nothing when the page has to be written anew.
std::optional<ByteRange> nameOf(const IndexPageView& node, std::size_t end, std::size_t size);

/// One page of an index tree in a form that can be changed.
class IndexPage {
 public:
  IndexPage(PageType type, PageNumber table, Byte level) : type_(type), table_(table), level_(level) {}
  static IndexPage read(ByteView page);

  bool isLeaf() const { return type_ == PageType::kIndexLeaf; }
  Byte level() const { return level_; }
  std::size_t size() const { return entries_.size(); }
  /// Valid until another entry comes in.
  ByteView entry(std::size_t i) const { return ByteView(bytes_).subspan(entries_[i].offset, entries_[i].size); }
  void insert(std::size_t i, ByteView entry, PageNumber child = 0);
  void erase(std::size_t i) { entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(i)); }
  void replaceEntry(std::size_t i, ByteView entry);

  std::size_t childCount() const { return entries_.size() + (tail != 0 ? 1 : 0); }
  PageNumber child(std::size_t i) const { return i < entries_.size() ? entries_[i].child : tail; }
  void setChild(std::size_t i, PageNumber page) { (i < entries_.size() ? entries_[i].child : tail) = page; }
  /// Removes a child and, for the tail, makes the last entry's child the tail
  /// unless it is the only one left.
  void eraseChild(std::size_t i);

  /// Bytes that the entries fill; with a shared prefix when `compressed`.
  std::size_t usedBytes(bool compressed) const;
  bool fits(bool compressed) const { return usedBytes(compressed) <= kIndexCapacity; }
  void write(ByteSpan page, bool compressed) const;
  /// Moves the entries from `at` on to another page (and the tail with them).
  IndexPage splitOff(std::size_t at);
  /// Divides a page that is too full into pages that have room; this one becomes the first of
  /// them, and the others are returned. `insertedAt` is the entry that came in last.
  std::vector<IndexPage> divide(std::size_t insertedAt);
  /// The last entry, by which the parent of the left part of a divided page names it. It leaves
  /// a node, whose tail its child becomes; an only one stays.
  Bytes giveLast();

  PageNumber previous = 0;
  PageNumber next = 0;
  PageNumber tail = 0;

 private:
  std::size_t sharedPrefix() const;
  std::size_t middle() const;
  std::size_t dividingPoint(std::size_t insertedAt) const;

  struct Entry {
    std::size_t offset;  // in `bytes_`
    std::size_t size;
    PageNumber child;
  };

  PageType type_;
  PageNumber table_;
  Byte level_;
  /// The entries one behind the other as they came in; one that has left keeps its room.
  Bytes bytes_;
  std::vector<Entry> entries_;
};

}  // namespace orva::access
