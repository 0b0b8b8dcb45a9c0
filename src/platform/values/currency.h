#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orva {

/// An amount of money: signed 64-bit fixed point with four decimals, the way
/// both company databases keep money columns. Never goes through `double`.
class Currency {
 public:
  static constexpr std::int64_t kUnitsPerOne = 10'000;

  constexpr Currency() = default;

  /// `units` are ten-thousandths: 12'3400 is 12.34.
  static constexpr Currency fromUnits(std::int64_t units) { return Currency(units); }
  static constexpr Currency fromWhole(std::int64_t whole) { return Currency(whole * kUnitsPerOne); }
  /// Rounds half to even at the fourth decimal, as the providers do.
  static Currency fromDouble(double value);
  /// Reads an optional sign, digits and an optional fraction, with blanks
  /// around; more than four decimals are rounded half to even. Anything else
  /// (empty text, thousands separators, overflow) gives nothing.
  static std::optional<Currency> parse(std::string_view text);

  constexpr std::int64_t units() const { return units_; }
  double toDouble() const { return static_cast<double>(units_) / kUnitsPerOne; }
  /// Without trailing zeros and without a bare point: "12.34", "-7", "0.0001".
  std::string toText() const;

  constexpr auto operator<=>(const Currency&) const = default;
  constexpr Currency operator-() const { return Currency(-units_); }
  constexpr Currency& operator+=(Currency other) {
    units_ += other.units_;
    return *this;
  }
  constexpr Currency& operator-=(Currency other) {
    units_ -= other.units_;
    return *this;
  }
  friend constexpr Currency operator+(Currency left, Currency right) { return left += right; }
  friend constexpr Currency operator-(Currency left, Currency right) { return left -= right; }

 private:
  explicit constexpr Currency(std::int64_t units) : units_(units) {}

  std::int64_t units_ = 0;
};

}  // namespace orva
