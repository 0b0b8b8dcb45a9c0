#pragma once

#include <optional>
#include <string_view>

#include "platform/embedded/catalogue.h"
#include "platform/embedded/sql/types.h"

namespace orva::embedded {

/// How a text that stands for a date is read: SQL text carries month/day/year
/// (or year/month/day), record sets take day/month/year.
enum class DateOrder { kMonthDayYear, kDayMonthYear };

/// A date of SQL text: month/day/year, year/month/day, or the eight digits
/// yyyymmdd; "/", "-" or "." between, a time of day behind is dropped. A first
/// number above twelve is taken for the day, as the desktop database does.
std::optional<Date> parseSqlDate(std::string_view text);

/// `value` as `column` stores it. Throws kTypeMismatch, kDataOverflow (too
/// long a text, too large a number) or kIntegrity (null in a required column).
Value convertForColumn(const ColumnDef& column, const Value& value, DateOrder order);

/// `value` converted inside an expression. Throws kTypeMismatch.
Value convertForType(sql::SqlType type, const Value& value);

/// The number that a value stands for; throws kTypeMismatch when it is none.
double numberOf(const Value& value);

}  // namespace orva::embedded
