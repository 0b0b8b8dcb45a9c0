#include "platform/access/table_definition.h"

#include <algorithm>

#include "platform/access/text_cell.h"
#include "platform/values/text.h"

namespace orva::access {
namespace {

/// Takes parts of a definition one after the other, never past its end.
class PartReader {
 public:
  PartReader(ByteView bytes, std::size_t at) : bytes_(bytes), at_(at) {}

  ByteView take(std::size_t size) {
    require(size <= bytes_.size() - at_, "the table definition is shorter than its parts");
    at_ += size;
    return bytes_.subspan(at_ - size, size);
  }
  std::string takeName() {
    const std::size_t size = u16At(take(2), 0);
    return toUtf8(utf16Of(take(size)));
  }
  std::uint16_t peekU16() const {
    require(bytes_.size() - at_ >= 2, "the table definition has no end mark");
    return u16At(bytes_, at_);
  }

 private:
  ByteView bytes_;
  std::size_t at_;
};

Bytes joinPages(PageFile& file, PageNumber first, std::vector<PageNumber>& further) {
  Bytes joined;
  for (PageNumber number = first; number != 0;) {
    const Page& page = file.page(number);
    if (page[0] != static_cast<Byte>(PageType::kDefinition)) file.fail(number, "this is not a table definition");
    const std::size_t prefix = number == first ? 0 : definition_at::kPrefix;
    append(joined, ByteView(page).subspan(prefix));
    if (number != first) further.push_back(number);
    if (further.size() > 64) file.fail(number, "the pages of the table definition form a ring");
    number = u32At(page, definition_at::kNextPage);
  }
  return joined;
}

Column readColumn(ByteView entry) {
  Column column{.type = static_cast<ColumnType>(entry[0]),
                .number = u16At(entry, 5),
                .variablePosition = u16At(entry, 7),
                .ordinal = u16At(entry, 9),
                .sortOrder = u16At(entry, 11),
                .sortVersion = entry[14],
                .flags = entry[15],
                .extendedFlags = entry[16],
                .fixedOffset = u16At(entry, 21),
                .length = u16At(entry, 23)};
  if (column.type == ColumnType::kDecimal) {
    column.precision = entry[11];
    column.scale = entry[12];
    column.sortOrder = kGeneralSortOrder;
    require(column.scale <= 28, "a decimal column has more than 28 decimals");
  }
  return column;
}

RealIndex readRealIndex(ByteView entry, ByteView counts) {
  RealIndex index{.map = slotAddressAt(entry, 34),
                  .root = u32At(entry, 38),
                  .flags = entry[46],
                  .builtEntries = u32At(counts, 0),
                  .distinctKeys = u32At(counts, 4)};
  for (std::size_t i = 0; i < kMaximumIndexColumns; ++i) {
    const std::uint16_t number = u16At(entry, 4 + 3 * i);
    if (number != 0xFFFF) index.columns.push_back({number, entry[6 + 3 * i] == 0});
  }
  require(!index.columns.empty(), "an index has no columns");
  return index;
}

LogicalIndex readLogicalIndex(ByteView entry) {
  return {.number = u32At(entry, 4),
          .realIndex = u32At(entry, 8),
          .side = static_cast<RelationshipSide>(entry[12]),
          .otherNumber = u32At(entry, 13),
          .otherTable = u32At(entry, 17),
          .cascadeUpdates = entry[21],
          .cascadeDeletes = entry[22],
          .kind = static_cast<IndexKind>(entry[23])};
}

void readLongValueMaps(PartReader& parts, TableDefinition& definition) {
  while (parts.peekU16() != 0xFFFF) {
    const ByteView entry = parts.take(kLongValueMapEntrySize);
    const auto column = definition.columnOfNumber(u16At(entry, 0));
    if (!column) continue;  // of a column dropped since
    definition.columns[*column].ownedMap = slotAddressAt(entry, 2);
    definition.columns[*column].roomMap = slotAddressAt(entry, 6);
  }
}

void checkReferences(const TableDefinition& definition) {
  for (const Column& column : definition.columns) {
    require(column.number < definition.columnsEver, "a column has a number that was never given out");
    require(column.isFixed() || column.variablePosition < definition.variableEver,
            "a column has a place among the variable columns that was never given out");
    require(!column.isFixed() || column.fixedOffset + column.fixedSize() <= kPageSize,
            "a column lies outside of the row");
  }
  for (const RealIndex& index : definition.realIndexes) {
    for (const IndexColumn& column : index.columns) {
      require(definition.columnOfNumber(column.number).has_value(), "an index uses a column that does not exist");
    }
  }
  for (const LogicalIndex& index : definition.logicalIndexes) {
    require(index.realIndex < definition.realIndexes.size(), "an index name stands for no index");
  }
}

TableDefinition decode(ByteView joined) {
  namespace at = definition_at;
  const std::uint32_t length = u32At(joined, at::kLength);
  require(length >= at::kIndexCounts && length <= joined.size(), "the table definition is longer than its pages");
  const ByteView bytes = joined.first(length);
  TableDefinition definition{.rowCount = u32At(bytes, at::kRows),
                             .lastAutoNumber = u32At(bytes, at::kLastAutoNumber),
                             .autoNumberStep = u32At(bytes, at::kAutoNumberStep),
                             .kind = bytes[at::kKind],
                             .columnsEver = u16At(bytes, at::kColumnsEver),
                             .variableEver = u16At(bytes, at::kVariableEver),
                             .ownedMap = slotAddressAt(bytes, at::kOwnedMap),
                             .roomMap = slotAddressAt(bytes, at::kRoomMap)};
  const std::size_t columns = u16At(bytes, at::kColumns);
  const std::size_t logical = u32At(bytes, at::kLogicalIndexes);
  const std::size_t real = u32At(bytes, at::kRealIndexes);
  require(columns <= kMaximumColumns && real <= 4 * kMaximumIndexes && logical <= 64 * kMaximumIndexes,
          "the table definition has more columns or indexes than the format allows");
  PartReader parts(bytes, at::kIndexCounts);
  const ByteView counts = parts.take(real * at::kIndexCountsSize);
  for (std::size_t i = 0; i < columns; ++i) definition.columns.push_back(readColumn(parts.take(kColumnEntrySize)));
  for (Column& column : definition.columns) column.name = parts.takeName();
  for (std::size_t i = 0; i < real; ++i) {
    definition.realIndexes.push_back(
        readRealIndex(parts.take(kRealIndexEntrySize), counts.subspan(i * at::kIndexCountsSize)));
  }
  for (std::size_t i = 0; i < logical; ++i) {
    definition.logicalIndexes.push_back(readLogicalIndex(parts.take(kLogicalIndexEntrySize)));
  }
  for (LogicalIndex& index : definition.logicalIndexes) index.name = parts.takeName();
  readLongValueMaps(parts, definition);
  checkReferences(definition);
  return definition;
}

}  // namespace

std::optional<std::size_t> TableDefinition::findColumn(std::string_view name) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (equalsNoCase(columns[i].name, name)) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> TableDefinition::columnOfNumber(std::uint16_t number) const {
  // Numbers are places as long as no column has been dropped.
  if (number < columns.size() && columns[number].number == number) return number;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].number == number) return i;
  }
  return std::nullopt;
}

const LogicalIndex* TableDefinition::findIndex(std::string_view name) const {
  const auto found = std::find_if(logicalIndexes.begin(), logicalIndexes.end(),
                                  [name](const LogicalIndex& index) { return equalsNoCase(index.name, name); });
  return found == logicalIndexes.end() ? nullptr : &*found;
}

const LogicalIndex* TableDefinition::findIndexNumber(std::uint32_t number) const {
  const auto found = std::find_if(logicalIndexes.begin(), logicalIndexes.end(),
                                  [number](const LogicalIndex& index) { return index.number == number; });
  return found == logicalIndexes.end() ? nullptr : &*found;
}

const LogicalIndex* TableDefinition::primaryKey() const {
  const auto found = std::find_if(logicalIndexes.begin(), logicalIndexes.end(),
                                  [](const LogicalIndex& index) { return index.kind == IndexKind::kPrimaryKey; });
  return found == logicalIndexes.end() ? nullptr : &*found;
}

bool TableDefinition::hasLongValues() const {
  return std::any_of(columns.begin(), columns.end(), [](const Column& column) { return isLongValue(column.type); });
}

TableDefinition readTableDefinition(PageFile& file, PageNumber page) {
  std::vector<PageNumber> further;
  const Bytes joined = joinPages(file, page, further);
  TableDefinition definition = file.at(page, [&joined] { return decode(joined); });
  definition.page = page;
  definition.furtherPages = std::move(further);
  return definition;
}

}  // namespace orva::access
