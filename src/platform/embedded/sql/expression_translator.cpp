#include <algorithm>
#include <utility>

#include "platform/embedded/sql/translator.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/values/text.h"

namespace orva::sql {

using embedded::ColumnDef;

namespace {

constexpr bool isNumberType(SqlType type) {
  return type == SqlType::kInteger || type == SqlType::kDouble || type == SqlType::kCurrency;
}

std::string typeNumber(SqlType type) { return std::to_string(static_cast<int>(type)); }

BindAs bindAsOf(SqlType type) {
  switch (type) {
    case SqlType::kBoolean:
      return BindAs::kBoolean;
    case SqlType::kInteger:
    case SqlType::kDouble:
      return BindAs::kNumber;
    case SqlType::kCurrency:
      return BindAs::kCurrency;
    case SqlType::kDate:
      return BindAs::kDate;
    default:
      return BindAs::kText;
  }
}

}  // namespace

/// The argument of upper and lower case: neither matters in a comparison.
const Expr& Translator::withoutCase(const Expr& expr) const {
  const Expr* inner = &expr;
  const std::string_view upper = isServer() ? "upper" : "ucase";
  const std::string_view lower = isServer() ? "lower" : "lcase";
  while (inner->kind == ExprKind::kFunction && inner->args.size() == 1 &&
         (inner->name == upper || inner->name == lower)) {
    inner = inner->args[0].get();
  }
  return *inner;
}

std::string Translator::bind(const Operand& operand, BindAs as, const ColumnDef* column) {
  result_.bindings.push_back({operand.literal->literal, as, operand.negative, column});
  return "?" + std::to_string(result_.bindings.size());
}

std::string Translator::sqlOf(const Operand& operand, SqlType want) {
  if (operand.literal) return bind(operand, bindAsOf(want == SqlType::kNull ? operand.type : want));
  if (want == SqlType::kNull || operand.type == want || operand.type == SqlType::kNull) return operand.sql;
  const SqlType have = operand.type;
  if (want == SqlType::kDouble && have == SqlType::kInteger) return operand.sql;
  if (want == SqlType::kCurrency && have == SqlType::kInteger) return "(" + operand.sql + "*10000)";
  if (want == SqlType::kDouble && have == SqlType::kCurrency) return "(" + operand.sql + "/10000.0)";
  // Yes is -1 where the desktop database shows the number behind it.
  if (have == SqlType::kBoolean && isNumberType(want) && want != SqlType::kCurrency) {
    return isServer() ? operand.sql : "(-" + operand.sql + ")";
  }
  if (have == SqlType::kDate && (want == SqlType::kInteger || want == SqlType::kDouble)) return operand.sql;
  if (want == SqlType::kDate && have == SqlType::kInteger) return operand.sql;
  return "orva_convert(" + operand.sql + ", " + typeNumber(have) + ", " + typeNumber(want) + ")";
}

/// The type in which values are compared or meet in one column. A literal takes
/// the type of what stands beside it.
SqlType Translator::commonType(const std::vector<Operand>& operands) const {
  SqlType common = SqlType::kNull;
  SqlType ofLiterals = SqlType::kNull;
  const auto wider = [](SqlType a, SqlType b) {
    if (a == SqlType::kNull || a == b) return b;
    if (b == SqlType::kNull) return a;
    if (a == SqlType::kText || b == SqlType::kText) return a == SqlType::kText ? b : a;
    return std::max(a, b);
  };
  for (const Operand& operand : operands) {
    SqlType& slot = operand.literal ? ofLiterals : common;
    slot = wider(slot, operand.type);
  }
  if (common == SqlType::kNull) return ofLiterals;
  // A fraction beside whole numbers is compared as it stands; a number beside a
  // text means that the text must be a number.
  if (common == SqlType::kInteger && ofLiterals == SqlType::kDouble) return SqlType::kDouble;
  if (common == SqlType::kText && isNumberType(ofLiterals)) return SqlType::kDouble;
  if (common == SqlType::kText && ofLiterals == SqlType::kDate) return SqlType::kDate;
  return common;
}

Operand Translator::literalOperand(const Expr& expr) const {
  Operand operand;
  operand.literal = &expr;
  operand.constant = true;
  operand.type = SqlType::kText;
  if (expr.token.kind == TokenKind::kDate) operand.type = SqlType::kDate;
  if (expr.token.kind == TokenKind::kNumber) operand.type = SqlType::kDouble;
  return operand;
}

Operand Translator::translate(const Expr& expr) {
  switch (expr.kind) {
    case ExprKind::kLiteral:
      return literalOperand(expr);
    case ExprKind::kNull: {
      Operand null;
      null.sql = "NULL";
      null.constant = true;
      return null;
    }
    case ExprKind::kColumn:
      return column(expr);
    case ExprKind::kNegate:
      return negate(expr);
    case ExprKind::kArithmetic:
      return arithmetic(expr);
    case ExprKind::kFunction:
      return translateFunction(*this, expr);
    case ExprKind::kCase:
      return caseOf(expr);
    case ExprKind::kSubquery:
      return subquery(expr);
    default:
      break;
  }
  // Conditions inside conditions say nothing about single columns.
  Facts* const facts = std::exchange(facts_, nullptr);
  Operand operand;
  operand.type = SqlType::kBoolean;
  operand.sql = condition(expr);
  facts_ = facts;
  return operand;
}

std::string Translator::condition(const Expr& expr) {
  Facts* const facts = facts_;
  const bool single = expr.kind == ExprKind::kCompare || expr.kind == ExprKind::kIn || expr.kind == ExprKind::kIsNull;
  if (!single) facts_ = nullptr;
  Operand operand;
  switch (expr.kind) {
    case ExprKind::kCompare:
      operand = compare(expr);
      break;
    case ExprKind::kAnd:
      operand = junction(expr, " AND ");
      break;
    case ExprKind::kOr:
      operand = junction(expr, " OR ");
      break;
    case ExprKind::kNot:
      operand.sql = "(NOT " + condition(*expr.args[0]) + ")";
      break;
    case ExprKind::kIsNull:
      operand = isNull(expr);
      break;
    case ExprKind::kIn:
      operand = inList(expr);
      break;
    case ExprKind::kBetween:
      operand = between(expr);
      break;
    case ExprKind::kLike:
      operand = like(expr);
      break;
    case ExprKind::kExists: {
      std::vector<ResultColumn> columns;
      operand.sql = "(EXISTS (" + selectSql(*expr.select, nullptr, columns) + "))";
      break;
    }
    default:
      operand.sql = natural(translate(expr));
      break;
  }
  facts_ = facts;
  return operand.sql;
}

Operand Translator::negate(const Expr& expr) {
  Operand operand = translate(*expr.args[0]);
  if (operand.literal && operand.literal->token.kind == TokenKind::kNumber) {
    operand.negative = !operand.negative;
    return operand;
  }
  if (operand.type == SqlType::kText || operand.type == SqlType::kBoolean) {
    operand.sql = sqlOf(operand, SqlType::kDouble);
    operand.type = SqlType::kDouble;
  }
  Operand result;
  result.type = operand.type;
  result.sql = "(-" + natural(operand) + ")";
  result.constant = operand.constant;
  return result;
}

Operand Translator::arithmetic(const Expr& expr) {
  const Operand left = translate(*expr.args[0]);
  const Operand right = translate(*expr.args[1]);
  Operand result;
  const bool texts = left.type == SqlType::kText && right.type == SqlType::kText;
  if (expr.name == "&") {
    result.type = SqlType::kText;
    result.sql =
        "(coalesce(" + sqlOf(left, SqlType::kText) + ", '') || coalesce(" + sqlOf(right, SqlType::kText) + ", ''))";
  } else if (expr.name == "+" && texts) {
    result.type = SqlType::kText;
    result.sql = "(" + sqlOf(left, SqlType::kText) + " || " + sqlOf(right, SqlType::kText) + ")";
  } else if (left.type == SqlType::kDate || right.type == SqlType::kDate) {
    result = dateArithmetic(expr.name, left, right);
  } else if (left.type == SqlType::kCurrency || right.type == SqlType::kCurrency) {
    result = moneyArithmetic(expr.name, left, right);
  } else {
    result = numberArithmetic(expr.name, left, right);
  }
  result.constant = left.constant && right.constant;
  return result;
}

Operand Translator::dateArithmetic(const std::string& op, const Operand& left, const Operand& right) {
  if (op != "+" && op != "-") throw ProviderError(provider_number::kTypeMismatch, "A date can only be added to.");
  Operand result;
  const bool both = left.type == SqlType::kDate && right.type == SqlType::kDate;
  result.type = both ? SqlType::kInteger : SqlType::kDate;
  const auto days = [this](const Operand& operand) {
    if (operand.type == SqlType::kDate) return sqlOf(operand, SqlType::kDate);
    return "CAST(" + sqlOf(operand, SqlType::kDouble) + " AS INTEGER)";
  };
  result.sql = "(" + days(left) + " " + op + " " + days(right) + ")";
  return result;
}

Operand Translator::moneyArithmetic(const std::string& op, const Operand& left, const Operand& right) {
  Operand result;
  result.type = SqlType::kCurrency;
  if (op == "+" || op == "-") {
    result.sql = "(" + sqlOf(left, SqlType::kCurrency) + " " + op + " " + sqlOf(right, SqlType::kCurrency) + ")";
  } else if (op == "*") {
    const bool leftIsMoney = left.type == SqlType::kCurrency;
    const Operand& money = leftIsMoney ? left : right;
    result.sql =
        "orva_money_times(" + natural(money) + ", " + sqlOf(leftIsMoney ? right : left, SqlType::kDouble) + ")";
  } else {
    result = numberArithmetic(op, left, right);
  }
  return result;
}

Operand Translator::numberArithmetic(const std::string& op, const Operand& left, const Operand& right) {
  Operand result;
  const bool whole = left.type == SqlType::kInteger && right.type == SqlType::kInteger;
  result.type = whole ? SqlType::kInteger : SqlType::kDouble;
  const std::string l = sqlOf(left, SqlType::kDouble);
  const std::string r = sqlOf(right, SqlType::kDouble);
  if (op == "\\" || op == "%") {
    result.type = SqlType::kInteger;
    result.sql = "(CAST(" + l + " AS INTEGER) " + (op == "%" ? "%" : "/") + " CAST(" + r + " AS INTEGER))";
  } else if (op == "/" && !(isServer() && whole)) {
    result.type = SqlType::kDouble;
    result.sql = "(" + l + " * 1.0 / " + r + ")";
  } else {
    result.sql = "(" + l + " " + op + " " + r + ")";
  }
  return result;
}

std::string Translator::comparison(const std::string& op, const Operand& left, const Operand& right) {
  const SqlType type = commonType({left, right});
  std::string sql = "(" + sqlOf(left, type) + " " + op + " " + sqlOf(right, type);
  const bool plainColumn = (left.column && !left.literal) || (right.column && !right.literal);
  if (type == SqlType::kText && !plainColumn) sql += collate();
  return sql + ")";
}

Operand Translator::compare(const Expr& expr) {
  Operand result;
  result.type = SqlType::kBoolean;
  if (expr.name == "=" && prefixTest(expr, result)) return result;
  if (expr.name == "<>" && flagTest(expr, result)) return result;
  const Operand left = translate(withoutCase(*expr.args[0]));
  const Operand right = translate(withoutCase(*expr.args[1]));
  result.sql = comparison(expr.name, left, right);
  result.constant = left.constant && right.constant;
  const SqlType type = commonType({left, right});
  if (!left.literal && sqlOf(left, type) == left.sql) note(expr.name, left, right);
  if (!right.literal && sqlOf(right, type) == right.sql) note(expr.name, right, left);
  return result;
}

/// "mid(column, 1, n) = 'P'" and its like can only hold for texts from P up to
/// the end of the prefix P, a range of an index. The test itself stays.
bool Translator::prefixTest(const Expr& expr, Operand& result) {
  const Expr& call = withoutCase(*expr.args[0]);
  const Expr& text = withoutCase(*expr.args[1]);
  if (call.kind != ExprKind::kFunction || call.args.size() < 2 || text.kind != ExprKind::kLiteral) return false;
  if (text.token.kind != TokenKind::kText) return false;
  const bool isMid = call.name == (isServer() ? "substring" : "mid") && call.args.size() == 3;
  if (!isMid && !(call.name == "left" && call.args.size() == 2)) return false;
  const Expr& start = *call.args[1];
  if (isMid && (start.kind != ExprKind::kLiteral || start.token.text != "1")) return false;
  const Operand column = translate(withoutCase(*call.args[0]));
  if (!column.column || column.type != SqlType::kText) return false;
  if (isMid) assume(start);
  // Every text begins with the empty one: no range, and other indexes may serve.
  result_.assumptions.push_back({text.literal, {}, text.token.text.empty()});
  if (text.token.text.empty()) return false;
  const Operand prefix = literalOperand(text);
  const std::string from = bind(prefix, BindAs::kText);
  const std::string to = bind(prefix, BindAs::kPrefixEnd);
  const std::string test = comparison("=", translate(call), prefix);
  result.sql = "(" + column.sql + " >= " + from + " AND " + column.sql + " < " + to + " AND " + test + ")";
  const bool isFirst = facts_ && facts_->range.empty();
  note("<", column, prefix);
  if (isFirst) facts_->rangeIsPrefix = !facts_->range.empty();
  return true;
}

Operand Translator::junction(const Expr& expr, const char* word) {
  Operand result;
  result.type = SqlType::kBoolean;
  for (const ExprPtr& term : expr.args) result.sql += (result.sql.empty() ? "(" : word) + condition(*term);
  result.sql += ")";
  return result;
}

Operand Translator::isNull(const Expr& expr) {
  const Operand tested = translate(*expr.args[0]);
  Operand result;
  result.type = SqlType::kBoolean;
  result.sql = "(" + natural(tested) + (expr.negated ? " IS NOT NULL)" : " IS NULL)");
  return result;
}

Operand Translator::inList(const Expr& expr) {
  const Operand tested = translate(withoutCase(*expr.args[0]));
  std::vector<Operand> all = {tested};
  Operand result;
  result.type = SqlType::kBoolean;
  std::string values;
  if (expr.select) {
    Operand inner = subquery(expr);
    all.push_back(inner);
    values = inner.sql;
  } else {
    for (std::size_t i = 1; i < expr.args.size(); ++i) all.push_back(translate(*expr.args[i]));
  }
  const SqlType type = commonType(all);
  std::string left = sqlOf(tested, type);
  if (type == SqlType::kText && !tested.column) left += collate();
  if (!expr.select) {
    for (std::size_t i = 1; i < all.size(); ++i) values += (i == 1 ? "(" : ", ") + sqlOf(all[i], type);
    values += ")";
  }
  result.sql = "(" + left + (expr.negated ? " NOT IN " : " IN ") + values + ")";
  return result;
}

Operand Translator::between(const Expr& expr) {
  std::vector<Operand> all;
  for (const ExprPtr& argument : expr.args) all.push_back(translate(withoutCase(*argument)));
  Operand result;
  result.type = SqlType::kBoolean;
  const std::string from = comparison(">=", all[0], all[1]);
  const std::string to = comparison("<=", all[0], all[2]);
  result.sql = std::string(expr.negated ? "(NOT (" : "((") + from + " AND " + to + "))";
  return result;
}

Operand Translator::like(const Expr& expr) {
  const Operand tested = translate(withoutCase(*expr.args[0]));
  const Operand pattern = translate(*expr.args[1]);
  Operand result;
  result.type = SqlType::kBoolean;
  result.sql = "(" + sqlOf(tested, SqlType::kText) + (expr.negated ? " NOT LIKE " : " LIKE ") +
               sqlOf(pattern, SqlType::kText) + ")";
  return result;
}

Operand Translator::caseOf(const Expr& expr) {
  std::vector<Operand> results;
  for (std::size_t i = 1; i < expr.args.size(); i += 2) results.push_back(translate(*expr.args[i]));
  if (expr.args.size() % 2 != 0) results.push_back(translate(*expr.args.back()));
  Operand result;
  result.type = commonType(results);
  result.sql = "(CASE";
  for (std::size_t i = 0; i + 1 < expr.args.size(); i += 2) {
    result.sql += " WHEN " + condition(*expr.args[i]) + " THEN " + sqlOf(results[i / 2], result.type);
  }
  if (expr.args.size() % 2 != 0) result.sql += " ELSE " + sqlOf(results.back(), result.type);
  result.sql += " END)";
  return result;
}

Operand Translator::subquery(const Expr& expr) {
  std::vector<ResultColumn> columns;
  Operand result;
  result.sql = "(" + selectSql(*expr.select, nullptr, columns) + ")";
  if (columns.size() != 1) {
    throw ProviderError(provider_number::kSyntaxOrExists, "A query inside a statement must give one column.");
  }
  result.type = columns[0].type;
  return result;
}

}  // namespace orva::sql
