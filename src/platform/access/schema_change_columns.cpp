#include <algorithm>

#include "platform/access/schema_change.h"
#include "platform/access/schema_rules.h"
#include "platform/values/text.h"

namespace orva::access {
namespace {

/// Text of another kind of column becomes a number, money or date where it is one.
Cell fromText(const Column& to, const std::string& text) {
  const Value value(text);
  if (trim(text).empty()) return {};
  if (to.type == ColumnType::kDate) {
    const auto date = value.toDate();
    return date ? Cell(DateTime{static_cast<double>(date->dayNumber())}) : Cell(text);
  }
  if (to.type == ColumnType::kBoolean) return value.toBoolean();
  const auto money = value.toCurrency();
  if (!money) return text;
  return to.type == ColumnType::kCurrency ? Cell(*money) : Cell(money->toDouble());
}

Cell converted(const Column& to, Cell cell) {
  const auto* text = std::get_if<std::string>(&cell);
  if (text && !to.isText()) cell = fromText(to, *text);
  try {
    return convertFor(to, std::move(cell));
  } catch (const AccessFileError& error) {
    throw AccessFileError(provider_number::kErrorsOccurred, error.what());
  }
}

/// The definition of an index, to make it again.
NewIndex sameIndexAgain(const TableDefinition& definition, const LogicalIndex& logical) {
  const RealIndex& real = definition.realIndexes[logical.realIndex];
  NewIndex index{.name = logical.name,
                 .isPrimary = logical.kind == IndexKind::kPrimaryKey,
                 .isUnique = real.isUnique(),
                 .ignoresNulls = real.ignoresNulls(),
                 .refusesNulls = real.refusesNulls()};
  for (const IndexColumn& part : real.columns) {
    index.columns.push_back({definition.columns[*definition.columnOfNumber(part.number)].name, part.descending});
  }
  return index;
}

}  // namespace

void SchemaChange::alterColumn(std::string_view name, std::string_view columnName, const NewColumn& given) {
  Table& table = userTable(name);
  const auto position = table.definition().findColumn(columnName);
  if (!position) {
    throw AccessFileError(provider_number::kSyntaxOrExists,
                          "Table '" + table.name() + "' has no column '" + std::string(columnName) + "'.");
  }
  const Column& column = table.definition().columns[*position];
  NewColumn changed = given;
  changed.name = column.name;
  requireColumn(changed);
  const bool sameType = column.type == changed.type;
  const bool isText = column.type == ColumnType::kText;
  const bool sameNumbering = column.isAutoNumber() == changed.isAutoNumber;
  if (sameType && sameNumbering && (!isText || column.length <= columnLength(changed))) {
    table.editDefinition().columns[*position].length = columnLength(changed);
    return finish(table);
  }
  replaceColumn(table, *position, changed);
}

/// A new column takes the place of the old one; the values are copied and the
/// indexes over the column made again.
void SchemaChange::replaceColumn(Table& table, std::size_t position, const NewColumn& changed) {
  const Column old = table.definition().columns[position];
  std::vector<NewIndex> indexes;
  for (const LogicalIndex& index : table.definition().logicalIndexes) {
    const auto& parts = table.definition().realIndexes[index.realIndex].columns;
    const bool uses =
        std::any_of(parts.begin(), parts.end(), [&old](const IndexColumn& part) { return part.number == old.number; });
    if (!uses) continue;
    if (index.kind == IndexKind::kRelationship) {
      throw AccessFileError(
          provider_number::kSyntaxOrExists,
          "Column '" + old.name + "' belongs to the relationship '" + index.name + "' and cannot be changed.");
    }
    indexes.push_back(sameIndexAgain(table.definition(), index));
  }
  for (const NewIndex& index : indexes) dropIndex(table.name(), index.name);
  TableDefinition& definition = table.editDefinition();
  if (definition.columnsEver >= kMaximumColumns) {
    throw AccessFileError(provider_number::kSyntaxOrExists,
                          "Table '" + table.name() + "' has had 255 columns and cannot change one any more.");
  }
  Column laid = layColumn(definition, changed);
  laid.ordinal = old.ordinal;
  definition.columns.insert(definition.columns.begin() + static_cast<std::ptrdiff_t>(position) + 1, std::move(laid));
  requireRowFits(definition);
  finish(table);
  copyValues(table, position, position + 1);
  freeColumnPages(old);
  table.editDefinition().columns.erase(table.editDefinition().columns.begin() + static_cast<std::ptrdiff_t>(position));
  finish(table);
  for (const NewIndex& index : indexes) createIndex(table.name(), index);
}

void SchemaChange::copyValues(Table& table, std::size_t from, std::size_t to) {
  // First every value is tried, so that a wrong one is found before the rows change.
  std::vector<RowId> rows;
  const Column& target = table.definition().columns[to];
  for (RowScan scan = table.scan(); scan.next();) {
    converted(target, table.rows().cell(scan.row(), from));
    rows.push_back(scan.row());
  }
  const TableProperties rules = table.properties();
  table.setProperties({});
  for (const RowId row : rows) {
    table.update(row, {{to, converted(target, table.rows().cell(row, from))}, {from, Cell()}});
  }
  table.setProperties(rules);
}

void SchemaChange::createIndex(std::string_view name, const NewIndex& index) {
  Table& table = userTable(name);
  requireIndex(table, index);
  TableDefinition& definition = table.editDefinition();
  RealIndex real;
  if (index.isUnique || index.isPrimary) real.flags |= index_flag::kUnique;
  if (index.ignoresNulls) real.flags |= index_flag::kIgnoreNulls;
  if (index.refusesNulls || index.isPrimary) real.flags |= index_flag::kNoNulls;
  for (const NewIndex::Part& part : index.columns) {
    real.columns.push_back({definition.columns[*definition.findColumn(part.column)].number, part.descending});
  }
  const auto equal = std::find_if(
      definition.realIndexes.begin(), definition.realIndexes.end(),
      [&real](const RealIndex& other) { return other.columns == real.columns && other.flags == real.flags; });
  LogicalIndex logical{.name = index.name,
                       .realIndex = static_cast<std::uint32_t>(equal - definition.realIndexes.begin()),
                       .kind = index.isPrimary ? IndexKind::kPrimaryKey : IndexKind::kOrdinary};
  for (const LogicalIndex& other : definition.logicalIndexes) {
    logical.number = std::max(logical.number, other.number + 1);
  }
  if (equal == definition.realIndexes.end()) {
    const std::vector<Bytes> entries = table.sortedEntries(real, index.name);
    real.map = newMap(definition);
    real.root = IndexTree::createRoot(database_.file(), database_.allocator(), definition.page, real.map);
    IndexTree(database_.file(), database_.allocator(), definition.page, real).build(entries);
    real.distinctKeys = countDistinctKeys(entries);
    definition.realIndexes.push_back(std::move(real));
  }
  const auto after =
      std::find_if(definition.logicalIndexes.begin(), definition.logicalIndexes.end(),
                   [&logical](const LogicalIndex& other) { return compareNoCase(other.name, logical.name) > 0; });
  definition.logicalIndexes.insert(after, std::move(logical));
  finish(table);
}

void SchemaChange::dropIndex(std::string_view name, std::string_view indexName) {
  Table& table = userTable(name);
  TableDefinition& definition = table.editDefinition();
  const LogicalIndex* found = definition.findIndex(indexName);
  if (!found) {
    throw AccessFileError(provider_number::kSyntaxOrExists,
                          "Table '" + table.name() + "' has no index '" + std::string(indexName) + "'.");
  }
  const std::uint32_t real = found->realIndex;
  for (const LogicalIndex& other : definition.logicalIndexes) {
    if (other.realIndex != real || other.kind != IndexKind::kRelationship) continue;
    throw AccessFileError(provider_number::kSyntaxOrExists, "The index '" + std::string(indexName) +
                                                                "' serves the relationship '" + other.name +
                                                                "' and cannot be dropped.");
  }
  definition.logicalIndexes.erase(definition.logicalIndexes.begin() + (found - definition.logicalIndexes.data()));
  const bool stillUsed = std::any_of(definition.logicalIndexes.begin(), definition.logicalIndexes.end(),
                                     [real](const LogicalIndex& other) { return other.realIndex == real; });
  if (!stillUsed) removeRealIndex(table, real);
  finish(table);
}

void SchemaChange::removeRealIndex(Table& table, std::size_t index) {
  TableDefinition& definition = table.editDefinition();
  table.editTree(index).freeAll();
  removeMap(definition.realIndexes[index].map);
  definition.realIndexes.erase(definition.realIndexes.begin() + static_cast<std::ptrdiff_t>(index));
  for (LogicalIndex& other : definition.logicalIndexes) {
    if (other.realIndex > index) --other.realIndex;
  }
}

}  // namespace orva::access
