#include "platform/values/date.h"

#include <algorithm>
#include <chrono>

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

constexpr std::size_t kYearDigits = 4;
constexpr std::size_t kPartDigits = 2;

/// Zeros in front fill up the width.
void appendNumber(std::string& text, int number, std::size_t width) {
  const std::string digits = std::to_string(number);
  if (digits.size() < width) text.append(width - digits.size(), '0');
  text += digits;
}

/// Three numbers with slashes between them.
std::string slashed(int first, std::size_t firstWidth, int second, int third, std::size_t thirdWidth) {
  std::string text;
  appendNumber(text, first, firstWidth);
  text += '/';
  appendNumber(text, second, kPartDigits);
  text += '/';
  appendNumber(text, third, thirdWidth);
  return text;
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

std::string Date::toDayMonthYear() const { return slashed(day(), kPartDigits, month(), year(), kYearDigits); }
std::string Date::toMonthDayYear() const { return slashed(month(), kPartDigits, day(), year(), kYearDigits); }
std::string Date::toYearMonthDay() const { return slashed(year(), kYearDigits, month(), day(), kPartDigits); }

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
