#include <algorithm>
#include <string_view>

#include "platform/embedded/sql/definitions.h"
#include "platform/embedded/sql/translator.h"

namespace orva::sql {
namespace {

enum class In { kBoth, kAccess, kServer };

using Hook = Operand (*)(Translator&, const Expr&);

/// One function of a dialect. `arguments` names the types of the arguments, the
/// optional ones behind a "|": t text, i whole number, n number, d date.
struct FunctionRule {
  std::string_view name;
  In in = In::kBoth;
  std::string_view arguments = {};
  SqlType type = SqlType::kText;
  std::string_view emits = {};
  std::string_view tail = {};
  Hook hook = nullptr;
};

Operand iif(Translator& translator, const Expr& expr);
Operand isNullTest(Translator& translator, const Expr& expr);
Operand firstNotNull(Translator& translator, const Expr& expr);
Operand isNumericTest(Translator& translator, const Expr& expr);
Operand convert(Translator& translator, const Expr& expr);
Operand aggregate(Translator& translator, const Expr& expr) { return translator.aggregate(expr); }

constexpr FunctionRule kFunctions[] = {
    {.name = "mid", .in = In::kAccess, .arguments = "ti|i", .emits = "orva_mid"},
    {.name = "substring", .in = In::kServer, .arguments = "tii", .emits = "orva_mid"},
    {.name = "left", .arguments = "ti", .emits = "orva_left"},
    {.name = "right", .arguments = "ti", .emits = "orva_right"},
    {.name = "len", .in = In::kAccess, .arguments = "t", .type = SqlType::kInteger, .emits = "orva_len"},
    {.name = "len", .in = In::kServer, .arguments = "t", .type = SqlType::kInteger, .emits = "orva_len_padded"},
    {.name = "trim", .in = In::kAccess, .arguments = "t", .emits = "orva_trim"},
    {.name = "ltrim", .arguments = "t", .emits = "orva_ltrim"},
    {.name = "rtrim", .arguments = "t", .emits = "orva_rtrim"},
    {.name = "ucase", .in = In::kAccess, .arguments = "t", .emits = "orva_upper"},
    {.name = "lcase", .in = In::kAccess, .arguments = "t", .emits = "orva_lower"},
    {.name = "upper", .in = In::kServer, .arguments = "t", .emits = "orva_upper"},
    {.name = "lower", .in = In::kServer, .arguments = "t", .emits = "orva_lower"},
    {.name = "val", .in = In::kAccess, .arguments = "t", .type = SqlType::kDouble, .emits = "orva_val"},
    {.name = "cstr", .in = In::kAccess, .arguments = "t", .emits = "coalesce", .tail = ", ''"},
    {.name = "cdbl", .in = In::kAccess, .arguments = "n", .type = SqlType::kDouble, .emits = ""},
    {.name = "abs", .arguments = "n", .type = SqlType::kDouble, .emits = "abs"},
    {.name = "int", .in = In::kAccess, .arguments = "n", .type = SqlType::kDouble, .emits = "orva_floor"},
    {.name = "round", .arguments = "n|i", .type = SqlType::kDouble, .emits = "round"},
    {.name = "year", .arguments = "d", .type = SqlType::kInteger, .emits = "orva_date_part", .tail = ", 1"},
    {.name = "month", .arguments = "d", .type = SqlType::kInteger, .emits = "orva_date_part", .tail = ", 2"},
    {.name = "day", .arguments = "d", .type = SqlType::kInteger, .emits = "orva_date_part", .tail = ", 3"},
    {.name = "instr", .in = In::kAccess, .arguments = "tt", .type = SqlType::kInteger, .emits = "orva_instr"},
    {.name = "iif", .in = In::kAccess, .hook = iif},
    {.name = "isnull", .in = In::kAccess, .hook = isNullTest},
    {.name = "isnull", .in = In::kServer, .hook = firstNotNull},
    {.name = "coalesce", .in = In::kServer, .hook = firstNotNull},
    {.name = "isnumeric", .hook = isNumericTest},
    {.name = "convert", .in = In::kServer, .hook = convert},
    {.name = "count", .hook = aggregate},
    {.name = "sum", .hook = aggregate},
    {.name = "avg", .hook = aggregate},
    {.name = "min", .hook = aggregate},
    {.name = "max", .hook = aggregate},
};

[[noreturn]] void fail(const std::string& text) { throw ProviderError(provider_number::kSyntaxOrExists, text); }

void expectArguments(const Expr& expr, std::size_t least, std::size_t most) {
  if (expr.star || expr.distinct || expr.args.size() < least || expr.args.size() > most) {
    fail("Wrong number of arguments in the function '" + expr.name + "'.");
  }
}

SqlType argumentType(char letter) {
  switch (letter) {
    case 'i':
      return SqlType::kInteger;
    case 'n':
      return SqlType::kDouble;
    case 'd':
      return SqlType::kDate;
    default:
      return SqlType::kText;
  }
}

Operand iif(Translator& translator, const Expr& expr) {
  expectArguments(expr, 3, 3);
  const Operand test = translator.translate(*expr.args[0]);
  const Operand yes = translator.translate(*expr.args[1]);
  const Operand no = translator.translate(*expr.args[2]);
  Operand result;
  result.type = translator.commonType({yes, no});
  result.sql = "(CASE WHEN " + translator.natural(test) + " THEN " + translator.sqlOf(yes, result.type) + " ELSE " +
               translator.sqlOf(no, result.type) + " END)";
  return result;
}

Operand isNullTest(Translator& translator, const Expr& expr) {
  expectArguments(expr, 1, 1);
  Operand result;
  result.type = SqlType::kBoolean;
  result.sql = "(" + translator.natural(translator.translate(*expr.args[0])) + " IS NULL)";
  return result;
}

Operand firstNotNull(Translator& translator, const Expr& expr) {
  expectArguments(expr, 2, expr.name == "isnull" ? 2 : 20);
  std::vector<Operand> all;
  for (const ExprPtr& argument : expr.args) all.push_back(translator.translate(*argument));
  Operand result;
  result.type = translator.commonType(all);
  for (const Operand& operand : all) {
    result.sql += (result.sql.empty() ? "coalesce(" : ", ") + translator.sqlOf(operand, result.type);
  }
  result.sql += ")";
  return result;
}

/// The desktop database answers yes or no, the server 1 or 0.
Operand isNumericTest(Translator& translator, const Expr& expr) {
  expectArguments(expr, 1, 1);
  const Operand argument = translator.translate(*expr.args[0]);
  Operand result;
  result.type = translator.isServer() ? SqlType::kInteger : SqlType::kBoolean;
  result.sql = "orva_isnumeric(" + translator.sqlOf(argument, SqlType::kText) + ")";
  return result;
}

Operand convert(Translator& translator, const Expr& expr) {
  const auto type = columnTypeOf(expr.qualifier, SqlDialect::kSqlServer);
  if (!type) fail("There is no type '" + expr.qualifier + "'.");
  const Operand argument = translator.translate(*expr.args[0]);
  Operand result;
  result.type = sqlTypeOf(type->type);
  result.constant = argument.constant;
  if (translator.isSorting() && result.type == SqlType::kInteger && argument.type == SqlType::kText) {
    result.sql = "orva_whole(" + translator.natural(argument) + ")";
    if (!argument.key.empty()) result.key = "orva_whole(" + argument.key + ")";
    return result;
  }
  const int from = static_cast<int>(argument.type);
  result.sql = "orva_convert(" + translator.natural(argument) + ", " + std::to_string(from) + ", " +
               std::to_string(static_cast<int>(result.type)) + ")";
  return result;
}

Operand callRule(Translator& translator, const Expr& expr, const FunctionRule& rule) {
  const std::size_t bar = std::min(rule.arguments.find('|'), rule.arguments.size());
  const std::size_t most = rule.arguments.size() - (bar < rule.arguments.size() ? 1 : 0);
  expectArguments(expr, bar, most);
  Operand result;
  result.type = rule.type;
  result.constant = true;
  bool indexable = expr.args.size() == 1;
  std::string arguments;
  std::string key;
  for (std::size_t i = 0; i < expr.args.size(); ++i) {
    const Operand argument = translator.translate(*expr.args[i]);
    const SqlType type = argumentType(rule.arguments[i < bar ? i : i + 1]);
    arguments += (i == 0 ? "" : ", ") + translator.sqlOf(argument, type);
    indexable = indexable && !argument.key.empty() && argument.type == type;
    key = argument.key;
    result.constant = result.constant && argument.constant;
  }
  const std::string open = std::string(rule.emits) + "(";
  const std::string close = std::string(rule.tail) + ")";
  result.sql = open + arguments + close;
  if (indexable) result.key = open + key + close;
  return result;
}

}  // namespace

Operand translateFunction(Translator& translator, const Expr& expr) {
  for (const FunctionRule& rule : kFunctions) {
    if (rule.name != expr.name) continue;
    if (rule.in == (translator.isServer() ? In::kAccess : In::kServer)) continue;
    return rule.hook ? rule.hook(translator, expr) : callRule(translator, expr, rule);
  }
  fail("There is no function '" + expr.name + "'.");
}

Operand Translator::aggregate(const Expr& expr) {
  Operand result;
  if (expr.star) {
    if (expr.name != "count") fail("Only rows can be counted with '*'.");
    result.sql = "count(*)";
    result.type = SqlType::kInteger;
    return result;
  }
  if (expr.args.size() != 1) fail("The function '" + expr.name + "' takes one argument.");
  Operand argument = translate(*expr.args[0]);
  if (expr.name == "sum" || expr.name == "avg") {
    const bool number = argument.type == SqlType::kInteger || argument.type == SqlType::kCurrency;
    const SqlType type = number ? argument.type : SqlType::kDouble;
    argument.sql = sqlOf(argument, type);
    argument.literal = nullptr;
    argument.type = type;
  }
  const std::string inner = std::string(expr.distinct ? "DISTINCT " : "") + natural(argument);
  result.sql = expr.name + "(" + inner + ")";
  result.type = argument.type;
  if (expr.name == "count") result.type = SqlType::kInteger;
  if (expr.name == "avg" && argument.type == SqlType::kInteger) result.type = SqlType::kDouble;
  if (expr.name == "avg" && argument.type == SqlType::kCurrency)
    result.sql = "CAST(round(" + result.sql + ") AS INTEGER)";
  return result;
}

}  // namespace orva::sql
