#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orva {

/// A calendar date without a time of day. The day number counts from
/// 30 December 1899 (day 0), as the company databases count.
class Date {
 public:
  constexpr Date() = default;

  static constexpr Date fromDayNumber(std::int32_t dayNumber) { return Date(dayNumber); }
  /// Nothing when the three numbers name no date of the years 100 to 9999.
  static std::optional<Date> fromParts(int year, int month, int day);
  /// Strict day/month/year: one or two digits, one or two digits, four digits,
  /// separated by "/" (or by "-" or "."), blanks around allowed. 31/02/2005 is no date.
  static std::optional<Date> parseDayMonthYear(std::string_view text);

  constexpr std::int32_t dayNumber() const { return dayNumber_; }
  int year() const;
  int month() const;
  int day() const;

  /// "05/11/2026": how screens and workbooks show a date.
  std::string toDayMonthYear() const;
  /// "11/05/2026": how SQL text of both dialects carries a date.
  std::string toMonthDayYear() const;
  /// "2026/11/05", used by a few queries and as a sort key.
  std::string toYearMonthDay() const;

  constexpr auto operator<=>(const Date&) const = default;
  constexpr Date plusDays(std::int32_t days) const { return Date(dayNumber_ + days); }
  /// Same day of the month `months` later; the last day of a shorter month
  /// (31 January plus one month is the last day of February).
  Date plusMonths(int months) const;

 private:
  explicit constexpr Date(std::int32_t dayNumber) : dayNumber_(dayNumber) {}

  std::int32_t dayNumber_ = 0;
};

/// Days from `from` to `to`; negative when `to` is earlier.
constexpr std::int32_t daysBetween(Date from, Date to) { return to.dayNumber() - from.dayNumber(); }

/// True from 01/01/1900 to 31/12/9999 inclusive, the dates that a company
/// database on SQL Server can keep.
bool isInDatabaseRange(Date date);

}  // namespace orva
