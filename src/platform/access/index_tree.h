#pragma once

#include <algorithm>
#include <array>
#include <optional>

#include "platform/access/index_page.h"
#include "platform/access/table_definition.h"
#include "platform/access/usage_map.h"

namespace orva::access {

/// Key and row of one index entry.
struct IndexEntry {
  Bytes key;
  RowId row = 0;

  /// As stored in leaves: the key, then page and row, most significant byte first.
  Bytes bytes() &&;
  Bytes bytes() const& { return IndexEntry(*this).bytes(); }
  static IndexEntry of(ByteView bytes);
};

class IndexTree;

/// A place in the order of an index. It stays right when the index changes: it
/// goes on after (or before) the entry on which it stands.
class IndexCursor {
 public:
  bool atEnd() const { return !valid_; }
  /// The entry's bytes, and its parts.
  const Bytes& bytes() const { return entry_; }
  ByteView key() const { return ByteView(entry_).first(entry_.size() - kRowIdSize); }
  RowId row() const { return bigEndianAt(entry_, entry_.size() - kRowIdSize, kRowIdSize); }
  void next();
  void previous();

 private:
  friend class IndexTree;
  explicit IndexCursor(const IndexTree& tree) : tree_(&tree) {}
  /// On the entry that starts at a place of a leaf, or the first one on the leaves behind it.
  void standAt(PageNumber page, std::size_t place);
  void standAt(PageNumber page, IndexPageView content, std::size_t place);

  const IndexTree* tree_;
  std::uint64_t version_ = 0;
  PageNumber page_ = 0;
  std::size_t end_ = 0;  ///< of the entry on its page
  Bytes entry_;
  bool valid_ = false;
};

/// The B-tree of one real index.
class IndexTree {
 public:
  IndexTree(PageFile& file, PageAllocator& allocator, PageNumber table, const RealIndex& index)
      : file_(file), allocator_(allocator), table_(table), root_(index.root), map_(file, index.map) {}

  /// First entry >= `wanted` (bytes of a key or of a whole entry).
  IndexCursor lowerBound(ByteView wanted) const;
  /// Last entry < `wanted`.
  IndexCursor before(ByteView wanted) const;
  IndexCursor first() const { return lowerBound({}); }
  IndexCursor last() const;
  /// True when an entry has exactly this key; `except` is a row that does not count.
  bool containsKey(ByteView key, std::optional<RowId> except = std::nullopt) const;

  /// Returns true when no entry with the same key stands beside the new one.
  bool insert(IndexEntry entry);
  /// Returns false when there is no such entry.
  bool erase(const IndexEntry& entry);
  /// Finds the key that the index has for a row, whatever it is: reads all leaves.
  std::optional<IndexEntry> findRow(RowId row) const;

  /// Writes an empty tree: one leaf without entries.
  static PageNumber createRoot(PageFile& file, PageAllocator& allocator, PageNumber table, SlotAddress map);
  /// Fills an empty tree with entries in ascending order.
  void build(const std::vector<Bytes>& entries);
  void freeAll();

  PageNumber root() const { return root_; }
  /// The pages were changed past this object; cursors look for their place anew.
  void noteChange() {
    ++version_;
    latest_ = {};
  }
  const UsageMap& map() const { return map_; }

 private:
  friend class IndexCursor;
  struct Step {
    PageNumber page;
    std::size_t place;  // where the entry starts that leads on, or the first one of a leaf that is not less
    std::size_t end;    // of the entry that leads on; 0 for a tail and for leaves
  };
  struct Leaf {
    PageNumber page;
    IndexPageView content;
  };
  /// The way from the root down to a leaf.
  class Path {
   public:
    static constexpr std::size_t kLongest = 26;
    std::size_t size() const { return size_; }
    Step& operator[](std::size_t depth) { return steps_[depth]; }
    const Step& operator[](std::size_t depth) const { return steps_[depth]; }
    const Step& back() const { return steps_[size_ - 1]; }
    void add(Step step) { steps_[size_++] = step; }
    void shorten(std::size_t size) { size_ = size; }
    void putFirst(Step step) {
      std::move_backward(steps_.begin(), steps_.begin() + size_, steps_.begin() + size_ + 1);
      steps_[0] = step;
      ++size_;
    }

   private:
    std::array<Step, kLongest> steps_;
    std::uint32_t size_ = 0;
  };

  /// The leaf at which the last entry came in, so that one that belongs between two of its entries need not look for
  /// it from the root. Forgotten when a page is written anew or leaves the tree.
  struct LatestLeaf {
    PageNumber page = 0;
    bool isUsual = false;  ///< the entry before came in there too
    bool isOpen = false;   ///< no parent names its last entry
  };

  IndexPageView view(PageNumber page) const;
  std::optional<bool> insertNearLatest(ByteView entry);
  void noteLatest(const Path& path);
  Path descend(ByteView wanted) const;
  Leaf leafFor(ByteView wanted) const;
  PageNumber edgeLeaf(PageNumber from, bool rightmost) const;
  std::size_t numberOf(const Step& step) const { return view(step.page).ends().countUpTo(step.place); }
  bool isNewKeyAt(PageNumber leaf, const IndexPageView& content, std::size_t place, ByteView entry) const;
  PageNumber newPage();
  void dropPage(PageNumber page);
  void write(PageNumber page, const IndexPage& content);
  bool compresses(PageNumber page) const { return page != root_; }

  bool appendToLeaf(PageNumber leaf, const Bytes& entry);
  void store(Path& path, std::size_t depth, IndexPage page, std::size_t insertedAt);
  void split(Path& path, std::size_t depth, IndexPage page, std::size_t insertedAt);
  Path& deepen(Path& path, const IndexPage& root);
  /// `content` is the leaf as it is.
  void insertIntoLeaf(PageNumber leaf, const IndexPageView& content, std::size_t place, ByteView entry);
  void eraseFromLeaf(PageNumber leaf, std::size_t place, std::size_t end);
  void relink(PageNumber page, std::optional<PageNumber> previous, std::optional<PageNumber> next);
  void raiseLast(const Path& path, std::size_t depth, const Bytes& last);
  Bytes lastEntry(PageNumber page) const;
  void removePage(Path& path, std::size_t depth);
  void flattenRoot();
  void mergeIfSmall(PageNumber leftPage);

  PageFile& file_;
  PageAllocator& allocator_;
  PageNumber table_;
  PageNumber root_;
  UsageMap map_;
  std::uint64_t version_ = 0;
  LatestLeaf latest_;
};

}  // namespace orva::access
