#include <algorithm>

#include "platform/access/table.h"

namespace orva::access {
namespace {

constexpr Byte kCascade = 1;
constexpr Byte kSetNull = 2;

/// Values of an index's columns in one row.
std::vector<Cell> valuesOf(const TableDefinition& definition, const RealIndex& index, const Row& row) {
  std::vector<Cell> values;
  for (const IndexColumn& part : index.columns) values.push_back(row[*definition.columnOfNumber(part.number)]);
  return values;
}

bool hasNull(const std::vector<Cell>& values) { return std::any_of(values.begin(), values.end(), isNull); }

/// The key that these values have in another table's index. Nothing when one
/// of them cannot be a value of that index.
std::optional<Bytes> keyOf(const TableDefinition& definition, const RealIndex& index, const std::vector<Cell>& values) {
  if (values.size() != index.columns.size()) return std::nullopt;
  Bytes key;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Column& column = definition.columns[*definition.columnOfNumber(index.columns[i].number)];
    try {
      if (!appendKeyPart(key, column, index.columns[i].descending, convertFor(column, values[i]))) return std::nullopt;
    } catch (const ProviderError&) {
      return std::nullopt;
    }
  }
  return key;
}

/// One side of a relationship, seen from the other.
struct OtherSide {
  Table& table;
  const LogicalIndex& logical;

  const RealIndex& index() const { return table.definition().realIndexes[logical.realIndex]; }
  const IndexTree& tree() const { return table.tree(logical.realIndex); }
  std::optional<Bytes> key(const std::vector<Cell>& values) const { return keyOf(table.definition(), index(), values); }
  std::vector<RowId> rowsWith(const Bytes& key) const {
    std::vector<RowId> rows;
    for (IndexCursor at = tree().lowerBound(key); !at.atEnd(); at.next()) {
      if (!std::equal(at.key().begin(), at.key().end(), key.begin(), key.end())) break;
      rows.push_back(at.row());
    }
    return rows;
  }
};

std::optional<OtherSide> otherSideOf(TableLookup& tables, const LogicalIndex& own, RelationshipSide side) {
  if (own.kind != IndexKind::kRelationship || own.side != side || own.otherTable == 0) return std::nullopt;
  Table& other = tables.tableAt(own.otherTable);
  const LogicalIndex* logical = other.definition().findIndexNumber(own.otherNumber);
  if (!logical) return std::nullopt;
  return OtherSide{other, *logical};
}

std::vector<Change> changesOf(const OtherSide& child, const std::vector<Cell>& values) {
  std::vector<Change> changes;
  for (std::size_t i = 0; i < values.size(); ++i) {
    changes.push_back({*child.table.definition().columnOfNumber(child.index().columns[i].number), values[i]});
  }
  return changes;
}

[[noreturn]] void refuseParentChange(const std::string& table, const std::string& child) {
  throw AccessFileError(provider_number::kIntegrity, "The row of table '" + table +
                                                         "' cannot be deleted or given another key, because rows of "
                                                         "table '" +
                                                         child + "' belong to it.");
}

}  // namespace

void Table::checkParents(const Row& row, const std::vector<Change>* changes) const {
  for (const LogicalIndex& own : definition_.logicalIndexes) {
    const RealIndex& index = definition_.realIndexes[own.realIndex];
    if (changes && !uses(index, *changes)) continue;
    const auto parent = otherSideOf(tables_, own, RelationshipSide::kChild);
    if (!parent) continue;
    const auto values = valuesOf(definition_, index, row);
    if (hasNull(values)) continue;
    const auto key = parent->key(values);
    // A row may be its own parent.
    const bool isOwn = &parent->table == this && valuesOf(definition_, parent->index(), row) == values;
    if (isOwn || (key && parent->tree().containsKey(*key))) continue;
    throw AccessFileError(provider_number::kIntegrity, "The row of table '" + name_ + "' belongs to no row of table '" +
                                                           parent->table.name() + "'.");
  }
}

void Table::checkChildrenBeforeUpdate(const Row& before, const Row& after) {
  for (const LogicalIndex& own : definition_.logicalIndexes) {
    const auto child = otherSideOf(tables_, own, RelationshipSide::kParent);
    if (!child || own.cascadeUpdates == kCascade) continue;
    const RealIndex& index = definition_.realIndexes[own.realIndex];
    const auto old = valuesOf(definition_, index, before);
    if (old == valuesOf(definition_, index, after) || hasNull(old)) continue;
    const auto key = child->key(old);
    if (key && child->tree().containsKey(*key)) refuseParentChange(name_, child->table.name());
  }
}

void Table::cascadeUpdate(const Row& before, const Row& after) {
  for (const LogicalIndex& own : std::vector<LogicalIndex>(definition_.logicalIndexes)) {
    const auto child = otherSideOf(tables_, own, RelationshipSide::kParent);
    if (!child || own.cascadeUpdates != kCascade) continue;
    const RealIndex& index = definition_.realIndexes[own.realIndex];
    const auto old = valuesOf(definition_, index, before);
    const auto values = valuesOf(definition_, index, after);
    if (old == values || hasNull(old)) continue;
    const auto key = child->key(old);
    if (!key) continue;
    for (const RowId row : child->rowsWith(*key)) child->table.update(row, changesOf(*child, values));
  }
}

void Table::releaseChildren(RowId id, const Row& row) {
  // A row that is on its way out counts no more as a child of itself, whatever happens.
  struct Leaving {
    std::vector<RowId>& rows;
    ~Leaving() { rows.pop_back(); }
  };
  removing_.push_back(id);
  const Leaving leaving{removing_};
  for (const LogicalIndex& own : std::vector<LogicalIndex>(definition_.logicalIndexes)) {
    const auto child = otherSideOf(tables_, own, RelationshipSide::kParent);
    if (!child) continue;
    const auto values = valuesOf(definition_, definition_.realIndexes[own.realIndex], row);
    const auto key = hasNull(values) ? std::nullopt : child->key(values);
    if (!key) continue;
    for (const RowId childRow : child->rowsWith(*key)) {
      const auto& busy = child->table.removing_;
      if (std::find(busy.begin(), busy.end(), childRow) != busy.end()) continue;
      if (own.cascadeDeletes == kCascade) {
        child->table.remove(childRow);
      } else if (own.cascadeDeletes == kSetNull) {
        child->table.update(childRow, changesOf(*child, std::vector<Cell>(values.size())));
      } else {
        refuseParentChange(name_, child->table.name());
      }
    }
  }
}

}  // namespace orva::access
