#pragma once

#include <string>
#include <string_view>

#include "platform/xls/cell_table.h"

namespace orva::xls {

/// A number with up to 15 significant digits, without exponent and without
/// trailing zeros; no sign on zero.
std::string numberText(double value);
/// "dd/mm/yyyy", the time dropped; a time alone is "hh:mm:ss".
std::string dateText(const DateTime& moment);
/// "#DIV/0!" and its like; an unknown code is "#ERROR!".
std::string_view errorText(std::uint8_t code);
/// The code of an error text; nothing when there is no such error.
std::optional<std::uint8_t> errorCode(std::string_view text);

/// A cell of the table as text: see `Sheet::text`.
std::string cellText(const CellTable& table, const Cell& cell);

}  // namespace orva::xls
