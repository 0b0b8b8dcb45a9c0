#include <algorithm>

#include "platform/access/table_definition.h"
#include "platform/access/text_cell.h"
#include "platform/access/usage_map.h"

namespace orva::access {
namespace {

void appendName(Bytes& bytes, const std::string& name) {
  const Bytes text = bytesOf(toUtf16(name));
  appendUnsigned(bytes, text.size(), 2);
  append(bytes, text);
}

void appendColumn(Bytes& bytes, const Column& column) {
  Byte entry[kColumnEntrySize] = {};
  entry[0] = static_cast<Byte>(column.type);
  putU32(entry, 1, kDefinitionMark);
  putU16(entry, 5, column.number);
  putU16(entry, 7, column.variablePosition);
  putU16(entry, 9, column.ordinal);
  putU16(entry, 11, column.sortOrder);
  entry[14] = column.sortVersion;
  if (column.type == ColumnType::kDecimal) {
    entry[11] = column.precision;
    entry[12] = column.scale;
  }
  entry[15] = column.flags;
  entry[16] = column.extendedFlags;
  putU16(entry, 21, column.fixedOffset);
  putU16(entry, 23, column.length);
  append(bytes, entry);
}

void appendRealIndex(Bytes& bytes, const RealIndex& index) {
  Byte entry[kRealIndexEntrySize] = {};
  putU32(entry, 0, kIndexMark);
  for (std::size_t i = 0; i < kMaximumIndexColumns; ++i) {
    const bool used = i < index.columns.size();
    putU16(entry, 4 + 3 * i, used ? index.columns[i].number : 0xFFFF);
    entry[6 + 3 * i] = used && !index.columns[i].descending ? 1 : 0;
  }
  putSlotAddress(entry, 34, index.map);
  putU32(entry, 38, index.root);
  entry[46] = index.flags;
  append(bytes, entry);
}

void appendLogicalIndex(Bytes& bytes, const LogicalIndex& index) {
  Byte entry[kLogicalIndexEntrySize] = {};
  putU32(entry, 0, kDefinitionMark);
  putU32(entry, 4, index.number);
  putU32(entry, 8, index.realIndex);
  entry[12] = static_cast<Byte>(index.side);
  putU32(entry, 13, index.otherNumber);
  putU32(entry, 17, index.otherTable);
  entry[21] = index.cascadeUpdates;
  entry[22] = index.cascadeDeletes;
  entry[23] = static_cast<Byte>(index.kind);
  append(bytes, entry);
}

void appendLongValueMaps(Bytes& bytes, const TableDefinition& definition) {
  for (const Column& column : definition.columns) {
    if (!isLongValue(column.type)) continue;
    Byte entry[kLongValueMapEntrySize] = {};
    putU16(entry, 0, column.number);
    putSlotAddress(entry, 2, column.ownedMap);
    putSlotAddress(entry, 6, column.roomMap);
    append(bytes, entry);
  }
  appendUnsigned(bytes, 0xFFFF, 2);
}

/// Puts a part of the joined bytes on one page and names the next page.
void writePart(ByteSpan page, ByteView part, std::size_t offset, PageNumber next) {
  std::fill(page.begin(), page.end(), Byte{0});
  std::copy(part.begin(), part.end(), page.begin() + static_cast<std::ptrdiff_t>(offset));
  page[0] = static_cast<Byte>(PageType::kDefinition);
  page[1] = 1;
  const std::size_t unused = kPageSize - offset - part.size();
  putU16(page, definition_at::kFree, unused < definition_at::kPrefix ? 0 : unused - definition_at::kPrefix);
  putU32(page, definition_at::kNextPage, next);
}

}  // namespace

Bytes encodeTableDefinition(const TableDefinition& definition) {
  namespace at = definition_at;
  Bytes bytes(at::kIndexCounts, 0);
  putU32(bytes, at::kMark, kDefinitionMark);
  putU32(bytes, at::kRows, definition.rowCount);
  putU32(bytes, at::kLastAutoNumber, definition.lastAutoNumber);
  putU32(bytes, at::kAutoNumberStep, definition.autoNumberStep);
  bytes[at::kKind] = definition.kind;
  putU16(bytes, at::kColumnsEver, definition.columnsEver);
  putU16(bytes, at::kVariableEver, definition.variableEver);
  putU16(bytes, at::kColumns, definition.columns.size());
  putU32(bytes, at::kLogicalIndexes, definition.logicalIndexes.size());
  putU32(bytes, at::kRealIndexes, definition.realIndexes.size());
  putSlotAddress(bytes, at::kOwnedMap, definition.ownedMap);
  putSlotAddress(bytes, at::kRoomMap, definition.roomMap);
  for (const RealIndex& index : definition.realIndexes) {
    appendUnsigned(bytes, index.builtEntries, 4);
    appendUnsigned(bytes, index.distinctKeys, 4);
    appendUnsigned(bytes, 0, 4);
  }
  for (const Column& column : definition.columns) appendColumn(bytes, column);
  for (const Column& column : definition.columns) appendName(bytes, column.name);
  for (const RealIndex& index : definition.realIndexes) appendRealIndex(bytes, index);
  for (const LogicalIndex& index : definition.logicalIndexes) appendLogicalIndex(bytes, index);
  for (const LogicalIndex& index : definition.logicalIndexes) appendName(bytes, index.name);
  appendLongValueMaps(bytes, definition);
  putU32(bytes, at::kLength, bytes.size());
  return bytes;
}

void writeTableDefinition(PageFile& file, PageAllocator& allocator, TableDefinition& definition) {
  const Bytes joined = encodeTableDefinition(definition);
  constexpr std::size_t kFurther = kPageSize - definition_at::kPrefix;
  const std::size_t needed = joined.size() <= kPageSize ? 0 : (joined.size() - kPageSize + kFurther - 1) / kFurther;
  while (definition.furtherPages.size() < needed) definition.furtherPages.push_back(allocator.allocate());
  while (definition.furtherPages.size() > needed) {
    allocator.free(definition.furtherPages.back());
    definition.furtherPages.pop_back();
  }
  for (std::size_t i = 0; i <= needed; ++i) {
    const std::size_t begin = i == 0 ? 0 : kPageSize + (i - 1) * kFurther;
    const std::size_t offset = i == 0 ? 0 : definition_at::kPrefix;
    const auto part = ByteView(joined).subspan(begin, std::min(kPageSize - offset, joined.size() - begin));
    const PageNumber page = i == 0 ? definition.page : definition.furtherPages[i - 1];
    writePart(file.change(page), part, offset, i < needed ? definition.furtherPages[i] : 0);
  }
}

void writeTableCounts(PageFile& file, const TableDefinition& definition) {
  namespace at = definition_at;
  const std::size_t end = at::kIndexCounts + definition.realIndexes.size() * at::kIndexCountsSize;
  Page& page = file.change(definition.page, std::array{ByteRange{0, std::min(end, kPageSize)}});
  putU32(page, at::kRows, definition.rowCount);
  putU32(page, at::kLastAutoNumber, definition.lastAutoNumber);
  for (std::size_t i = 0; i < definition.realIndexes.size(); ++i) {
    const std::size_t place = at::kIndexCounts + i * at::kIndexCountsSize + 4;
    if (place + 4 <= kPageSize) putU32(page, place, definition.realIndexes[i].distinctKeys);
  }
}

}  // namespace orva::access
