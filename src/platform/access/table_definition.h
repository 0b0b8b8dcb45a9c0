#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/access/page_file.h"

namespace orva::access {

class PageAllocator;

/// One column of a table.
struct Column {
  std::string name = {};
  ColumnType type = ColumnType::kText;
  /// Identity of the column: its bit in the null mask. Never reused.
  std::uint16_t number = 0;
  /// Place among the variable columns of a row; means nothing for a fixed one.
  std::uint16_t variablePosition = 0;
  std::uint16_t ordinal = 0;
  std::uint16_t sortOrder = kGeneralSortOrder;
  Byte sortVersion = 0;
  Byte precision = 0;  // decimals only
  Byte scale = 0;      // decimals only
  Byte flags = column_flag::kAlways;
  Byte extendedFlags = 0;
  std::uint16_t fixedOffset = 0;
  /// Bytes: of a fixed column, or the most of a text or binary (2 a character).
  std::uint16_t length = 0;
  /// Pages of the column's own long values.
  SlotAddress ownedMap = {};
  SlotAddress roomMap = {};

  bool isFixed() const { return (flags & column_flag::kFixed) != 0; }
  bool isAutoNumber() const { return (flags & column_flag::kAutoNumber) != 0; }
  bool isText() const { return type == ColumnType::kText || type == ColumnType::kMemo; }
  bool isGeneralOrder() const { return sortOrder == kGeneralSortOrder && sortVersion == 0; }
  /// Room in the fixed area of a row.
  std::size_t fixedSize() const { return type == ColumnType::kBoolean ? 0 : length; }
};

struct IndexColumn {
  std::uint16_t number = 0;
  bool descending = false;
  bool operator==(const IndexColumn&) const = default;
};

/// An index tree: the columns, the pages, the rules.
struct RealIndex {
  std::vector<IndexColumn> columns = {};
  SlotAddress map = {};
  PageNumber root = 0;
  Byte flags = index_flag::kAlways;
  std::uint32_t builtEntries = 0;
  std::uint32_t distinctKeys = 0;

  bool isUnique() const { return (flags & index_flag::kUnique) != 0; }
  bool ignoresNulls() const { return (flags & index_flag::kIgnoreNulls) != 0; }
  bool refusesNulls() const { return (flags & index_flag::kNoNulls) != 0; }
};

enum class IndexKind : Byte { kOrdinary = 0, kPrimaryKey = 1, kRelationship = 2 };
enum class RelationshipSide : Byte { kNone = 0, kParent = 1, kChild = 2 };

/// A name for a real index, or one side of an enforced relationship.
struct LogicalIndex {
  static constexpr std::uint32_t kNoOther = 0xFFFFFFFF;

  std::string name = {};
  std::uint32_t number = 0;
  std::uint32_t realIndex = 0;
  RelationshipSide side = RelationshipSide::kNone;
  std::uint32_t otherNumber = kNoOther;
  PageNumber otherTable = 0;
  Byte cascadeUpdates = 4;
  Byte cascadeDeletes = 4;
  IndexKind kind = IndexKind::kOrdinary;
};

/// All that the definition pages of a table say.
struct TableDefinition {
  PageNumber page = 0;
  /// Pages after the first that the definition fills.
  std::vector<PageNumber> furtherPages = {};
  std::uint32_t rowCount = 0;
  std::uint32_t lastAutoNumber = 0;
  std::uint32_t autoNumberStep = 1;
  Byte kind = 'N';
  std::uint16_t columnsEver = 0;
  std::uint16_t variableEver = 0;
  SlotAddress ownedMap = {};
  SlotAddress roomMap = {};
  std::vector<Column> columns = {};
  std::vector<RealIndex> realIndexes = {};
  std::vector<LogicalIndex> logicalIndexes = {};

  /// Position in `columns`; names compare without regard to case.
  std::optional<std::size_t> findColumn(std::string_view name) const;
  std::optional<std::size_t> columnOfNumber(std::uint16_t number) const;
  const LogicalIndex* findIndex(std::string_view name) const;
  const LogicalIndex* findIndexNumber(std::uint32_t number) const;
  const LogicalIndex* primaryKey() const;
  bool hasLongValues() const;
};

/// Reads the definition that starts on `page`. Throws `AccessFileError`.
TableDefinition readTableDefinition(PageFile& file, PageNumber page);

/// The joined bytes of a definition, without the page prefixes of further pages.
Bytes encodeTableDefinition(const TableDefinition& definition);

/// Writes the definition over its pages; takes or frees further pages as it needs.
void writeTableDefinition(PageFile& file, PageAllocator& allocator, TableDefinition& definition);

/// Writes the numbers that change with the rows only.
void writeTableCounts(PageFile& file, const TableDefinition& definition);

}  // namespace orva::access
