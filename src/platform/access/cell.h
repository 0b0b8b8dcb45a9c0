#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/access/table_definition.h"
#include "platform/values/currency.h"

namespace orva::access {

/// A date with its time of day, kept as the file keeps it: days since
/// 30 December 1899. Before that day the fraction still counts forward.
struct DateTime {
  double days = 0;
  bool operator==(const DateTime&) const = default;
};

/// A replication id in the order in which it is written as text.
struct Guid {
  std::array<Byte, 16> bytes = {};
  bool operator==(const Guid&) const = default;
  /// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", capitals.
  std::string toText() const;
};

/// A decimal as stored: sign, 128-bit magnitude (most significant part first), number of decimals.
struct Decimal {
  bool negative = false;
  std::array<std::uint32_t, 4> magnitude = {};
  Byte scale = 0;
  bool operator==(const Decimal&) const = default;
  std::string toText() const;
};

/// One field of a row: null, yes/no, whole number (byte, integer, long),
/// number with a fraction (single, double), money, date, text (UTF-8), bytes
/// (binary, OLE object), replication id, decimal.
using Cell =
    std::variant<std::monostate, bool, std::int64_t, double, Currency, DateTime, std::string, Bytes, Guid, Decimal>;
/// In the order of the table's columns.
using Row = std::vector<Cell>;

inline bool isNull(const Cell& cell) { return std::holds_alternative<std::monostate>(cell); }
/// For people and error texts.
std::string toText(const Cell& cell);

/// The value of stored bytes; not for yes/no (which has none) nor for long
/// values. Throws `Damage` when the bytes are too few.
Cell decodeCell(const Column& column, ByteView stored);

/// The value as the column keeps it: a number in the column's range, a text
/// within its length. Throws `AccessFileError`: `kTypeMismatch` for another
/// kind of value, `kDataOverflow` for one that does not fit.
Cell convertFor(const Column& column, Cell cell);

/// True when that is the value itself, as it is for most; false may also mean that this is not known.
bool isKeptAs(const Column& column, const Cell& cell);

/// Appends the bytes of a value that `convertFor` returned; long values are given in whole.
void appendCell(Bytes& bytes, const Column& column, const Cell& cell);
/// Puts the same bytes over a room of their size. False, with nothing put, for others than yes/no, numbers, money and
/// dates, and for a room of another size.
bool putNumberCell(ByteSpan room, const Column& column, const Cell& cell);

}  // namespace orva::access
