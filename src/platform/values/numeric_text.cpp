#include "platform/values/numeric_text.h"

#include <charconv>
#include <cstdio>
#include <string>

#include "platform/values/text.h"

namespace orva {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t countDigits(std::string_view text, std::size_t from) {
  std::size_t end = from;
  while (end < text.size() && isDigit(text[end])) ++end;
  return end - from;
}

/// Length of the number at the start of `text` (no blanks in front); 0 when
/// there is none. The exponent counts only when it has digits.
std::size_t numberLength(std::string_view text) {
  std::size_t end = 0;
  if (end < text.size() && (text[end] == '-' || text[end] == '+')) ++end;
  std::size_t digits = countDigits(text, end);
  end += digits;
  if (end < text.size() && text[end] == '.') {
    const std::size_t decimals = countDigits(text, end + 1);
    if (digits + decimals > 0) end += 1 + decimals;
    digits += decimals;
  }
  if (digits == 0) return 0;
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    std::size_t exponent = end + 1;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    const std::size_t exponentDigits = countDigits(text, exponent);
    if (exponentDigits > 0) end = exponent + exponentDigits;
  }
  return end;
}

/// Adds one to a decimal digit string ("999" becomes "1000").
void increment(std::string& digits) {
  for (std::size_t place = digits.size(); place-- > 0;) {
    if (digits[place] == '.') continue;
    if (digits[place] != '9') {
      ++digits[place];
      return;
    }
    digits[place] = '0';
  }
  digits.insert(digits.begin(), '1');
}

}  // namespace

bool isNumeric(std::string_view text) {
  const std::string_view trimmed = trim(text);
  return !trimmed.empty() && numberLength(trimmed) == trimmed.size();
}

double val(std::string_view text) {
  while (!text.empty() && (text[0] == ' ' || text[0] == '\t' || text[0] == '\n' || text[0] == '\r')) {
    text.remove_prefix(1);
  }
  const std::size_t length = numberLength(text);
  if (length == 0) return 0;
  std::string_view number = text.substr(0, length);
  if (number[0] == '+') number.remove_prefix(1);
  double result = 0;
  std::from_chars(number.data(), number.data() + number.size(), result);
  return result;
}

std::string_view afterPoint(std::string_view text) {
  const std::size_t point = text.find('.');
  return point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
}

bool hasMoreThanTwoDecimals(std::string_view text) { return afterPoint(trim(text)).size() > 2; }

bool hasDecimalPart(std::string_view text) { return val(afterPoint(text)) > 0; }

std::string zeroPadded(long long number, int width) {
  std::string digits = std::to_string(number < 0 ? -number : number);
  if (static_cast<int>(digits.size()) < width) digits.insert(0, width - digits.size(), '0');
  return number < 0 ? "-" + digits : digits;
}

std::string formatTwoDecimals(std::string_view text) {
  const std::string_view trimmed = trim(text);
  if (!isNumeric(trimmed)) return std::string(text);
  if (trimmed.find_first_of("eE") != std::string_view::npos) return std::string(text);
  const bool negative = trimmed[0] == '-';
  std::string_view digits = trimmed.substr(trimmed[0] == '-' || trimmed[0] == '+' ? 1 : 0);
  std::string whole(digits.substr(0, digits.find('.')));
  std::string decimals(afterPoint(digits));
  const bool roundUp = decimals.size() > 2 && decimals[2] >= '5';
  decimals.resize(2, '0');
  std::string result = whole + "." + decimals;
  if (roundUp) increment(result);
  const std::size_t firstDigit = result.find_first_not_of('0');
  result.erase(0, firstDigit);
  const bool isZero = result == ".00";
  return negative && !isZero ? "-" + result : result;
}

}  // namespace orva
