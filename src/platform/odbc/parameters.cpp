#include "platform/odbc/parameters.h"

#include <algorithm>

#include "platform/odbc/utf16.h"

namespace orva::odbc {
namespace {

/// Room kept for a long text; a longer one is bound anew.
constexpr std::size_t kLongTextRoom = 1000;

}  // namespace

SQL_TIMESTAMP_STRUCT instantOf(Date date) {
  SQL_TIMESTAMP_STRUCT instant{};
  instant.year = static_cast<SQLSMALLINT>(date.year());
  instant.month = static_cast<SQLUSMALLINT>(date.month());
  instant.day = static_cast<SQLUSMALLINT>(date.day());
  return instant;
}

void Parameters::place(Slot& slot, void* data, std::size_t room) {
  if (slot.data == data && slot.room == static_cast<SQLLEN>(room)) return;
  slot.data = data;
  slot.room = static_cast<SQLLEN>(room);
  slot.bound = false;
}

void Parameters::prepare(Slot& slot, const WireType& wire) {
  switch (wire.type) {
    case SQL_BIT:
      slot.valueType = SQL_C_BIT;
      return place(slot, &slot.flag, sizeof slot.flag);
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      slot.valueType = SQL_C_SBIGINT;
      return place(slot, &slot.whole, sizeof slot.whole);
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      slot.valueType = SQL_C_DOUBLE;
      return place(slot, &slot.number, sizeof slot.number);
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      slot.valueType = SQL_C_TYPE_TIMESTAMP;
      return place(slot, &slot.instant, sizeof slot.instant);
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
    case SQL_WLONGVARCHAR:
      // Narrow texts would mean another thing on each system.
      slot.valueType = SQL_C_WCHAR;
      slot.wide.reserve(std::min<std::size_t>(wire.size, kLongTextRoom));
      return;
    default:
      slot.valueType = SQL_C_CHAR;
      slot.narrow.reserve(wire.size + 8);
  }
}

void Parameters::fillText(Slot& slot, const std::string& text) {
  if (slot.valueType == SQL_C_WCHAR) {
    slot.wide.assign(toUtf16(text));
    slot.length = static_cast<SQLLEN>(slot.wide.size() * sizeof(char16_t));
    place(slot, slot.wide.data(), slot.wide.capacity() * sizeof(char16_t));
  } else {
    slot.narrow.assign(text);
    slot.length = static_cast<SQLLEN>(slot.narrow.size());
    place(slot, slot.narrow.data(), slot.narrow.capacity());
  }
}

void Parameters::fill(Slot& slot, const Argument& argument) {
  const Value& value = argument.cell.value;
  const bool isText = slot.valueType == SQL_C_WCHAR || slot.valueType == SQL_C_CHAR;
  if (isText) fillText(slot, value.toText());
  if (value.isNull()) {
    slot.length = SQL_NULL_DATA;
    return;
  }
  if (isText) return;
  slot.length = slot.room;
  slot.flag = value.toBoolean() ? 1 : 0;
  slot.whole = value.toInteger().value_or(0);
  if (const auto* number = std::get_if<double>(&value.storage())) slot.number = *number;
  if (argument.cell.instant) {
    slot.instant = *argument.cell.instant;
  } else if (const auto* date = std::get_if<Date>(&value.storage())) {
    slot.instant = instantOf(*date);
  }
}

SQLRETURN Parameters::set(SQLHSTMT statement, const std::vector<Argument>& arguments) {
  const bool isFirst = slots_.empty();
  if (isFirst) slots_.resize(arguments.size());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    Slot& slot = slots_[i];
    const WireType& wire = arguments[i].wire;
    if (isFirst) prepare(slot, wire);
    fill(slot, arguments[i]);
    if (slot.bound) continue;
    const SQLRETURN done =
        SQLBindParameter(statement, static_cast<SQLUSMALLINT>(i + 1), SQL_PARAM_INPUT, slot.valueType, wire.type,
                         wire.size, wire.decimals, slot.data, slot.room, &slot.length);
    if (!SQL_SUCCEEDED(done)) return done;
    slot.bound = true;
  }
  return SQL_SUCCESS;
}

}  // namespace orva::odbc
