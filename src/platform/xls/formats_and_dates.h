#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orva::xls {

/// Where day numbers begin: 1 January 1900 is day 1, or 1 January 1904 is day 0.
enum class DateSystem { k1900, k1904 };

/// A moment as a cell shows it. The 1900 system knows a 29 February 1900 that
/// the calendar does not, so the parts need not be a calendar date.
struct DateTime {
  int year = 0, month = 0, day = 0;
  int secondOfDay = 0;
  bool isTimeAlone = false;  ///< a value under one day: the date parts are zero
};

/// The moment of a day number, rounded to the second. Nothing for a negative
/// one and for one beyond 31 December 9999.
std::optional<DateTime> dateTimeOf(double serial, DateSystem system);

/// True when a number format shows dates or times ("dd/mm/yyyy", "[h]:mm").
bool isDateFormat(std::string_view format);

/// The number formats of a workbook and its cell formats (XF) that use them.
class CellFormats {
 public:
  void addNumberFormat(std::uint16_t index, std::string_view format) { isDate_[index] = isDateFormat(format); }
  /// Cell formats are numbered in the order in which they are added.
  void addCellFormat(std::uint16_t numberFormat) { numberFormats_.push_back(numberFormat); }
  /// For every cell format, whether it shows dates. To be asked when all records are read.
  std::vector<bool> datesByCellFormat() const;

 private:
  std::map<std::uint16_t, bool> isDate_;
  std::vector<std::uint16_t> numberFormats_;
};

}  // namespace orva::xls
