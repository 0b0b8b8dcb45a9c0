#include "platform/embedded/literal.h"

#include <charconv>

#include "platform/embedded/conversion.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva::embedded {
namespace {

using sql::BindAs;
using sql::SqlType;
using sql::TokenKind;

/// Whole numbers stay whole, so that no digit of a long code is lost.
Value numberValue(std::string_view text) {
  std::int64_t whole = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (parsed.ec == std::errc() && parsed.ptr == text.data() + text.size()) return whole;
  return val(text);
}

/// The literal as what it is written as.
Value plainValue(const sql::Binding& binding, const sql::Literal& literal, std::string_view inside) {
  if (literal.kind == TokenKind::kText) return sql::unquoted(inside, literal.quote);
  if (literal.kind == TokenKind::kNumber) {
    return binding.negative ? numberValue("-" + std::string(inside)) : numberValue(inside);
  }
  const auto date = parseSqlDate(inside);
  if (date) return *date;
  throw ProviderError(provider_number::kSyntaxOrExists, "Syntax error in the date '" + std::string(inside) + "'.");
}

/// An amount in ten-thousandths; a number with more decimals equals no amount
/// and keeps them, so that every comparison comes out right.
Value moneyValue(const Value& value, std::string_view inside, bool negative) {
  const std::string digits = (negative ? "-" : "") + std::string(trim(inside));
  const auto money = Currency::parse(digits);
  const bool exact = money && afterPoint(digits).size() <= 4;
  if (exact) return money->units();
  return numberOf(value) * Currency::kUnitsPerOne;
}

/// Yes is -1 in the desktop database and 1 on the server: 2 matches no row.
Value booleanValue(const Value& value, SqlDialect dialect) {
  if (std::holds_alternative<std::string>(value.storage())) return convertForType(SqlType::kBoolean, value);
  const double number = numberOf(value);
  if (number == 0) return 0;
  return number == (dialect == SqlDialect::kAccess ? -1 : 1) ? 1 : 2;
}

Value numberFor(const Value& value) {
  const bool isNumber = std::holds_alternative<std::int64_t>(value.storage());
  return isNumber ? value : Value(numberOf(value));
}

}  // namespace

Value literalValue(const sql::Binding& binding, const sql::Literal& literal, std::string_view inside,
                   SqlDialect dialect) {
  const Value value = plainValue(binding, literal, inside);
  switch (binding.as) {
    case BindAs::kText:
      return value.toText();
    case BindAs::kPrefixEnd:
      return value.toText() + '\xFF';
    case BindAs::kNumber:
      return numberFor(value);
    case BindAs::kCurrency:
      return literal.kind == TokenKind::kDate ? numberFor(value) : moneyValue(value, inside, binding.negative);
    case BindAs::kDate:
      return literal.kind == TokenKind::kNumber ? numberFor(value) : convertForType(SqlType::kDate, value);
    case BindAs::kBoolean:
      return booleanValue(value, dialect);
    case BindAs::kColumn:
      break;
  }
  // The digits of an amount go into the column as they are written.
  if (literal.kind == TokenKind::kNumber && binding.column->type == ColumnType::kCurrency) {
    const std::string digits = (binding.negative ? "-" : "") + std::string(inside);
    return convertForColumn(*binding.column, Value(digits), DateOrder::kMonthDayYear);
  }
  return convertForColumn(*binding.column, value, DateOrder::kMonthDayYear);
}

}  // namespace orva::embedded
