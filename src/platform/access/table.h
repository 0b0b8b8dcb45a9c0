#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/access/index_key.h"
#include "platform/access/index_tree.h"
#include "platform/access/row_reader.h"
#include "platform/access/table_properties.h"

namespace orva::access {

class Table;

/// Gives a table the other side of its relationships.
class TableLookup {
 public:
  TableLookup() = default;
  TableLookup(const TableLookup&) = delete;
  TableLookup& operator=(const TableLookup&) = delete;
  virtual ~TableLookup() = default;
  virtual Table& tableAt(PageNumber definition) = 0;
};

struct Change;

/// Is told of every change of a row, those of cascades included: of the row as it
/// still is, and as it has become. `changes` is null for a row that goes or comes.
class RowObserver {
 public:
  RowObserver() = default;
  RowObserver(const RowObserver&) = delete;
  RowObserver& operator=(const RowObserver&) = delete;
  virtual ~RowObserver() = default;
  virtual void rowChanging(const Table& table, RowId row, const std::vector<Change>* changes) = 0;
  virtual void rowChanged(const Table& table, RowId row, const std::vector<Change>* changes) = 0;
};

/// A new value of one column, by its position in the definition.
struct Change {
  std::size_t column = 0;
  Cell value = {};
};

/// The rows and indexes of one table. Changes belong to the transaction of the
/// page file: after an exception the caller rolls back. Rules are checked
/// before anything is changed; only cascades can fail in the middle.
class Table {
 public:
  Table(PageFile& file, PageAllocator& allocator, TableLookup& tables, std::string name, PageNumber definition);
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  const std::string& name() const { return name_; }
  const TableDefinition& definition() const { return definition_; }
  TableDefinition& editDefinition() {
    rules_.clear();
    return definition_;
  }
  const TableProperties& properties() const { return properties_; }
  void setProperties(TableProperties properties) {
    properties_ = std::move(properties);
    rules_.clear();
  }
  void setObserver(RowObserver* observer) { observer_ = observer; }
  /// Reads the definition again, after a rollback or a change of structure.
  void reload();

  /// The rows in ascending order of their identity.
  RowScan scan() const { return RowScan(file_, definition_, pages_->owned()); }
  const RowReader& rows() const { return reader_; }
  /// Shows text columns, by their positions in the definition, of every row. `visit` must not change the file.
  void walkTexts(std::vector<std::size_t> columns, const TextVisitor& visit) const;
  /// Between two rows of a long walk: keeps the memory of read pages small.
  void letGoOfPages() const { file_.trim(); }
  /// The tree of a real index, by its position in the definition.
  const IndexTree& tree(std::size_t realIndex) const { return *trees_[realIndex]; }
  IndexTree& editTree(std::size_t realIndex) { return *trees_[realIndex]; }
  LongValues& longValues() { return longValues_; }
  RowPages& pages() { return *pages_; }

  /// Adds a row: one cell a column, null where an autonumber is to be given.
  /// Throws `ProviderError`: `kUnspecified` for a repeated key, `kIntegrity`
  /// for a broken rule, `kDataOverflow` and `kTypeMismatch` for a wrong value.
  RowId insert(Row row);
  /// A row of nulls to be filled and inserted.
  Row emptyRow();
  void update(RowId row, const std::vector<Change>& changes);
  void remove(RowId row);

  /// The entries that an index over the rows would have, in order. Throws when
  /// the rows break its rules; `indexName` stands in the error.
  std::vector<Bytes> sortedEntries(const RealIndex& index, const std::string& indexName) const;

  /// The value that the last `insert` gave to an autonumber column.
  std::int64_t lastAutoNumber() const { return static_cast<std::int32_t>(definition_.lastAutoNumber); }

 private:
  struct KeyChange {
    std::size_t index;
    std::optional<IndexEntry> before;
    std::optional<IndexEntry> after;
  };

  /// What the properties say about a column.
  struct Rules {
    bool isRequired = false;
    bool allowsZeroLength = true;
  };

  void requireKnownTypes() const;
  void giveAutoNumbers(Row& row);
  void loadRules();
  void checkRules(std::size_t column, const Cell& cell) const;
  /// What a row with these cells writes into an index; nothing when it has no entry there.
  std::optional<Bytes> keyFor(const RealIndex& real, const Row& row) const;
  void checkUnique(std::size_t index, const Row& row, const Bytes& key, std::optional<RowId> except) const;
  bool uses(const RealIndex& index, const std::vector<Change>& changes) const;
  std::vector<KeyChange> keyChanges(RowId id, const Row& before, const Row& after,
                                    const std::vector<Change>& changes) const;
  void eraseKey(std::size_t index, const Row& row, RowId id);
  void applyKeys(RowId id, const Row& before, const std::vector<KeyChange>& keys);

  /// Makes cells of all columns or of those that change, then stores long values; refuses a row over the limit first.
  void storeCells(const Row& row, StoredCells& cells, const std::vector<Change>* changes);
  void encodeNew(const Row& row);
  void requireRowSize(std::size_t size) const;
  void storeLongValues(const std::vector<std::pair<std::size_t, Bytes>>& values, StoredCells& cells);
  void removeLongValue(std::size_t column, const StoredCells& cells);
  bool replaceNumbers(RowId id, const Row& after, const std::vector<Change>& changes);
  void encodeChanged(RowId id, const Row& after, const std::vector<Change>& changes);
  void storeRow(RowId id, ByteView bytes);
  void removeSlots(RowId id);
  Row keyRow(RowId id) const;

  void checkParents(const Row& row, const std::vector<Change>* changes) const;
  void checkChildrenBeforeUpdate(const Row& before, const Row& after);
  void cascadeUpdate(const Row& before, const Row& after);
  void releaseChildren(RowId id, const Row& row);

  PageFile& file_;
  PageAllocator& allocator_;
  TableLookup& tables_;
  std::string name_;
  TableDefinition definition_;
  TableProperties properties_;
  std::vector<Rules> rules_;           ///< one a column, after `loadRules`
  std::vector<std::size_t> numbered_;  ///< columns that are given a number or an identifier, likewise
  // Their memory serves one new row after another.
  Row spareRow_;
  StoredCells spareCells_;
  Bytes spareBytes_;
  LongValues longValues_;
  RowReader reader_;
  std::unique_ptr<RowPages> pages_;
  std::vector<std::unique_ptr<IndexTree>> trees_;
  std::vector<RowId> removing_;
  RowObserver* observer_ = nullptr;
};

/// How many different keys stand in sorted entries.
std::uint32_t countDistinctKeys(const std::vector<Bytes>& entries);

}  // namespace orva::access
