#include "platform/access/schema_change.h"

#include <algorithm>

#include "platform/access/schema_rules.h"
#include "platform/values/text.h"

namespace orva::access {
namespace {

[[noreturn]] void refuse(const std::string& text) { throw AccessFileError(provider_number::kSyntaxOrExists, text); }

std::size_t requireColumnOf(const Table& table, std::string_view name) {
  const auto column = table.definition().findColumn(name);
  if (!column) refuse("Table '" + table.name() + "' has no column '" + std::string(name) + "'.");
  return *column;
}

bool usesColumn(const RealIndex& index, std::uint16_t number) {
  return std::any_of(index.columns.begin(), index.columns.end(),
                     [number](const IndexColumn& part) { return part.number == number; });
}

/// Every usage map that a table has.
std::vector<SlotAddress> mapsOf(const TableDefinition& definition) {
  std::vector<SlotAddress> maps = {definition.ownedMap, definition.roomMap};
  for (const RealIndex& index : definition.realIndexes) maps.push_back(index.map);
  for (const Column& column : definition.columns) {
    if (isLongValue(column.type)) maps.insert(maps.end(), {column.ownedMap, column.roomMap});
  }
  return maps;
}

}  // namespace

Table& SchemaChange::userTable(std::string_view name) {
  Table& table = database_.table(name);
  if (table.definition().kind != 'N') refuse("Table '" + table.name() + "' belongs to the database itself.");
  return table;
}

SlotAddress SchemaChange::newMap(TableDefinition& definition) {
  PageFile& file = database_.file();
  for (const SlotAddress& map : mapsOf(definition)) {
    if (map.page == 0 || DataPage(file.page(map.page)).owner() != 0) continue;
    if (DataPageEditor(file.change(map.page)).roomForRow() < kInlineMapRow) continue;
    return {map.page, DataPageEditor(file.change(map.page)).insert(UsageMap::emptyRow())};
  }
  const PageNumber page = database_.allocator().allocate();
  DataPageEditor::format(file.change(page), 0);
  return {page, DataPageEditor(file.change(page)).insert(UsageMap::emptyRow())};
}

void SchemaChange::removeMap(SlotAddress map) {
  if (map.page == 0) return;
  PageFile& file = database_.file();
  for (const PageNumber bits : UsageMap(file, map).bitPages()) database_.allocator().free(bits);
  DataPageEditor(file.change(map.page)).remove(map.row);
  const DataPage page(file.page(map.page));
  if (page.owner() == 0 && !page.hasLiveRows()) database_.allocator().free(map.page);
}

Column SchemaChange::layColumn(TableDefinition& definition, const NewColumn& column) {
  Column laid{.name = column.name,
              .type = column.type,
              .number = definition.columnsEver++,
              .variablePosition = definition.variableEver,
              .length = columnLength(column)};
  laid.ordinal = laid.number;
  if (isFixedType(column.type)) {
    laid.flags |= column_flag::kFixed;
    for (const Column& other : definition.columns) {
      const std::size_t end = other.fixedOffset + other.fixedSize();
      if (other.isFixed() && column.type != ColumnType::kBoolean && end > laid.fixedOffset) {
        laid.fixedOffset = static_cast<std::uint16_t>(end);
      }
    }
  } else {
    ++definition.variableEver;
  }
  if (column.isAutoNumber) {
    laid.flags |= column.type == ColumnType::kGuid ? column_flag::kAutoGuid : column_flag::kAutoNumber;
  }
  if (column.type == ColumnType::kText && column.isCompressed) laid.extendedFlags = column_flag::kCompressed;
  if (isLongValue(column.type)) {
    laid.ownedMap = newMap(definition);
    definition.columns.push_back(laid);  // so that the next map sees the page of this one
    laid.roomMap = newMap(definition);
    definition.columns.pop_back();
  }
  return laid;
}

void SchemaChange::setColumnProperties(TableProperties& properties, const NewColumn& column) {
  if (column.defaultValue) properties.setDefaultValue(column.name, *column.defaultValue);
  if (column.isRequired) properties.setRequired(column.name, true);
  if (column.type == ColumnType::kText || column.type == ColumnType::kMemo) {
    properties.setAllowsZeroLength(column.name, column.allowsZeroLength);
  }
}

void SchemaChange::storeProperties(Table& table, TableProperties properties) {
  const CatalogueObject* object = database_.catalogue().tableAt(table.definition().page);
  if (object) database_.catalogue().setProperties(*object, properties);
  table.setProperties(std::move(properties));
}

/// Writes a changed definition and notes the change in the catalogue.
void SchemaChange::finish(Table& table) {
  writeTableDefinition(database_.file(), database_.allocator(), table.editDefinition());
  table.reload();
  const CatalogueObject* object = database_.catalogue().tableAt(table.definition().page);
  if (object) database_.catalogue().touch(*object, currentMoment());
}

void SchemaChange::createTable(std::string_view name, const std::vector<NewColumn>& columns) {
  requireName(name, "table");
  if (database_.catalogue().findTable(name)) refuse("The table '" + std::string(name) + "' exists already.");
  if (columns.empty()) refuse("A table must have a column.");
  for (std::size_t i = 0; i < columns.size(); ++i) {
    requireColumn(columns[i]);
    for (std::size_t k = 0; k < i; ++k) {
      if (equalsNoCase(columns[i].name, columns[k].name)) refuse("Column '" + columns[i].name + "' stands twice.");
    }
  }
  if (columns.size() > kMaximumColumns) refuse("A table has at most 255 columns.");
  TableDefinition definition;
  definition.page = database_.allocator().allocate();
  definition.ownedMap = newMap(definition);
  definition.roomMap = newMap(definition);
  TableProperties properties;
  for (const NewColumn& column : columns) {
    definition.columns.push_back(layColumn(definition, column));
    setColumnProperties(properties, column);
  }
  requireRowFits(definition);
  writeTableDefinition(database_.file(), database_.allocator(), definition);
  database_.catalogue().add(name, ObjectType::kTable, static_cast<std::int32_t>(definition.page), currentMoment());
  storeProperties(database_.table(name), std::move(properties));
}

void SchemaChange::dropTable(std::string_view name) {
  Table& table = userTable(name);
  const TableDefinition definition = table.definition();
  for (const LogicalIndex& index : definition.logicalIndexes) {
    if (index.kind == IndexKind::kRelationship) {
      refuse("Table '" + table.name() + "' takes part in the relationship '" + index.name + "' and cannot be dropped.");
    }
  }
  for (std::size_t i = 0; i < definition.realIndexes.size(); ++i) table.editTree(i).freeAll();
  for (const Column& column : definition.columns) freeColumnPages(column);
  table.pages().freeAll();
  for (const RealIndex& index : definition.realIndexes) removeMap(index.map);
  removeMap(definition.ownedMap);
  removeMap(definition.roomMap);
  for (const PageNumber page : definition.furtherPages) database_.allocator().free(page);
  database_.allocator().free(definition.page);
  const CatalogueObject object = *database_.catalogue().findTable(name);
  database_.forget(definition.page);
  database_.catalogue().remove(object);
}

void SchemaChange::freeColumnPages(const Column& column) {
  if (!isLongValue(column.type) || column.ownedMap.page == 0) return;
  RowPages(database_.file(), database_.allocator(), kLongValueOwner, column.ownedMap, column.roomMap).freeAll();
  removeMap(column.ownedMap);
  removeMap(column.roomMap);
}

void SchemaChange::addColumn(std::string_view name, const NewColumn& column) {
  Table& table = userTable(name);
  requireColumn(column);
  if (table.definition().findColumn(column.name)) {
    refuse("Table '" + table.name() + "' already has a column '" + column.name + "'.");
  }
  TableDefinition definition = table.definition();
  if (definition.columnsEver >= kMaximumColumns) {
    refuse("A table has at most 255 columns, those that were dropped included.");
  }
  definition.columns.push_back(layColumn(definition, column));
  requireRowFits(definition);
  table.editDefinition() = std::move(definition);
  finish(table);
  TableProperties properties = table.properties();
  setColumnProperties(properties, column);
  storeProperties(table, std::move(properties));
}

void SchemaChange::dropColumn(std::string_view name, std::string_view columnName) {
  Table& table = userTable(name);
  const std::size_t position = requireColumnOf(table, columnName);
  TableDefinition& definition = table.editDefinition();
  const Column column = definition.columns[position];
  if (definition.columns.size() == 1) refuse("The only column of table '" + table.name() + "' cannot be dropped.");
  for (const LogicalIndex& index : definition.logicalIndexes) {
    if (!usesColumn(definition.realIndexes[index.realIndex], column.number)) continue;
    refuse("Column '" + column.name + "' is used by the index '" + index.name + "' and cannot be dropped.");
  }
  freeColumnPages(column);
  definition.columns.erase(definition.columns.begin() + static_cast<std::ptrdiff_t>(position));
  finish(table);
  TableProperties properties = table.properties();
  properties.removeColumn(column.name);
  storeProperties(table, std::move(properties));
}

}  // namespace orva::access
