#include "platform/embedded/scalar.h"

#include <bit>
#include <cmath>
#include <limits>

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

constexpr char kNullMark = '\x01';
constexpr char kTextMark = '\x20';

/// What cells and values of the service have in common.
struct PlainReader {
  Scalar operator()(std::monostate) const { return {}; }
  Scalar operator()(bool yes) const { return std::int64_t{yes ? 1 : 0}; }
  Scalar operator()(std::int64_t number) const { return number; }
  Scalar operator()(double number) const { return number; }
  Scalar operator()(Currency money) const { return money.units(); }
  Scalar operator()(const std::string& text) const { return text; }
};

struct CellReader : PlainReader {
  using PlainReader::operator();
  Scalar operator()(access::DateTime date) const {
    constexpr double kFarthest = 4'000'000;  // a damaged file may hold anything
    if (!(std::fabs(date.days) < kFarthest)) return {};
    return static_cast<std::int64_t>(std::trunc(date.days));
  }
  Scalar operator()(const access::Bytes&) const { return {}; }
  Scalar operator()(const access::Guid& guid) const { return guid.toText(); }
  Scalar operator()(const access::Decimal& decimal) const { return val(decimal.toText()); }
};

struct ValueReader : PlainReader {
  using PlainReader::operator();
  Scalar operator()(Date date) const { return std::int64_t{date.dayNumber()}; }
};

std::int64_t wholeOf(const Scalar& scalar) {
  if (const auto* whole = std::get_if<std::int64_t>(&scalar)) return *whole;
  const auto* number = std::get_if<double>(&scalar);
  constexpr double kLargest = 9.2e18;
  if (number && std::fabs(*number) < kLargest) return static_cast<std::int64_t>(std::nearbyint(*number));
  throw ProviderError(provider_number::kTypeMismatch, "A value is not of the type of its field.");
}

void appendBytes(std::string& key, std::uint64_t bits, int count) {
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) key.push_back(static_cast<char>(bits >> shift & 0xFF));
}

/// The nearest fraction in an order of unsigned numbers, then what the whole number has beyond it.
void appendNumber(std::string& key, double number, std::int64_t rest) {
  key.push_back(kNumberMark);
  const auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  const std::uint64_t sign = std::uint64_t{1} << 63;
  appendBytes(key, (bits & sign) != 0 ? ~bits : bits | sign, 8);
  appendBytes(key, static_cast<std::uint64_t>(rest + 0x8000), 2);
}

void appendWhole(std::string& key, std::int64_t whole) {
  const auto number = static_cast<double>(whole);
  constexpr double kPastLargest = 9223372036854775808.0;
  const bool tooLarge = number >= kPastLargest;
  const std::int64_t rest =
      tooLarge ? whole - std::numeric_limits<std::int64_t>::max() - 1 : whole - static_cast<std::int64_t>(number);
  appendNumber(key, number, rest);
}

/// A text of ordinary ASCII characters, closed; false, with nothing appended, for others.
bool appendPlainText(std::string& key, std::string_view text) {
  const std::size_t start = key.size();
  key.resize(start + text.size() + 1);
  char* out = key.data() + start;
  bool isPlain = true;
  for (const char c : text) {
    isPlain = isPlain && static_cast<signed char>(c) > '\x01';
    *out++ = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  }
  *out = '\0';
  if (!isPlain) key.resize(start);
  return isPlain;
}

/// The byte FF is no text: it ends a range of texts with one beginning and stays as it is.
void appendText(std::string& key, std::string_view text) {
  key.push_back(kTextMark);
  if (appendPlainText(key, text)) return;
  const bool endsRange = text.ends_with('\xFF');
  const std::string upper = toUpper(text.substr(0, text.size() - (endsRange ? 1 : 0)));
  for (const char c : upper) {
    if (c == '\0' || c == '\x01') key.push_back('\x01');
    key.push_back(c == '\0' ? '\x01' : c == '\x01' ? '\x02' : c);
  }
  key.push_back(endsRange ? '\xFF' : '\0');
}

}  // namespace

ColumnType columnTypeOf(const access::Column& column) {
  switch (column.type) {
    case access::ColumnType::kBoolean:
      return ColumnType::kBoolean;
    case access::ColumnType::kByte:
    case access::ColumnType::kInteger:
    case access::ColumnType::kLong:
      return ColumnType::kInteger;
    case access::ColumnType::kCurrency:
      return ColumnType::kCurrency;
    case access::ColumnType::kSingle:
    case access::ColumnType::kDouble:
    case access::ColumnType::kDecimal:
      return ColumnType::kDouble;
    case access::ColumnType::kDate:
      return ColumnType::kDate;
    case access::ColumnType::kText:
    case access::ColumnType::kGuid:
      return ColumnType::kText;
    default:
      return ColumnType::kMemo;
  }
}

Scalar scalarOf(access::Cell&& cell) {
  if (auto* text = std::get_if<std::string>(&cell)) return std::move(*text);
  return std::visit(CellReader{}, cell);
}

Scalar scalarOf(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_value_int64(value)};
    case SQLITE_FLOAT:
      return sqlite3_value_double(value);
    case SQLITE_NULL:
      return {};
    default:
      break;
  }
  const auto* text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
  return std::string(text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

Scalar scalarOf(const Value& value) { return std::visit(ValueReader{}, value.storage()); }

access::Cell cellOf(const access::Column& column, Scalar&& scalar) {
  if (isNull(scalar)) return {};
  if (auto* text = std::get_if<std::string>(&scalar)) return std::move(*text);
  switch (columnTypeOf(column)) {
    case ColumnType::kBoolean:
      return wholeOf(scalar) != 0;
    case ColumnType::kInteger:
      return wholeOf(scalar);
    case ColumnType::kCurrency:
      return Currency::fromUnits(wholeOf(scalar));
    case ColumnType::kDate:
      return access::DateTime{static_cast<double>(wholeOf(scalar))};
    default:
      break;
  }
  if (const auto* number = std::get_if<double>(&scalar)) return *number;
  return wholeOf(scalar);
}

void giveResult(sqlite3_context* context, const Scalar& scalar) {
  if (const auto* whole = std::get_if<std::int64_t>(&scalar)) return sqlite3_result_int64(context, *whole);
  if (const auto* number = std::get_if<double>(&scalar)) return sqlite3_result_double(context, *number);
  if (const auto* text = std::get_if<std::string>(&scalar)) {
    return sqlite3_result_text(context, text->c_str(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
  }
  sqlite3_result_null(context);
}

void appendSortKey(std::string& key, const Scalar& scalar) {
  if (const auto* whole = std::get_if<std::int64_t>(&scalar)) return appendWhole(key, *whole);
  if (const auto* number = std::get_if<double>(&scalar)) return appendNumber(key, *number, 0);
  if (const auto* text = std::get_if<std::string>(&scalar)) return appendText(key, *text);
  key.push_back(kNullMark);
}

void appendTextSortKey(std::string& key, std::string_view text) { appendText(key, text); }

}  // namespace orva::embedded
