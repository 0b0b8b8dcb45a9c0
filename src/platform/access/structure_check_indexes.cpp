#include <algorithm>

#include "platform/access/page_owners.h"

namespace orva::access {
namespace {

constexpr std::uint64_t kRowsBetweenTrims = 256;
constexpr std::size_t kDeepest = 24;

class TreeCheck {
 public:
  TreeCheck(AccessDatabase& database, Table& table, std::size_t index, PageOwners& owners)
      : file_(database.file()), table_(table), index_(index), owners_(owners), tree_(table.tree(index)) {}

  void run() {
    owners_.claimMap(table_.name(), tree_.map());
    walk(tree_.root(), 0, {});
    if (previousLeaf_ != 0 && IndexPageView(file_.page(previousLeaf_)).next() != 0) {
      fault(previousLeaf_, "the chain of leaves goes on after the last leaf");
    }
    std::sort(pages_.begin(), pages_.end());
    std::vector<PageNumber> listed;
    tree_.map().forEach([&listed](PageNumber page) { listed.push_back(page); });
    if (listed != pages_) fault(tree_.root(), "the map of the index lists other pages than the tree has");
    if (entries_ != expectedEntries()) {
      fault(tree_.root(), "the index has " + std::to_string(entries_) + " entries, there should be " +
                              std::to_string(expectedEntries()));
    }
  }

 private:
  const RealIndex& real() const { return table_.definition().realIndexes[index_]; }

  void fault(PageNumber page, const std::string& text) { owners_.fault(table_.name(), page, "index: " + text); }

  /// Walks a subtree; `upper` is the entry that its parent has for it (empty for a tail). Returns its last entry.
  Bytes walk(PageNumber page, std::size_t depth, const Bytes& upper) {
    require(depth < kDeepest && pages_.size() < file_.pageCount(), "the pages of an index form a ring");
    pages_.push_back(page);
    owners_.claim(table_.name(), page, "index");
    const IndexPageView content = file_.at(page, [&] { return IndexPageView(file_.page(page)); });
    checkHead(page, content);
    Bytes last;
    if (content.isLeaf()) {
      last = checkLeaf(page, content);
    } else {
      if (content.childCount() == 0) fault(page, "a node has no children");
      for (std::size_t i = 0; i < content.childCount(); ++i) {
        const Bytes entry = file_.at(page, [&] { return i < content.size() ? content.entry(i) : Bytes(); });
        last = walk(file_.at(page, [&] { return content.child(i); }), depth + 1, entry);
      }
    }
    if (!upper.empty() && upper != last) fault(page, "the parent names another last entry than the page has");
    return last;
  }

  void checkHead(PageNumber page, const IndexPageView& content) {
    if (content.table() != table_.definition().page) fault(page, "the page belongs to another table");
    if (u16At(file_.page(page), index_at::kFree) + content.used() != kIndexCapacity)
      fault(page, "the free space is wrong");
  }

  Bytes checkLeaf(PageNumber page, const IndexPageView& content) {
    if (content.previous() != previousLeaf_) fault(page, "the chain of leaves does not lead back");
    if (previousLeaf_ != 0 && IndexPageView(file_.page(previousLeaf_)).next() != page) {
      fault(page, "the chain of leaves leaves the page out");
    }
    previousLeaf_ = page;
    if (content.size() == 0 && page != tree_.root()) fault(page, "a leaf is empty");
    for (std::size_t i = 0; i < content.size(); ++i) {
      Bytes entry = file_.at(page, [&] { return content.entry(i); });
      if (!lastEntry_.empty() && compareEntries(lastEntry_, entry) >= 0) fault(page, "the entries are not in order");
      checkKey(page, IndexEntry::of(entry));
      lastEntry_ = std::move(entry);
      ++entries_;
    }
    return lastEntry_;
  }

  void checkKey(PageNumber page, const IndexEntry& entry) {
    if (!table_.rows().exists(entry.row)) {
      return fault(page, "an entry leads to row " + std::to_string(entry.row & 0xFF) + " of page " +
                             std::to_string(entry.row >> 8) + ", which is not there");
    }
    const Row row = rowFor(entry.row);
    if (!hasKnownOrder()) return;
    const auto key = indexKey(table_.definition(), real(), row);
    if (key && *key != entry.key && indexKey(table_.definition(), real(), row, DoubleLetters::kOnePlace) != entry.key) {
      fault(page, "the key of row " + std::to_string(entry.row & 0xFF) + " of page " + std::to_string(entry.row >> 8) +
                      " is not that of its columns");
    }
  }

  /// Only the index's columns are read.
  Row rowFor(RowId id) const {
    Row row(table_.definition().columns.size());
    for (const IndexColumn& part : real().columns) {
      const std::size_t column = *table_.definition().columnOfNumber(part.number);
      row[column] = table_.rows().cell(id, column);
    }
    return row;
  }

  bool hasKnownOrder() const {
    return std::all_of(real().columns.begin(), real().columns.end(), [this](const IndexColumn& part) {
      const Column& column = table_.definition().columns[*table_.definition().columnOfNumber(part.number)];
      return !column.isText() || column.isGeneralOrder();
    });
  }

  std::uint64_t expectedEntries() {
    if (expected_) return *expected_;
    std::uint64_t count = 0;
    std::uint64_t rows = 0;
    for (RowScan scan = table_.scan(); scan.next(); ++rows) {
      if (rows % kRowsBetweenTrims == 0) file_.trim();
      if (!real().ignoresNulls() || !allNull(table_.definition(), real(), rowFor(scan.row()))) ++count;
    }
    expected_ = count;
    return count;
  }

  PageFile& file_;
  Table& table_;
  std::size_t index_;
  PageOwners& owners_;
  const IndexTree& tree_;
  std::vector<PageNumber> pages_;
  PageNumber previousLeaf_ = 0;
  Bytes lastEntry_;
  std::uint64_t entries_ = 0;
  std::optional<std::uint64_t> expected_;
};

}  // namespace

void checkIndexes(AccessDatabase& database, Table& table, PageOwners& owners) {
  for (std::size_t i = 0; i < table.definition().realIndexes.size(); ++i) {
    owners.guard(table.name(), table.tree(i).root(), [&] { TreeCheck(database, table, i, owners).run(); });
    database.file().trim();
  }
}

}  // namespace orva::access
