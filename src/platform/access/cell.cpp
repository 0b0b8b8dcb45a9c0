#include "platform/access/cell.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "platform/access/text_cell.h"

namespace orva::access {
namespace {

constexpr std::size_t kLongestCompressedMemo = 1024;
/// Day numbers of 1 January 100 and of the end of 31 December 9999.
constexpr double kFirstDay = -657434.0;
constexpr double kPastLastDay = 2958466.0;
/// Swaps the parts of a replication id between file and text order; its own inverse.
constexpr std::size_t kGuidOrder[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

struct IntegerRange {
  ColumnType type;
  std::int64_t lowest;
  std::int64_t highest;
};
constexpr IntegerRange kIntegerRanges[] = {
    {ColumnType::kByte, 0, 255},
    {ColumnType::kInteger, -32'768, 32'767},
    {ColumnType::kLong, -2'147'483'648LL, 2'147'483'647LL},
};

const IntegerRange* rangeOf(ColumnType type) {
  const auto found = std::find_if(std::begin(kIntegerRanges), std::end(kIntegerRanges),
                                  [type](const IntegerRange& range) { return range.type == type; });
  return found == std::end(kIntegerRanges) ? nullptr : found;
}

[[noreturn]] void refuseKind(const Column& column) {
  throw AccessFileError(provider_number::kTypeMismatch,
                        "Column '" + column.name + "': the value is not of the column's type.");
}
[[noreturn]] void refuseSize(const Column& column, const Cell& cell) {
  throw AccessFileError(provider_number::kDataOverflow,
                        "Column '" + column.name + "': the value " + toText(cell) + " does not fit the column.");
}

/// Any number as a double; nothing for other kinds.
std::optional<double> numberOf(const Cell& cell) {
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return static_cast<double>(*whole);
  if (const auto* fraction = std::get_if<double>(&cell)) return *fraction;
  if (const auto* money = std::get_if<Currency>(&cell)) return money->toDouble();
  if (const auto* yes = std::get_if<bool>(&cell)) return *yes ? -1.0 : 0.0;
  return std::nullopt;
}

double requireNumber(const Column& column, const Cell& cell) {
  const auto number = numberOf(cell);
  if (!number) refuseKind(column);
  if (!std::isfinite(*number)) refuseSize(column, cell);
  return *number;
}

Cell toWhole(const Column& column, const Cell& cell) {
  const IntegerRange& range = *rangeOf(column.type);
  std::int64_t whole = 0;
  if (const auto* given = std::get_if<std::int64_t>(&cell)) {
    whole = *given;
  } else {
    const double rounded = std::nearbyint(requireNumber(column, cell));
    if (std::abs(rounded) > 1e15) refuseSize(column, cell);
    whole = static_cast<std::int64_t>(rounded);
  }
  if (whole < range.lowest || whole > range.highest) refuseSize(column, cell);
  return whole;
}

Cell toMoney(const Column& column, const Cell& cell) {
  if (std::holds_alternative<Currency>(cell)) return cell;
  constexpr double kHighest = 922'337'203'685'477.0;
  const double number = requireNumber(column, cell);
  if (std::abs(number) > kHighest) refuseSize(column, cell);
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return Currency::fromWhole(*whole);
  return Currency::fromDouble(number);
}

Cell toFraction(const Column& column, const Cell& cell) {
  const double number = requireNumber(column, cell);
  if (column.type == ColumnType::kDouble) return number;
  if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) refuseSize(column, cell);
  return static_cast<double>(static_cast<float>(number));
}

Cell toDate(const Column& column, const Cell& cell) {
  const auto* date = std::get_if<DateTime>(&cell);
  const double days = date ? date->days : requireNumber(column, cell);
  if (!(days > kFirstDay - 1 && days < kPastLastDay)) refuseSize(column, cell);
  return DateTime{days};
}

Cell toTextOf(const Column& column, Cell cell) {
  if (!std::holds_alternative<std::string>(cell)) cell = toText(cell);
  const std::size_t most = column.type == ColumnType::kText ? column.length / 2u : std::string::npos;
  // A character takes no fewer bytes here than two-byte units there.
  const std::string& text = std::get<std::string>(cell);
  if (text.size() > most && toUtf16(text).size() > most) refuseSize(column, cell);
  return cell;
}

Cell toBytesOf(const Column& column, Cell cell) {
  const auto* bytes = std::get_if<Bytes>(&cell);
  if (!bytes) refuseKind(column);
  if (column.type == ColumnType::kBinary && bytes->size() > column.length) refuseSize(column, cell);
  return cell;
}

Cell decodeGuid(ByteView stored) {
  Guid guid;
  for (std::size_t i = 0; i < 16; ++i) guid.bytes[i] = stored[kGuidOrder[i]];
  return guid;
}

Cell decodeDecimal(const Column& column, ByteView stored) {
  Decimal decimal{.negative = stored[0] != 0, .scale = column.scale};
  for (std::size_t i = 0; i < 4; ++i) decimal.magnitude[i] = u32At(stored, 1 + 4 * i);
  return decimal;
}

Bytes encodeDecimal(const Decimal& decimal) {
  Bytes bytes{static_cast<Byte>(decimal.negative ? 0x80 : 0)};
  for (const std::uint32_t part : decimal.magnitude) appendUnsigned(bytes, part, 4);
  return bytes;
}

void appendTextOf(Bytes& bytes, const Column& column, const std::string& value) {
  if (column.type == ColumnType::kText) {
    return appendEncodedText(bytes, value, (column.extendedFlags & column_flag::kCompressed) != 0);
  }
  const std::u16string text = toUtf16(value);
  append(bytes, encodeText(text, text.size() <= kLongestCompressedMemo));
}

std::size_t storedSize(ColumnType type) {
  switch (type) {
    case ColumnType::kByte:
      return 1;
    case ColumnType::kInteger:
      return 2;
    case ColumnType::kLong:
    case ColumnType::kSingle:
      return 4;
    case ColumnType::kCurrency:
    case ColumnType::kDouble:
    case ColumnType::kDate:
      return 8;
    case ColumnType::kGuid:
      return 16;
    case ColumnType::kDecimal:
      return 17;
    default:
      return 0;
  }
}

}  // namespace

std::string Guid::toText() const {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "{";
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 15];
  }
  return text + "}";
}

std::string Decimal::toText() const {
  auto rest = magnitude;
  std::string digits;
  while (std::any_of(rest.begin(), rest.end(), [](std::uint32_t part) { return part != 0; })) {
    std::uint64_t remainder = 0;
    for (std::uint32_t& part : rest) {
      const std::uint64_t value = remainder << 32 | part;
      part = static_cast<std::uint32_t>(value / 10);
      remainder = value % 10;
    }
    digits.insert(digits.begin(), static_cast<char>('0' + remainder));
  }
  if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
  if (scale > 0) digits.insert(digits.size() - scale, 1, '.');
  return negative ? "-" + digits : digits;
}

std::string toText(const Cell& cell) {
  struct Writer {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool yes) const { return yes ? "True" : "False"; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return Value(number).toText(); }
    std::string operator()(Currency money) const { return money.toText(); }
    std::string operator()(DateTime date) const { return std::to_string(date.days); }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const Bytes& bytes) const { return std::to_string(bytes.size()) + " bytes"; }
    std::string operator()(const Guid& guid) const { return guid.toText(); }
    std::string operator()(const Decimal& decimal) const { return decimal.toText(); }
  };
  return std::visit(Writer{}, cell);
}

Cell decodeCell(const Column& column, ByteView stored) {
  require(stored.size() >= storedSize(column.type), "a value is shorter than its type");
  switch (column.type) {
    case ColumnType::kByte:
      return std::int64_t{stored[0]};
    case ColumnType::kInteger:
      return std::int64_t{static_cast<std::int16_t>(u16At(stored, 0))};
    case ColumnType::kLong:
      return std::int64_t{static_cast<std::int32_t>(u32At(stored, 0))};
    case ColumnType::kCurrency:
      return Currency::fromUnits(static_cast<std::int64_t>(u64At(stored, 0)));
    case ColumnType::kSingle:
      return static_cast<double>(std::bit_cast<float>(u32At(stored, 0)));
    case ColumnType::kDouble:
      return doubleAt(stored, 0);
    case ColumnType::kDate:
      return DateTime{doubleAt(stored, 0)};
    case ColumnType::kText:
      return textOf(stored);
    case ColumnType::kGuid:
      return decodeGuid(stored);
    case ColumnType::kDecimal:
      return decodeDecimal(column, stored);
    default:
      return Bytes(stored.begin(), stored.end());
  }
}

bool isKeptAs(const Column& column, const Cell& cell) {
  if (isNull(cell)) return column.type != ColumnType::kBoolean;
  switch (column.type) {
    case ColumnType::kBoolean:
      return std::holds_alternative<bool>(cell);
    case ColumnType::kCurrency:
      return std::holds_alternative<Currency>(cell);
    case ColumnType::kDouble: {
      const auto* number = std::get_if<double>(&cell);
      return number && std::isfinite(*number);
    }
    case ColumnType::kText: {
      const auto* text = std::get_if<std::string>(&cell);
      return text && text->size() <= column.length / 2u;
    }
    default:
      return false;
  }
}

Cell convertFor(const Column& column, Cell cell) {
  if (isNull(cell)) return column.type == ColumnType::kBoolean ? Cell(false) : cell;
  switch (column.type) {
    case ColumnType::kBoolean:
      return requireNumber(column, cell) != 0;
    case ColumnType::kByte:
    case ColumnType::kInteger:
    case ColumnType::kLong:
      return toWhole(column, cell);
    case ColumnType::kCurrency:
      return toMoney(column, cell);
    case ColumnType::kSingle:
    case ColumnType::kDouble:
      return toFraction(column, cell);
    case ColumnType::kDate:
      return toDate(column, cell);
    case ColumnType::kText:
    case ColumnType::kMemo:
      return toTextOf(column, std::move(cell));
    case ColumnType::kBinary:
    case ColumnType::kOle:
      return toBytesOf(column, std::move(cell));
    case ColumnType::kGuid:
      if (std::holds_alternative<Guid>(cell)) return cell;
      break;
    case ColumnType::kDecimal:
      if (std::holds_alternative<Decimal>(cell) && std::get<Decimal>(cell).scale == column.scale) return cell;
      break;
    default:
      break;
  }
  refuseKind(column);
}

void appendCell(Bytes& bytes, const Column& column, const Cell& cell) {
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    appendUnsigned(bytes, static_cast<std::uint64_t>(*whole), storedSize(column.type));
  } else if (const auto* money = std::get_if<Currency>(&cell)) {
    appendUnsigned(bytes, static_cast<std::uint64_t>(money->units()), 8);
  } else if (const auto* date = std::get_if<DateTime>(&cell)) {
    appendUnsigned(bytes, std::bit_cast<std::uint64_t>(date->days), 8);
  } else if (const auto* number = std::get_if<double>(&cell)) {
    if (column.type == ColumnType::kSingle) {
      appendUnsigned(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(*number)), 4);
    } else {
      appendUnsigned(bytes, std::bit_cast<std::uint64_t>(*number), 8);
    }
  } else if (const auto* text = std::get_if<std::string>(&cell)) {
    appendTextOf(bytes, column, *text);
  } else if (const auto* raw = std::get_if<Bytes>(&cell)) {
    append(bytes, *raw);
  } else if (const auto* guid = std::get_if<Guid>(&cell)) {
    for (const std::size_t i : kGuidOrder) bytes.push_back(guid->bytes[i]);
  } else if (const auto* decimal = std::get_if<Decimal>(&cell)) {
    append(bytes, encodeDecimal(*decimal));
  }
}

bool putNumberCell(ByteSpan room, const Column& column, const Cell& cell) {
  std::uint64_t bits = 0;
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    bits = static_cast<std::uint64_t>(*whole);
  } else if (const auto* money = std::get_if<Currency>(&cell)) {
    bits = static_cast<std::uint64_t>(money->units());
  } else if (const auto* date = std::get_if<DateTime>(&cell)) {
    bits = std::bit_cast<std::uint64_t>(date->days);
  } else if (const auto* number = std::get_if<double>(&cell)) {
    bits = column.type == ColumnType::kSingle ? std::bit_cast<std::uint32_t>(static_cast<float>(*number))
                                              : std::bit_cast<std::uint64_t>(*number);
  } else {
    return std::holds_alternative<bool>(cell);
  }
  if (room.size() != storedSize(column.type)) return false;
  std::memcpy(room.data(), &bits, room.size());
  return true;
}

}  // namespace orva::access
