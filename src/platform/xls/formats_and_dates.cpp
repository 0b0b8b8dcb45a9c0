#include "platform/xls/formats_and_dates.h"

#include <algorithm>
#include <cmath>

#include "platform/values/date.h"

namespace orva::xls {
namespace {

constexpr std::int64_t kSecondsOfDay = 86400;
// Days from 30 December 1899, where `Date` counts from.
constexpr int kFirstDayOf1904 = 1462, kFirstDayAfter9999 = 2958466;
constexpr int kFalseLeapDay = 60;

/// Number formats that workbooks use without defining them.
struct FormatRange {
  std::uint16_t first, last;
};
constexpr FormatRange kBuiltInDates[] = {{14, 22}, {27, 36}, {45, 47}, {50, 58}};

bool isBuiltInDate(std::uint16_t index) {
  return std::any_of(std::begin(kBuiltInDates), std::end(kBuiltInDates),
                     [&](const FormatRange& range) { return index >= range.first && index <= range.last; });
}

char lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter; }

/// "[h]", "[mm]", "[ss]": elapsed time. Every other bracket is a colour, a
/// condition or a language.
bool isElapsedTime(std::string_view inBrackets) {
  return !inBrackets.empty() && std::all_of(inBrackets.begin(), inBrackets.end(), [&](char letter) {
    return lower(letter) == lower(inBrackets[0]) &&
           std::string_view("hms").find(lower(letter)) != std::string_view::npos;
  });
}

}  // namespace

/// Only the first section counts: it formats the positive numbers.
bool isDateFormat(std::string_view format) {
  for (std::size_t at = 0; at < format.size(); ++at) {
    const char letter = lower(format[at]);
    if (letter == ';') return false;
    if (letter == '\\' || letter == '_' || letter == '*') {
      ++at;
    } else if (letter == '"') {
      at = std::min(format.find('"', at + 1), format.size());
    } else if (letter == '[') {
      const std::size_t end = std::min(format.find(']', at + 1), format.size());
      if (isElapsedTime(format.substr(at + 1, end - at - 1))) return true;
      at = end;
    } else if (std::string_view("ymdhs").find(letter) != std::string_view::npos) {
      return true;
    }
  }
  return false;
}

std::optional<DateTime> dateTimeOf(double serial, DateSystem system) {
  const int offset = system == DateSystem::k1904 ? kFirstDayOf1904 : 0;
  if (!(serial >= 0) || serial >= kFirstDayAfter9999 - offset) return std::nullopt;
  const auto seconds = static_cast<std::int64_t>(std::floor(serial * kSecondsOfDay + 0.5));
  int day = static_cast<int>(seconds / kSecondsOfDay);
  if (day >= kFirstDayAfter9999 - offset) return std::nullopt;
  DateTime moment{.secondOfDay = static_cast<int>(seconds % kSecondsOfDay)};
  // Midnight of day 0 is a date only where the calendar begins with day 0.
  moment.isTimeAlone = day == 0 && (system == DateSystem::k1900 || seconds > 0);
  if (moment.isTimeAlone) return moment;
  if (system == DateSystem::k1900 && day == kFalseLeapDay) {
    moment.year = 1900, moment.month = 2, moment.day = 29;
    return moment;
  }
  if (system == DateSystem::k1900 && day < kFalseLeapDay) ++day;
  const Date date = Date::fromDayNumber(day + offset);
  moment.year = date.year(), moment.month = date.month(), moment.day = date.day();
  return moment;
}

std::vector<bool> CellFormats::datesByCellFormat() const {
  std::vector<bool> dates;
  dates.reserve(numberFormats_.size());
  for (const std::uint16_t index : numberFormats_) {
    const auto defined = isDate_.find(index);
    dates.push_back(defined != isDate_.end() ? defined->second : isBuiltInDate(index));
  }
  return dates;
}

}  // namespace orva::xls
