#include "platform/embedded/sqlite_functions.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "platform/embedded/conversion.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using sql::SqlType;

std::string_view textOf(sqlite3_value* value) {
  const auto* text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
  return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

bool isNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

void giveText(sqlite3_context* context, std::string_view text) {
  sqlite3_result_text(context, text.data() ? text.data() : "", static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

int order(std::strong_ordering ordering) { return ordering < 0 ? -1 : ordering > 0 ? 1 : 0; }

constexpr char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

/// Most texts are plain: the characters are compared without decoding as long
/// as both sides are. The order is that of `compareNoCase`.
int compareTexts(std::string_view left, std::string_view right) {
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < common; ++i) {
    const char l = left[i];
    const char r = right[i];
    if ((l | r) & '\x80') return order(compareNoCase(left.substr(i), right.substr(i)));
    if (l == r) continue;
    const char upperL = upperAscii(l);
    const char upperR = upperAscii(r);
    if (upperL != upperR) return upperL < upperR ? -1 : 1;
  }
  if (left.size() == right.size()) return 0;
  return left.size() < right.size() ? -1 : 1;
}

std::string_view withoutTrailingBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareTexts({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                      {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

int collatePadded(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareTexts(withoutTrailingBlanks({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)}),
                      withoutTrailingBlanks({static_cast<const char*>(right), static_cast<std::size_t>(rightSize)}));
}

/// Byte offset of the `count`-th character from `at` on.
std::size_t skipCharacters(std::string_view text, std::size_t at, std::int64_t count) {
  while (count > 0 && at < text.size()) {
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0u) == 0x80u) ++at;
    --count;
  }
  return at;
}

using Arguments = sqlite3_value**;

void mid(sqlite3_context* context, int count, Arguments args) {
  if (isNull(args[0]) || isNull(args[1]) || (count == 3 && isNull(args[2]))) return;
  const std::string_view text = textOf(args[0]);
  std::int64_t start = sqlite3_value_int64(args[1]);
  std::int64_t length = count == 3 ? sqlite3_value_int64(args[2]) : INT32_MAX;
  if (start < 1) {
    length = std::max<std::int64_t>(
        0, std::min<std::int64_t>(length, INT32_MAX) + std::max<std::int64_t>(start, -INT32_MAX) - 1);
    start = 1;
  }
  const std::size_t from = skipCharacters(text, 0, start - 1);
  giveText(context, text.substr(from, skipCharacters(text, from, length) - from));
}

void left(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0]) || isNull(args[1])) return;
  const std::string_view text = textOf(args[0]);
  giveText(context, text.substr(0, skipCharacters(text, 0, sqlite3_value_int64(args[1]))));
}

void right(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0]) || isNull(args[1])) return;
  const std::string_view text = textOf(args[0]);
  const auto length = static_cast<std::int64_t>(characterCount(text));
  const std::int64_t wanted = std::max<std::int64_t>(0, sqlite3_value_int64(args[1]));
  giveText(context, text.substr(skipCharacters(text, 0, length - std::min(wanted, length))));
}

void length(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0])) return;
  sqlite3_result_int64(context, static_cast<std::int64_t>(characterCount(textOf(args[0]))));
}

void lengthPadded(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0])) return;
  sqlite3_result_int64(context, static_cast<std::int64_t>(characterCount(withoutTrailingBlanks(textOf(args[0])))));
}

void trimBoth(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0])) giveText(context, trim(textOf(args[0])));
}

void trimLeft(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0])) return;
  const std::string_view text = textOf(args[0]);
  giveText(context, text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

void trimRight(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0])) giveText(context, withoutTrailingBlanks(textOf(args[0])));
}

void upper(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0])) giveText(context, toUpper(textOf(args[0])));
}

void lower(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0])) giveText(context, toLower(textOf(args[0])));
}

void valOf(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0])) sqlite3_result_double(context, val(textOf(args[0])));
}

/// The number for sorting; nothing where there is none.
void whole(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0]) && isNumeric(textOf(args[0]))) sqlite3_result_double(context, val(textOf(args[0])));
}

void numeric(sqlite3_context* context, int, Arguments args) {
  sqlite3_result_int(context, !isNull(args[0]) && isNumeric(textOf(args[0])) ? 1 : 0);
}

/// Place of the second text in the first, from 1 on; 0 when it is not there.
void position(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0]) || isNull(args[1])) return;
  const std::string text = toUpper(textOf(args[0]));
  const std::size_t found = text.find(toUpper(textOf(args[1])));
  const bool missing = found == std::string::npos;
  sqlite3_result_int64(context, missing ? 0 : static_cast<std::int64_t>(characterCount(text.substr(0, found))) + 1);
}

void datePart(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0])) return;
  const Date date = Date::fromDayNumber(sqlite3_value_int(args[0]));
  switch (sqlite3_value_int(args[1])) {
    case 1:
      return sqlite3_result_int(context, date.year());
    case 2:
      return sqlite3_result_int(context, date.month());
    default:
      return sqlite3_result_int(context, date.day());
  }
}

Value valueOf(sqlite3_value* value, SqlType type) {
  if (isNull(value)) return {};
  switch (type) {
    case SqlType::kBoolean:
      return sqlite3_value_int(value) != 0;
    case SqlType::kInteger:
      return std::int64_t{sqlite3_value_int64(value)};
    case SqlType::kDouble:
      return sqlite3_value_double(value);
    case SqlType::kCurrency:
      return Currency::fromUnits(sqlite3_value_int64(value));
    case SqlType::kDate:
      return Date::fromDayNumber(sqlite3_value_int(value));
    case SqlType::kText:
      return textOf(value);
    case SqlType::kNull:
      break;
  }
  if (sqlite3_value_type(value) == SQLITE_INTEGER) return std::int64_t{sqlite3_value_int64(value)};
  if (sqlite3_value_type(value) == SQLITE_FLOAT) return sqlite3_value_double(value);
  return textOf(value);
}

struct Giver {
  sqlite3_context* context;
  void operator()(std::monostate) const { sqlite3_result_null(context); }
  void operator()(bool value) const { sqlite3_result_int(context, value ? 1 : 0); }
  void operator()(std::int64_t value) const { sqlite3_result_int64(context, value); }
  void operator()(double value) const { sqlite3_result_double(context, value); }
  void operator()(Currency value) const { sqlite3_result_int64(context, value.units()); }
  void operator()(Date value) const { sqlite3_result_int(context, value.dayNumber()); }
  void operator()(const std::string& value) const { giveText(context, value); }
};

template <typename Make>
void give(sqlite3_context* context, Make make) {
  try {
    std::visit(Giver{context}, make().storage());
  } catch (const ProviderError& error) {
    sqlite3_result_error(context, taggedError(error).c_str(), -1);
  }
}

/// orva_convert(value, from type, to type)
void convert(sqlite3_context* context, int, Arguments args) {
  give(context, [args] {
    const Value value = valueOf(args[0], static_cast<SqlType>(sqlite3_value_int(args[1])));
    return convertForType(static_cast<SqlType>(sqlite3_value_int(args[2])), value);
  });
}

/// orva_put(value, from type, column type, size, column name, flags): the value
/// as the column stores it. Flags: 1 required, 2 empty text allowed.
void put(sqlite3_context* context, int, Arguments args) {
  give(context, [args] {
    ColumnDef column;
    column.type = static_cast<ColumnType>(sqlite3_value_int(args[2]));
    column.size = sqlite3_value_int(args[3]);
    column.name = std::string(textOf(args[4]));
    column.required = (sqlite3_value_int(args[5]) & 1) != 0;
    column.allowZeroLength = (sqlite3_value_int(args[5]) & 2) != 0;
    return convertForColumn(column, valueOf(args[0], static_cast<SqlType>(sqlite3_value_int(args[1]))),
                            DateOrder::kMonthDayYear);
  });
}

/// Whole part of a number, towards minus infinity.
void floorOf(sqlite3_context* context, int, Arguments args) {
  if (!isNull(args[0])) sqlite3_result_double(context, std::floor(sqlite3_value_double(args[0])));
}

/// Product of an amount in ten-thousandths and a number, as an amount.
void moneyTimes(sqlite3_context* context, int, Arguments args) {
  if (isNull(args[0]) || isNull(args[1])) return;
  const double product = static_cast<double>(sqlite3_value_int64(args[0])) / Currency::kUnitsPerOne;
  sqlite3_result_int64(context, Currency::fromDouble(product * sqlite3_value_double(args[1])).units());
}

struct FunctionEntry {
  const char* name;
  int arguments;
  void (*call)(sqlite3_context*, int, sqlite3_value**);
};

constexpr FunctionEntry kFunctions[] = {
    {"orva_mid", 2, mid},         {"orva_mid", 3, mid},
    {"orva_left", 2, left},       {"orva_right", 2, right},
    {"orva_len", 1, length},      {"orva_len_padded", 1, lengthPadded},
    {"orva_trim", 1, trimBoth},   {"orva_ltrim", 1, trimLeft},
    {"orva_rtrim", 1, trimRight}, {"orva_upper", 1, upper},
    {"orva_lower", 1, lower},     {"orva_val", 1, valOf},
    {"orva_whole", 1, whole},     {"orva_isnumeric", 1, numeric},
    {"orva_instr", 2, position},  {"orva_date_part", 2, datePart},
    {"orva_convert", 3, convert}, {"orva_put", 6, put},
    {"orva_floor", 1, floorOf},   {"orva_money_times", 2, moneyTimes},
};

}  // namespace

void registerFunctions(sqlite3* database) {
  for (const FunctionEntry& function : kFunctions) {
    sqlite3_create_function_v2(database, function.name, function.arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               function.call, nullptr, nullptr, nullptr);
  }
  sqlite3_create_collation_v2(database, kAccessCollation, SQLITE_UTF8, nullptr, collate, nullptr);
  sqlite3_create_collation_v2(database, kServerCollation, SQLITE_UTF8, nullptr, collatePadded, nullptr);
}

}  // namespace orva::embedded
