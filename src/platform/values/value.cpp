#include "platform/values/value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <type_traits>

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva {
namespace {

constexpr double kLargestInteger = 9.2e18;

/// Up to 15 significant digits, as the databases show a floating number.
std::string doubleToText(double number) {
  if (number == 0) return "0";
  std::array<char, 400> buffer{};
  if (std::fabs(number) >= 1e-5 && std::fabs(number) < 1e15) {
    const int whole = static_cast<int>(std::floor(std::log10(std::fabs(number)))) + 1;
    const int decimals = whole >= 15 ? 0 : 15 - whole;
    std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals > 20 ? 20 : decimals, number);
    std::string text = buffer.data();
    if (text.find('.') != std::string::npos) {
      while (text.back() == '0') text.pop_back();
      if (text.back() == '.') text.pop_back();
    }
    return text == "-0" ? "0" : text;
  }
  std::snprintf(buffer.data(), buffer.size(), "%.15g", number);
  return buffer.data();
}

struct ToText {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(double value) const { return doubleToText(value); }
  std::string operator()(Currency value) const { return value.toText(); }
  std::string operator()(Date value) const { return value.toDayMonthYear(); }
  std::string operator()(const std::string& value) const { return value; }
};

std::optional<std::int64_t> integerPart(double value) {
  if (!(std::fabs(value) < kLargestInteger)) return std::nullopt;
  return static_cast<std::int64_t>(value);
}

}  // namespace

std::string Value::toText() const { return std::visit(ToText{}, storage_); }

bool Value::toBoolean() const {
  if (const auto* flag = std::get_if<bool>(&storage_)) return *flag;
  if (const auto* text = std::get_if<std::string>(&storage_)) {
    return equalsNoCase(trim(*text), "true") || (isNumeric(*text) && val(*text) != 0);
  }
  if (const auto* number = std::get_if<double>(&storage_)) return *number != 0;
  return toInteger().value_or(0) != 0 || toCurrency().value_or(Currency()) != Currency();
}

std::optional<std::int64_t> Value::toInteger() const {
  if (const auto* flag = std::get_if<bool>(&storage_)) return *flag ? 1 : 0;
  if (const auto* number = std::get_if<std::int64_t>(&storage_)) return *number;
  if (const auto* number = std::get_if<double>(&storage_)) return integerPart(*number);
  if (const auto* money = std::get_if<Currency>(&storage_)) return money->units() / Currency::kUnitsPerOne;
  if (const auto* date = std::get_if<Date>(&storage_)) return date->dayNumber();
  const auto* text = std::get_if<std::string>(&storage_);
  if (!text || !isNumeric(*text)) return std::nullopt;
  return integerPart(val(*text));
}

std::optional<Currency> Value::toCurrency() const {
  if (const auto* money = std::get_if<Currency>(&storage_)) return *money;
  if (const auto* number = std::get_if<double>(&storage_)) return Currency::fromDouble(*number);
  if (const auto* text = std::get_if<std::string>(&storage_)) {
    if (const auto exact = Currency::parse(*text)) return exact;
    if (!isNumeric(*text)) return std::nullopt;
    return Currency::fromDouble(val(*text));
  }
  const auto whole = toInteger();
  constexpr std::int64_t kLargestWhole = INT64_MAX / Currency::kUnitsPerOne;
  if (!whole || *whole > kLargestWhole || *whole < -kLargestWhole) return std::nullopt;
  return Currency::fromWhole(*whole);
}

std::optional<Date> Value::toDate() const {
  if (const auto* date = std::get_if<Date>(&storage_)) return *date;
  if (const auto* text = std::get_if<std::string>(&storage_)) return Date::parseDayMonthYear(*text);
  if (std::holds_alternative<bool>(storage_)) return std::nullopt;
  const auto number = toInteger();
  constexpr std::int64_t kFirstDay = -657'434;  // 01/01/0100
  constexpr std::int64_t kLastDay = 2'958'465;  // 31/12/9999
  if (!number || *number < kFirstDay || *number > kLastDay) return std::nullopt;
  return Date::fromDayNumber(static_cast<std::int32_t>(*number));
}

std::string nullToText(const Value& value) { return value.toText(); }

}  // namespace orva
