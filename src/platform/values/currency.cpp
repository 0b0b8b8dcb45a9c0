#include "platform/values/currency.h"

#include <cmath>
#include <limits>

#include "platform/values/text.h"

namespace orva {
namespace {

constexpr std::int64_t kMaxUnits = std::numeric_limits<std::int64_t>::max();

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Appends one decimal digit; false on overflow.
bool pushDigit(std::int64_t& units, char digit) {
  const std::int64_t value = digit - '0';
  if (units > (kMaxUnits - value) / 10) return false;
  units = units * 10 + value;
  return true;
}

/// Half to even on the digits that follow the fourth decimal.
bool roundsUp(std::string_view rest, bool lastDigitIsOdd) {
  if (rest.empty() || rest[0] < '5') return false;
  if (rest[0] > '5') return true;
  const bool beyondHalf = rest.find_first_not_of('0', 1) != std::string_view::npos;
  return beyondHalf || lastDigitIsOdd;
}

}  // namespace

Currency Currency::fromDouble(double value) {
  const double units = std::nearbyint(value * kUnitsPerOne);
  if (std::isnan(units)) return Currency();
  constexpr double kLimit = 9.2233720368547748e18;
  if (units >= kLimit) return Currency(kMaxUnits);
  if (units <= -kLimit) return Currency(-kMaxUnits);
  return Currency(static_cast<std::int64_t>(units));
}

std::optional<Currency> Currency::parse(std::string_view text) {
  std::string_view rest = trim(text);
  bool negative = false;
  if (!rest.empty() && (rest[0] == '-' || rest[0] == '+')) {
    negative = rest[0] == '-';
    rest.remove_prefix(1);
  }
  std::int64_t units = 0;
  std::size_t digits = 0;
  while (digits < rest.size() && isDigit(rest[digits])) {
    if (!pushDigit(units, rest[digits++])) return std::nullopt;
  }
  rest.remove_prefix(digits);
  std::string_view fraction;
  if (!rest.empty() && rest[0] == '.') fraction = rest.substr(1);
  if (!rest.empty() && rest[0] != '.') return std::nullopt;
  if (digits + fraction.size() == 0) return std::nullopt;
  for (char c : fraction) {
    if (!isDigit(c)) return std::nullopt;
  }
  for (std::size_t place = 0; place < 4; ++place) {
    if (!pushDigit(units, place < fraction.size() ? fraction[place] : '0')) return std::nullopt;
  }
  if (fraction.size() > 4 && roundsUp(fraction.substr(4), units % 2 != 0)) {
    if (units == kMaxUnits) return std::nullopt;
    ++units;
  }
  return Currency(negative ? -units : units);
}

std::string Currency::toText() const {
  const std::uint64_t magnitude =
      units_ < 0 ? 0 - static_cast<std::uint64_t>(units_) : static_cast<std::uint64_t>(units_);
  std::string text = units_ < 0 ? "-" : "";
  text += std::to_string(magnitude / kUnitsPerOne);
  std::string fraction = std::to_string(magnitude % kUnitsPerOne);
  fraction.insert(0, 4 - fraction.size(), '0');
  while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
  if (!fraction.empty()) text += "." + fraction;
  return text;
}

}  // namespace orva
