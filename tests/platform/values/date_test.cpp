#include "platform/values/date.h"

#include <gtest/gtest.h>

#include <string>

namespace orva {
namespace {

Date day(const char* text) { return Date::parseDayMonthYear(text).value(); }

TEST(Date, ReadsStrictDayMonthYear) {
  struct Case {
    const char* text;
    const char* shown;  // empty: no date
  };
  const Case kCases[] = {
      {"05/11/2026", "05/11/2026"},
      {"5/1/2026", "05/01/2026"},
      {" 5-1-2026 ", "05/01/2026"},
      {"5.1.2026", "05/01/2026"},
      {"29/02/2024", "29/02/2024"},
      {"29/02/2000", "29/02/2000"},
      {"31/12/9999", "31/12/9999"},
      {"29/02/2023", ""},
      {"29/02/1900", ""},
      {"31/02/2005", ""},
      {"31/04/2005", ""},
      {"00/01/2005", ""},
      {"01/00/2005", ""},
      {"01/13/2005", ""},
      {"12/31/2005", ""},
      {"2005/01/01", ""},
      {"01/01/05", ""},
      {"01/01/20055", ""},
      {"01/01/0099", ""},
      {"1/1-2005", ""},
      {"001/01/2005", ""},
      {"01/01/2005 10:00", ""},
      {"01/01/200x", ""},
      {"01 /01/2005", ""},
      {"38353", ""},
      {"", ""},
      {"/", ""},
  };
  for (const Case& c : kCases) {
    const auto date = Date::parseDayMonthYear(c.text);
    EXPECT_EQ(date ? date->toDayMonthYear() : "", c.shown) << '"' << c.text << '"';
  }
}

TEST(Date, CountsDaysAsTheDatabasesDo) {
  EXPECT_EQ(day("30/12/1899").dayNumber(), 0);
  EXPECT_EQ(day("01/01/1900").dayNumber(), 2);
  EXPECT_EQ(day("01/03/1900").dayNumber(), 61);
  EXPECT_EQ(day("01/01/2000").dayNumber(), 36526);
  EXPECT_EQ(day("31/12/9999").dayNumber(), 2958465);
  EXPECT_EQ(daysBetween(day("01/04/2023"), day("31/03/2024")), 365);
}

TEST(Date, WritesTheFormsOfScreenAndStatement) {
  EXPECT_EQ(day("5/11/2026").toMonthDayYear(), "11/05/2026");
  EXPECT_EQ(day("5/11/2026").toYearMonthDay(), "2026/11/05");
}

TEST(Date, MonthsLaterStayInsideTheMonth) {
  struct Case {
    const char* from;
    int months;
    const char* to;
  };
  const Case kCases[] = {
      {"31/01/2023", 1, "28/02/2023"},  {"31/01/2024", 1, "29/02/2024"},   {"30/11/2023", 3, "29/02/2024"},
      {"31/12/2023", 12, "31/12/2024"}, {"31/03/2024", -1, "29/02/2024"},  {"15/06/2024", 0, "15/06/2024"},
      {"29/02/2024", 12, "28/02/2025"}, {"31/03/2024", -13, "28/02/2023"},
  };
  for (const Case& c : kCases) EXPECT_EQ(day(c.from).plusMonths(c.months), day(c.to)) << c.from;
}

TEST(Date, RangeOfTheServerStartsIn1900) {
  EXPECT_FALSE(isInDatabaseRange(day("31/12/1899")));
  EXPECT_TRUE(isInDatabaseRange(day("01/01/1900")));
  EXPECT_TRUE(isInDatabaseRange(day("31/12/9999")));
}

}  // namespace
}  // namespace orva
