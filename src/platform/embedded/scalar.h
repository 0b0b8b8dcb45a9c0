#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <variant>

#include "platform/access/cell.h"
#include "platform/embedded/catalogue.h"

namespace orva::embedded {

/// A value in the form in which SQLite sees it: a currency as ten-thousandths, a
/// date as its day number, a Boolean as 0 or 1.
using Scalar = std::variant<std::monostate, std::int64_t, double, std::string>;

inline bool isNull(const Scalar& scalar) { return std::holds_alternative<std::monostate>(scalar); }

/// Type of an Access column in the catalogue of the engine. Binary data and
/// objects count as memos without content: the importer neither shows nor changes them.
ColumnType columnTypeOf(const access::Column& column);

/// A cell of a row. A date loses its time of day.
Scalar scalarOf(access::Cell&& cell);
Scalar scalarOf(sqlite3_value* value);
Scalar scalarOf(const Value& value);
/// What a column stores for a value; throws kTypeMismatch when it cannot.
access::Cell cellOf(const access::Column& column, Scalar&& scalar);

void giveResult(sqlite3_context* context, const Scalar& scalar);

/// Appends the sort key of a value: keys compare byte by byte as SQLite compares
/// the values with text in the collation of the desktop database.
void appendSortKey(std::string& key, const Scalar& scalar);
void appendTextSortKey(std::string& key, std::string_view text);
/// The first byte of the keys of values that are not null.
inline constexpr char kNumberMark = '\x10';

}  // namespace orva::embedded
