#include "platform/embedded/conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using sql::SqlType;

[[noreturn]] void failConversion(std::string_view what, const Value& value) {
  std::string text = value.toText();
  std::size_t length = std::min<std::size_t>(text.size(), 60);
  // No character is cut in two.
  while (length > 0 && length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  text.resize(length);
  throw ProviderError(provider_number::kTypeMismatch, "'" + text + "' is no value for " + std::string(what) + ".");
}

std::string fieldText(const ColumnDef& column) { return "the field '" + column.name + "'"; }

/// The number at the front of `text`, taken off it; nothing when none is there.
std::optional<int> takeNumber(std::string_view& text, std::size_t& digits) {
  int value = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  if (parsed.ec != std::errc() || value < 0) return std::nullopt;
  digits = static_cast<std::size_t>(parsed.ptr - text.data());
  text.remove_prefix(digits);
  return value;
}

bool takeSeparator(std::string_view& text) {
  if (text.empty() || (text[0] != '/' && text[0] != '-' && text[0] != '.')) return false;
  text.remove_prefix(1);
  return true;
}

int fullYear(int year, std::size_t digits) {
  if (digits > 2) return year;
  return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<double> numberIn(const Value& value) {
  if (const auto* number = std::get_if<double>(&value.storage())) return *number;
  if (const auto* money = std::get_if<Currency>(&value.storage())) return money->toDouble();
  if (const auto* text = std::get_if<std::string>(&value.storage())) {
    if (!isNumeric(*text)) return std::nullopt;
    return val(*text);
  }
  const auto whole = value.toInteger();
  return whole ? std::optional<double>(static_cast<double>(*whole)) : std::nullopt;
}

std::optional<std::int64_t> roundedNumber(const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value.storage())) return *whole;
  const auto number = numberIn(value);
  if (!number || !(std::fabs(*number) < 9e18)) return std::nullopt;
  return static_cast<std::int64_t>(std::nearbyint(*number));
}

std::optional<bool> booleanIn(const Value& value) {
  const auto* text = std::get_if<std::string>(&value.storage());
  if (!text) return value.toBoolean();
  const std::string_view word = trim(*text);
  if (equalsNoCase(word, "true") || equalsNoCase(word, "yes") || equalsNoCase(word, "on")) return true;
  if (equalsNoCase(word, "false") || equalsNoCase(word, "no") || equalsNoCase(word, "off")) return false;
  if (!isNumeric(word)) return std::nullopt;
  return val(word) != 0;
}

std::optional<Date> dateIn(const Value& value, DateOrder order) {
  const auto* text = std::get_if<std::string>(&value.storage());
  if (text && order == DateOrder::kMonthDayYear) return parseSqlDate(*text);
  return value.toDate();
}

/// No text holds the byte FF: it ends every prefix range of an index.
std::string storableText(std::string text) {
  return text.find('\xFF') == std::string::npos ? std::move(text) : replaceAll(text, "\xFF", "\xEF\xBF\xBD");
}

Value textForColumn(const ColumnDef& column, const Value& value) {
  std::string text = storableText(value.toText());
  if (text.empty() && !column.allowZeroLength) {
    throw ProviderError(provider_number::kIntegrity, "The field '" + column.name + "' cannot hold an empty text.");
  }
  const bool mayBeLong = column.size > 0 && text.size() > static_cast<std::size_t>(column.size);
  const std::size_t length = mayBeLong ? characterCount(text) : 0;
  if (length > static_cast<std::size_t>(column.size)) {
    throw ProviderError(provider_number::kDataOverflow, "The text for the field '" + column.name +
                                                            "' is too long: " + std::to_string(length) +
                                                            " characters, " + std::to_string(column.size) + " fit.");
  }
  return text;
}

[[noreturn]] void failRange(const ColumnDef& column, const Value& value) {
  throw ProviderError(provider_number::kDataOverflow,
                      "The number " + value.toText() + " is too large for " + fieldText(column) + ".");
}

Value integerForColumn(const ColumnDef& column, const Value& value) {
  const auto number = roundedNumber(value);
  if (!number) failConversion(fieldText(column), value);
  if (*number > std::numeric_limits<std::int32_t>::max() || *number < std::numeric_limits<std::int32_t>::min()) {
    failRange(column, value);
  }
  return *number;
}

Value amountForColumn(const ColumnDef& column, const Value& value) {
  const auto amount = value.toCurrency();
  if (!amount) failConversion(fieldText(column), value);
  // What is beyond the largest amount has become that amount.
  constexpr Currency kMost = Currency::fromUnits(std::numeric_limits<std::int64_t>::max());
  const bool isAtLimit = *amount >= kMost || *amount <= -kMost;
  if (isAtLimit && std::fabs(numberIn(value).value_or(0)) > kMost.toDouble()) failRange(column, value);
  return *amount;
}

template <typename T>
Value orFail(const std::optional<T>& converted, std::string_view what, const Value& value) {
  if (!converted) failConversion(what, value);
  return Value(*converted);
}

template <typename T>
Value orFail(const std::optional<T>& converted, const ColumnDef& column, const Value& value) {
  if (!converted) failConversion(fieldText(column), value);
  return Value(*converted);
}

}  // namespace

std::optional<Date> parseSqlDate(std::string_view text) {
  std::string_view rest = trim(text);
  std::size_t firstDigits = 0;
  std::size_t digits = 0;
  const auto first = takeNumber(rest, firstDigits);
  if (first && firstDigits == 8 && rest.empty())
    return Date::fromParts(*first / 10000, *first / 100 % 100, *first % 100);
  if (!first || firstDigits > 4 || !takeSeparator(rest)) return std::nullopt;
  const auto second = takeNumber(rest, digits);
  if (!second || digits > 2 || !takeSeparator(rest)) return std::nullopt;
  const auto third = takeNumber(rest, digits);
  if (!third || digits > 4 || (!rest.empty() && rest[0] != ' ')) return std::nullopt;
  if (firstDigits > 2) return Date::fromParts(*first, *second, *third);
  const int year = fullYear(*third, digits);
  if (*first > 12) return Date::fromParts(year, *second, *first);
  return Date::fromParts(year, *first, *second);
}

Value convertForColumn(const ColumnDef& column, const Value& value, DateOrder order) {
  if (value.isNull()) {
    if (!column.required) return {};
    throw ProviderError(provider_number::kIntegrity, "The field '" + column.name + "' cannot be empty.");
  }
  switch (column.type) {
    case ColumnType::kText:
    case ColumnType::kMemo:
      return textForColumn(column, value);
    case ColumnType::kInteger:
      return integerForColumn(column, value);
    case ColumnType::kDouble:
      return orFail(numberIn(value), column, value);
    case ColumnType::kCurrency:
      return amountForColumn(column, value);
    case ColumnType::kDate:
      return orFail(dateIn(value, order), column, value);
    case ColumnType::kBoolean:
      return orFail(booleanIn(value), column, value);
  }
  return {};
}

Value convertForType(SqlType type, const Value& value) {
  if (value.isNull()) return {};
  switch (type) {
    case SqlType::kNull:
      return value;
    case SqlType::kText:
      return value.toText();
    case SqlType::kInteger:
      return orFail(roundedNumber(value), "a whole number", value);
    case SqlType::kDouble:
      return orFail(numberIn(value), "a number", value);
    case SqlType::kCurrency:
      return orFail(value.toCurrency(), "an amount", value);
    case SqlType::kDate:
      return orFail(dateIn(value, DateOrder::kMonthDayYear), "a date", value);
    case SqlType::kBoolean:
      return orFail(booleanIn(value), "a yes/no value", value);
  }
  return {};
}

double numberOf(const Value& value) {
  const auto number = numberIn(value);
  if (!number) failConversion("a number", value);
  return *number;
}

}  // namespace orva::embedded
