#include "platform/xls/cell_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace orva::xls {
namespace {

constexpr int kSignificantDigits = 15;
constexpr double kTooManyDigits = 1e15;

struct ErrorName {
  std::uint8_t code;
  std::string_view text;
};
constexpr ErrorName kErrors[] = {
    {0x00, "#NULL!"}, {0x07, "#DIV/0!"}, {0x0F, "#VALUE!"}, {0x17, "#REF!"},
    {0x1D, "#NAME?"}, {0x24, "#NUM!"},   {0x2A, "#N/A"},
};

std::string integerText(std::int64_t value) {
  char digits[24];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// Digits and the place of the point, from "d.ddde+xx".
std::string withoutExponent(std::string_view scientific) {
  const std::size_t mark = scientific.find('e');
  std::string digits{scientific.substr(0, mark)};
  digits.erase(1, 1);
  digits.erase(digits.find_last_not_of('0') + 1);
  int exponent = 0;
  const char* sign = scientific.data() + mark + 1;
  std::from_chars(*sign == '+' ? sign + 1 : sign, scientific.data() + scientific.size(), exponent);
  if (exponent < 0) return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() <= whole) return digits.append(whole - digits.size(), '0');
  return digits.insert(whole, 1, '.');
}

}  // namespace

std::string numberText(double value) {
  if (!std::isfinite(value)) return std::string(errorText(0x24));
  if (std::abs(value) < kTooManyDigits && value == std::trunc(value))
    return integerText(static_cast<std::int64_t>(value));
  char digits[40];
  const auto end = std::to_chars(digits, digits + sizeof digits, std::abs(value), std::chars_format::scientific,
                                 kSignificantDigits - 1);
  const std::string text = withoutExponent(std::string_view(digits, static_cast<std::size_t>(end.ptr - digits)));
  return value < 0 ? "-" + text : text;
}

std::string dateText(const DateTime& moment) {
  char text[32];
  const int second = moment.secondOfDay;
  const int size =
      moment.isTimeAlone
          ? std::snprintf(text, sizeof text, "%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60)
          : std::snprintf(text, sizeof text, "%02d/%02d/%04d", moment.day, moment.month, moment.year);
  return {text, static_cast<std::size_t>(size)};
}

std::string_view errorText(std::uint8_t code) {
  for (const ErrorName& error : kErrors) {
    if (error.code == code) return error.text;
  }
  return "#ERROR!";
}

std::optional<std::uint8_t> errorCode(std::string_view text) {
  for (const ErrorName& error : kErrors) {
    if (error.text == text) return error.code;
  }
  return std::nullopt;
}

std::string cellText(const CellTable& table, const Cell& cell) {
  switch (cell.kind()) {
    case CellKind::kText:
      return std::string(table.textOf(cell));
    case CellKind::kNumber:
      return numberText(cell.asDouble());
    case CellKind::kDate:
      return dateText(dateTimeOf(cell.asDouble(), table.dateSystem()).value_or(DateTime{}));
    case CellKind::kBoolean:
      return cell.asBoolean() ? "TRUE" : "FALSE";
    case CellKind::kError:
      return std::string(errorText(cell.asErrorCode()));
    case CellKind::kBlank:
      break;
  }
  return {};
}

}  // namespace orva::xls
