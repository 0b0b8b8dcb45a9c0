#include "platform/values/date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include "platform/values/text.h"

namespace orva {
namespace {

namespace chrono = std::chrono;
using chrono::sys_days;
using chrono::year_month_day;

constexpr sys_days kDayZero{year_month_day{chrono::year{1899}, chrono::month{12}, chrono::day{30}}};
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

year_month_day partsOf(std::int32_t dayNumber) { return year_month_day{kDayZero + chrono::days{dayNumber}}; }

std::string format(const char* pattern, int first, int second, int third) {
  std::array<char, 40> buffer{};
  std::snprintf(buffer.data(), buffer.size(), pattern, first, second, third);
  return buffer.data();
}

/// Takes one to `maxDigits` digits off the front of `text`.
std::optional<int> takeNumber(std::string_view& text, std::size_t maxDigits) {
  int number = 0;
  std::size_t count = 0;
  while (count < text.size() && count < maxDigits && text[count] >= '0' && text[count] <= '9') {
    number = number * 10 + (text[count++] - '0');
  }
  if (count == 0) return std::nullopt;
  text.remove_prefix(count);
  return number;
}

bool takeSeparator(std::string_view& text, char& separator) {
  if (text.empty()) return false;
  const char c = text[0];
  if (separator == '\0' ? (c != '/' && c != '-' && c != '.') : c != separator) return false;
  separator = c;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<Date> Date::fromParts(int yearNumber, int monthNumber, int dayNumber) {
  if (yearNumber < kFirstYear || yearNumber > kLastYear) return std::nullopt;
  if (monthNumber < 1 || monthNumber > 12 || dayNumber < 1 || dayNumber > 31) return std::nullopt;
  const year_month_day parts{chrono::year{yearNumber}, chrono::month{static_cast<unsigned>(monthNumber)},
                             chrono::day{static_cast<unsigned>(dayNumber)}};
  if (!parts.ok()) return std::nullopt;
  return Date(static_cast<std::int32_t>((sys_days{parts} - kDayZero).count()));
}

std::optional<Date> Date::parseDayMonthYear(std::string_view text) {
  std::string_view rest = trim(text);
  char separator = '\0';
  const auto dayNumber = takeNumber(rest, 2);
  if (!dayNumber || !takeSeparator(rest, separator)) return std::nullopt;
  const auto monthNumber = takeNumber(rest, 2);
  if (!monthNumber || !takeSeparator(rest, separator)) return std::nullopt;
  if (rest.size() != 4) return std::nullopt;
  const auto yearNumber = takeNumber(rest, 4);
  if (!yearNumber || !rest.empty()) return std::nullopt;
  return fromParts(*yearNumber, *monthNumber, *dayNumber);
}

int Date::year() const { return static_cast<int>(partsOf(dayNumber_).year()); }
int Date::month() const { return static_cast<int>(static_cast<unsigned>(partsOf(dayNumber_).month())); }
int Date::day() const { return static_cast<int>(static_cast<unsigned>(partsOf(dayNumber_).day())); }

std::string Date::toDayMonthYear() const { return format("%02d/%02d/%04d", day(), month(), year()); }
std::string Date::toMonthDayYear() const { return format("%02d/%02d/%04d", month(), day(), year()); }
std::string Date::toYearMonthDay() const { return format("%04d/%02d/%02d", year(), month(), day()); }

Date Date::plusMonths(int months) const {
  const year_month_day start = partsOf(dayNumber_);
  const auto target = chrono::year_month{start.year(), start.month()} + chrono::months{months};
  const year_month_day last{target / chrono::last};
  const chrono::day kept = std::min(start.day(), last.day());
  const year_month_day result{target.year(), target.month(), kept};
  return Date(static_cast<std::int32_t>((sys_days{result} - kDayZero).count()));
}

bool isInDatabaseRange(Date date) {
  static const Date kFirst = *Date::fromParts(1900, 1, 1);
  static const Date kLast = *Date::fromParts(9999, 12, 31);
  return date >= kFirst && date <= kLast;
}

}  // namespace orva
