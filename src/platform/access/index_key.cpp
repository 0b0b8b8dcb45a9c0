#include "platform/access/index_key.h"

#include <algorithm>
#include <bit>

namespace orva::access {
namespace {

constexpr Byte kNullFlag[] = {0x00, 0xFF};  // ascending, descending
constexpr Byte kValueFlag[] = {0x7F, 0x80};
constexpr std::size_t kGroup = 8;
constexpr Byte kGroupMark = 0x09;

void appendNumber(Bytes& key, std::uint64_t bits, std::size_t width, bool descending) {
  appendBigEndian(key, descending ? ~bits : bits, width);
}

/// Signed numbers order as unsigned ones when the sign bit is turned over.
std::uint64_t orderedInteger(std::int64_t value, std::size_t width) {
  return static_cast<std::uint64_t>(value) ^ std::uint64_t{1} << (8 * width - 1);
}

/// The same for fractions, whose negative values also order backwards.
std::uint64_t orderedFraction(std::uint64_t bits, std::size_t width) {
  const std::uint64_t sign = std::uint64_t{1} << (8 * width - 1);
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

std::size_t integerWidth(ColumnType type) { return type == ColumnType::kInteger ? 2 : 4; }

void appendFraction(Bytes& key, const Column& column, double value, bool descending) {
  if (column.type == ColumnType::kSingle) {
    const std::uint64_t bits = std::bit_cast<std::uint32_t>(static_cast<float>(value));
    return appendNumber(key, orderedFraction(bits, 4), 4, descending);
  }
  appendNumber(key, orderedFraction(std::bit_cast<std::uint64_t>(value), 8), 8, descending);
}

/// Groups of eight bytes; the last is filled with zeros and followed by its count.
void appendGroups(Bytes& key, ByteView bytes, bool descending) {
  const Byte turn = descending ? 0xFF : 0x00;
  for (std::size_t at = 0; at == 0 || at < bytes.size(); at += kGroup) {
    const std::size_t count = std::min(kGroup, bytes.size() - at);
    for (std::size_t i = 0; i < kGroup; ++i) {
      key.push_back(static_cast<Byte>((i < count ? bytes[at + i] : 0) ^ turn));
    }
    const bool isLast = at + kGroup >= bytes.size();
    key.push_back(isLast ? static_cast<Byte>(count ^ turn) : kGroupMark);
  }
}

/// The sign byte keeps its direction in a descending key; that is how the engine writes it.
void appendDecimal(Bytes& key, const Decimal& decimal, bool descending) {
  Bytes bytes{0};
  for (const std::uint32_t part : decimal.magnitude) appendBigEndian(bytes, part, 4);
  if (decimal.negative != descending) {
    for (Byte& byte : bytes) byte = static_cast<Byte>(~byte);
  }
  bytes[0] = decimal.negative ? 0x00 : 0xFF;
  append(key, bytes);
}

}  // namespace

bool appendKeyPart(Bytes& key, const Column& column, bool descending, const Cell& cell, DoubleLetters letters) {
  if (column.isText() && !column.isGeneralOrder() && !isNull(cell)) return false;
  if (isNull(cell) && column.type != ColumnType::kBoolean) {
    key.push_back(kNullFlag[descending ? 1 : 0]);
    return true;
  }
  key.push_back(kValueFlag[descending ? 1 : 0]);
  const auto* whole = std::get_if<std::int64_t>(&cell);
  if (whole && column.type == ColumnType::kByte) {
    appendNumber(key, static_cast<std::uint64_t>(*whole), 1, descending);
  } else if (whole) {
    const std::size_t width = integerWidth(column.type);
    appendNumber(key, orderedInteger(*whole, width), width, descending);
  } else if (const auto* money = std::get_if<Currency>(&cell)) {
    appendNumber(key, orderedInteger(money->units(), 8), 8, descending);
  } else if (const auto* date = std::get_if<DateTime>(&cell)) {
    appendNumber(key, orderedFraction(std::bit_cast<std::uint64_t>(date->days), 8), 8, descending);
  } else if (const auto* fraction = std::get_if<double>(&cell)) {
    appendFraction(key, column, *fraction, descending);
  } else if (const auto* text = std::get_if<std::string>(&cell)) {
    return appendTextKey(key, *text, descending, letters);
  } else if (const auto* guid = std::get_if<Guid>(&cell)) {
    appendGroups(key, guid->bytes, descending);
  } else if (const auto* bytes = std::get_if<Bytes>(&cell)) {
    appendGroups(key, *bytes, descending);
  } else if (const auto* decimal = std::get_if<Decimal>(&cell)) {
    appendDecimal(key, *decimal, descending);
  } else {
    const auto* yes = std::get_if<bool>(&cell);
    key.push_back((yes && *yes) != descending ? 0x00 : 0xFF);
  }
  return true;
}

std::optional<Bytes> indexKey(const TableDefinition& definition, const RealIndex& index, const Row& row,
                              DoubleLetters letters) {
  constexpr std::size_t kUsual = 64;
  Bytes key;
  key.reserve(kUsual);
  for (const IndexColumn& part : index.columns) {
    const std::size_t column = definition.columnOfNumber(part.number).value();
    if (!appendKeyPart(key, definition.columns[column], part.descending, row[column], letters)) return std::nullopt;
  }
  return key;
}

bool allNull(const TableDefinition& definition, const RealIndex& index, const Row& row) {
  return std::all_of(index.columns.begin(), index.columns.end(), [&](const IndexColumn& part) {
    return isNull(row[definition.columnOfNumber(part.number).value()]);
  });
}

bool anyNull(const TableDefinition& definition, const RealIndex& index, const Row& row) {
  return std::any_of(index.columns.begin(), index.columns.end(), [&](const IndexColumn& part) {
    return isNull(row[definition.columnOfNumber(part.number).value()]);
  });
}

}  // namespace orva::access
