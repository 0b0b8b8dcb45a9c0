#include "imports/transactions/calendar.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva {

constexpr Calendar::Table Calendar::kAccounting{
    .query = "Select * from accyear", .name = "accyear", .opening = "accopdt", .closing = "acccldt"};
constexpr Calendar::Table Calendar::kFinancial{
    .query = "Select * from Finyear", .name = "finyear", .opening = "Finopdt", .closing = "Fincldt"};

Calendar::Calendar(Connection& connection, const Table& table) {
  const auto rows = connection.open(table.query);
  for (; !rows->eof(); rows->moveNext()) {
    const auto opening = rows->get(table.opening).toDate();
    const auto closing = rows->get(table.closing).toDate();
    if (!opening || !closing) continue;
    years_.push_back({.name = nullToText(rows->get(table.name)),
                      .opening = *opening,
                      .closing = *closing,
                      .isClosed = rows->get("closed").toBoolean()});
  }
}

const CalendarYear* Calendar::containing(Date date) const {
  const auto found = std::find_if(years_.begin(), years_.end(), [date](const CalendarYear& year) {
    return year.opening <= date && date <= year.closing;
  });
  return found == years_.end() ? nullptr : &*found;
}

bool Calendar::isClosed(std::string_view name) const {
  return std::any_of(years_.begin(), years_.end(),
                     [name](const CalendarYear& year) { return year.isClosed && equalsNoCase(year.name, name); });
}

const CalendarYear* Calendar::closedFrom(std::string_view name) const {
  const auto found = std::find_if(years_.begin(), years_.end(), [name](const CalendarYear& year) {
    return year.isClosed && compareNoCase(year.name, name) >= 0;
  });
  return found == years_.end() ? nullptr : &*found;
}

std::optional<Date> Calendar::closedUpTo() const {
  std::optional<Date> latest;
  for (const CalendarYear& year : years_) {
    if (year.isClosed && (!latest || year.closing > *latest)) latest = year.closing;
  }
  return latest;
}

ClosedCalendar closedCalendarAt(const Calendar& accounting, const Calendar& financial, Date date) {
  const auto accountingEnd = accounting.closedUpTo();
  const auto financialEnd = financial.closedUpTo();
  const bool financialDecides = financialEnd && (!accountingEnd || *financialEnd > *accountingEnd);
  const auto& end = financialDecides ? financialEnd : accountingEnd;
  if (!end || date > *end) return ClosedCalendar::kNone;
  return financialDecides ? ClosedCalendar::kFinancial : ClosedCalendar::kAccounting;
}

}  // namespace orva
