#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "imports/asset/calendar_year.h"
#include "platform/database.h"

namespace orva {

/// The years of one calendar of the company, read at once: they do not change while a workbook is checked or posted.
class Calendar {
 public:
  /// Where a calendar stands in the company.
  struct Table {
    std::string_view query;
    std::string_view name;
    std::string_view opening;
    std::string_view closing;
  };
  static const Table kAccounting;
  static const Table kFinancial;

  /// Throws `ProviderError`.
  Calendar(Connection& connection, const Table& table);

  bool hasYears() const { return !years_.empty(); }
  /// The year that contains `date`; null when none does.
  const CalendarYear* containing(Date date) const;
  /// Whether the year of that name is there and closed.
  bool isClosed(std::string_view name) const;
  /// The first closed year among that one and those whose names sort after it; null when all are open.
  const CalendarYear* closedFrom(std::string_view name) const;
  /// Last day of the latest closed year.
  std::optional<Date> closedUpTo() const;

 private:
  std::vector<CalendarYear> years_;
};

/// Which calendar forbids a transaction on a date.
enum class ClosedCalendar { kNone, kAccounting, kFinancial };

/// The rule of a dated transaction: the calendar whose latest closed year ends later decides (the accounting
/// calendar when both end on one day), and no date up to that day may be used.
ClosedCalendar closedCalendarAt(const Calendar& accounting, const Calendar& financial, Date date);

}  // namespace orva
