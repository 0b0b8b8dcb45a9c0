#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/access/bytes.h"

namespace orva::access {

/// Constants of the Access 2000-2003 file format: page layout, offsets, codes and limits.

using PageNumber = std::uint32_t;

inline constexpr std::size_t kPageSize = 4096;
inline constexpr PageNumber kMaximumPages = 524'288;  // 2 GiB
using Page = std::array<Byte, kPageSize>;

enum class PageType : Byte { kHeader = 0, kData = 1, kDefinition = 2, kIndexNode = 3, kIndexLeaf = 4, kUsageBits = 5 };

inline constexpr PageNumber kGlobalMapPage = 1;
inline constexpr PageNumber kObjectsPage = 2;
inline constexpr PageNumber kAccessRightsPage = 3;
inline constexpr PageNumber kQueriesPage = 4;
inline constexpr PageNumber kRelationshipsPage = 5;

namespace header_at {
inline constexpr std::size_t kName = 4;
inline constexpr std::size_t kVersion = 20;
inline constexpr std::size_t kMasked = 24;
inline constexpr std::size_t kMaskedLength = 128;
inline constexpr std::size_t kFreeMap = 24;
inline constexpr std::size_t kSecondMap = 28;
inline constexpr std::size_t kSystemTables = 32;
inline constexpr std::size_t kCodePage = 60;
inline constexpr std::size_t kScramblingKey = 62;
inline constexpr std::size_t kPassword = 66;
inline constexpr std::size_t kPasswordLength = 40;
inline constexpr std::size_t kBuild = 106;
inline constexpr std::size_t kSortOrder = 110;
inline constexpr std::size_t kSortVersion = 113;
inline constexpr std::size_t kCreationDate = 114;
inline constexpr std::size_t kConstants = 152;
inline constexpr std::size_t kUserSlots = 3584;
}  // namespace header_at

/// Common to data pages, long-value pages and pages of usage maps.
namespace data_at {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kOwner = 4;
inline constexpr std::size_t kSlotCount = 12;
inline constexpr std::size_t kSlots = 14;
}  // namespace data_at
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"
inline constexpr std::uint16_t kSlotStart = 0x1FFF;
inline constexpr std::uint16_t kSlotMoved = 0x4000;   // holds a pointer to the row
inline constexpr std::uint16_t kSlotHidden = 0x8000;  // reached only through such a pointer
inline constexpr std::uint16_t kSlotDeleted = 0xC000;
inline constexpr std::size_t kMaximumSlots = 255;
inline constexpr std::size_t kMinimumRow = 4;
inline constexpr std::size_t kMaximumRow = 4060;

namespace definition_at {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kNextPage = 4;
inline constexpr std::size_t kPrefix = 8;
inline constexpr std::size_t kLength = 8;
inline constexpr std::size_t kMark = 12;
inline constexpr std::size_t kRows = 16;
inline constexpr std::size_t kLastAutoNumber = 20;
inline constexpr std::size_t kAutoNumberStep = 24;
inline constexpr std::size_t kKind = 40;
inline constexpr std::size_t kColumnsEver = 41;
inline constexpr std::size_t kVariableEver = 43;
inline constexpr std::size_t kColumns = 45;
inline constexpr std::size_t kLogicalIndexes = 47;
inline constexpr std::size_t kRealIndexes = 51;
inline constexpr std::size_t kOwnedMap = 55;
inline constexpr std::size_t kRoomMap = 59;
inline constexpr std::size_t kIndexCounts = 63;
inline constexpr std::size_t kIndexCountsSize = 12;
}  // namespace definition_at
inline constexpr std::size_t kColumnEntrySize = 25;
inline constexpr std::size_t kRealIndexEntrySize = 52;
inline constexpr std::size_t kLogicalIndexEntrySize = 28;
inline constexpr std::size_t kLongValueMapEntrySize = 10;
inline constexpr std::uint32_t kDefinitionMark = 1625;
inline constexpr std::uint32_t kIndexMark = 1923;
inline constexpr std::size_t kMaximumColumns = 255;
inline constexpr std::size_t kMaximumIndexes = 32;
inline constexpr std::size_t kMaximumIndexColumns = 10;
inline constexpr std::size_t kMaximumName = 64;
inline constexpr std::size_t kMaximumText = 255;
inline constexpr std::size_t kMaximumBinary = 510;

namespace column_flag {
inline constexpr Byte kFixed = 0x01;
inline constexpr Byte kAlways = 0x02;
inline constexpr Byte kAutoNumber = 0x04;
inline constexpr Byte kSystem = 0x10;
inline constexpr Byte kScrambled = 0x20;
inline constexpr Byte kAutoGuid = 0x40;
inline constexpr Byte kCompressed = 0x01;  // in the extended flags
}  // namespace column_flag

namespace index_flag {
inline constexpr Byte kUnique = 0x01;
inline constexpr Byte kIgnoreNulls = 0x02;
inline constexpr Byte kNoNulls = 0x08;
inline constexpr Byte kAlways = 0x80;
}  // namespace index_flag

namespace index_at {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kTable = 4;
inline constexpr std::size_t kPrevious = 12;
inline constexpr std::size_t kNext = 16;
inline constexpr std::size_t kTail = 20;
inline constexpr std::size_t kPrefix = 24;
inline constexpr std::size_t kLevel = 26;
inline constexpr std::size_t kEnds = 27;
inline constexpr std::size_t kEntries = 480;
}  // namespace index_at
inline constexpr std::size_t kIndexCapacity = kPageSize - index_at::kEntries;
inline constexpr std::size_t kRowIdSize = 4;
inline constexpr std::size_t kChildSize = 4;

inline constexpr std::size_t kInlineMapRow = 69;
inline constexpr PageNumber kPagesPerBitPage = (kPageSize - 4) * 8;

namespace long_value {
inline constexpr std::uint32_t kInline = 0x80000000;
inline constexpr std::uint32_t kSingle = 0x40000000;
inline constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
inline constexpr std::size_t kCell = 12;
inline constexpr std::size_t kLargestInline = 64;
inline constexpr std::size_t kLargestSingle = 4076;
inline constexpr std::size_t kChainPiece = 4072;
}  // namespace long_value

inline constexpr std::uint16_t kGeneralSortOrder = 1033;

/// Codes of the column types.
enum class ColumnType : Byte {
  kBoolean = 1,
  kByte = 2,
  kInteger = 3,
  kLong = 4,
  kCurrency = 5,
  kSingle = 6,
  kDouble = 7,
  kDate = 8,
  kBinary = 9,
  kText = 10,
  kOle = 11,
  kMemo = 12,
  kGuid = 15,
  kDecimal = 16,
  kInternal = 17
};

inline bool isLongValue(ColumnType type) { return type == ColumnType::kOle || type == ColumnType::kMemo; }

/// Where a usage map, a long value or a row lies: a slot of a data page.
struct SlotAddress {
  PageNumber page = 0;
  Byte row = 0;
  bool operator==(const SlotAddress&) const = default;
};

/// Pointers inside pages: one byte row, three bytes page.
inline SlotAddress slotAddressAt(ByteView bytes, std::size_t at) { return {u24At(bytes, at + 1), bytes[at]}; }
inline void putSlotAddress(ByteSpan bytes, std::size_t at, SlotAddress address) {
  bytes[at] = address.row;
  putU24(bytes, at + 1, address.page);
}

/// Identity of a row for its whole life; orders as the file does.
using RowId = std::uint32_t;
inline constexpr RowId rowIdOf(SlotAddress address) { return address.page << 8 | address.row; }
inline constexpr SlotAddress addressOf(RowId id) { return {id >> 8, static_cast<Byte>(id & 0xFF)}; }

}  // namespace orva::access
