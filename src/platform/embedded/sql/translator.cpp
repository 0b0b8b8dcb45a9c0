#include "platform/embedded/sql/translator.h"

#include "platform/embedded/sqlite_functions.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/values/text.h"

namespace orva::sql {

using embedded::ColumnDef;
using embedded::quoteName;
using embedded::TableDef;

namespace {

[[noreturn]] void failSyntax(const std::string& text) { throw ProviderError(provider_number::kSyntaxOrExists, text); }

ResultColumn resultOf(std::string name, const Operand& operand, bool server) {
  ResultColumn column;
  column.name = std::move(name);
  column.type = operand.type;
  if (operand.column) {
    column.fieldType = embedded::fieldTypeOf(operand.column->type, server);
    column.size = operand.column->size;
  } else if (operand.type != SqlType::kNull) {
    column.fieldType = embedded::fieldTypeOf(static_cast<embedded::ColumnType>(operand.type), server);
    column.size = operand.type == SqlType::kText ? 255 : 0;
  }
  return column;
}

}  // namespace

bool booleanConstant(std::string_view name, bool& value) {
  struct Constant {
    std::string_view name;
    bool value;
  };
  constexpr Constant kConstants[] = {{"true", true}, {"false", false}, {"yes", true},
                                     {"no", false},  {"on", true},     {"off", false}};
  for (const Constant& constant : kConstants) {
    if (!equalsNoCase(constant.name, name)) continue;
    value = constant.value;
    return true;
  }
  return false;
}

void splitTerms(const Expr* expr, std::vector<const Expr*>& terms) {
  if (!expr) return;
  if (expr->kind != ExprKind::kAnd) {
    terms.push_back(expr);
    return;
  }
  for (const ExprPtr& term : expr->args) splitTerms(term.get(), terms);
}

std::string Translator::collate() const {
  return std::string(" COLLATE ") + (isServer() ? embedded::kServerCollation : embedded::kAccessCollation);
}

void Translator::assume(const Expr& literal) {
  result_.assumptions.push_back({literal.literal, std::string(literal.token.text)});
}

// Names ---------------------------------------------------------------------

void Translator::addSource(Scope& scope, const TableName& name) const {
  const TableDef& table = catalogue_.get(name.name);
  for (const ScopeSource& source : scope.sources) {
    if (equalsNoCase(source.alias, name.alias)) failSyntax("The table name '" + name.alias + "' is used twice.");
  }
  scope.sources.push_back({name.alias, &table});
}

Translator::Found Translator::findColumn(const Scope& scope, const Expr& expr) const {
  Found found;
  for (const ScopeSource& source : scope.sources) {
    if (!expr.qualifier.empty() && !equalsNoCase(source.alias, expr.qualifier)) continue;
    const int at = source.table->find(expr.name);
    if (at < 0) continue;
    if (found.source) failSyntax("The field '" + expr.name + "' is in more than one table.");
    found.source = &source;
    found.column = at;
  }
  if (found.source || !scope.outer) return found;
  found = findColumn(*scope.outer, expr);
  found.outer = true;
  return found;
}

void Translator::failColumn(const Expr& expr) const {
  const std::string text = "There is no field '" + expr.name + "' in the tables of the statement.";
  // The desktop provider takes an unknown name for a parameter without a value.
  constexpr auto kParameterMissing = static_cast<std::int32_t>(0x80040E10);
  throw ProviderError(isServer() ? provider_number::kSyntaxOrExists : kParameterMissing, text);
}

Operand Translator::column(const Expr& expr) {
  const Found found = scope_ ? findColumn(*scope_, expr) : Found{};
  Operand operand;
  if (!found.source) {
    bool value = false;
    if (isServer() || !expr.qualifier.empty() || !booleanConstant(expr.name, value)) failColumn(expr);
    operand.sql = value ? "1" : "0";
    operand.type = SqlType::kBoolean;
    operand.constant = true;
    return operand;
  }
  operand.column = &found.source->table->columns[static_cast<std::size_t>(found.column)];
  operand.type = sqlTypeOf(operand.column->type);
  operand.sql = quoteName(found.source->alias) + "." + quoteName(operand.column->name);
  if (!found.outer) operand.key = quoteName(operand.column->name);
  return operand;
}

/// True when `expr` reads the source at that place of the current scope.
bool Translator::reads(const Expr& expr, std::size_t source) const {
  if (expr.kind == ExprKind::kColumn) {
    const Found found = findColumn(*scope_, expr);
    return found.source == &scope_->sources[source];
  }
  if (expr.select) return true;
  for (const ExprPtr& argument : expr.args) {
    if (reads(*argument, source)) return true;
  }
  return false;
}

bool Translator::isGrouped(const Expr& expr, const SelectStatement& statement) const {
  if (expr.select || expr.star) return false;
  if (expr.kind == ExprKind::kColumn) {
    for (const ExprPtr& group : statement.groupBy) {
      if (group->kind == ExprKind::kColumn && equalsNoCase(group->name, expr.name)) return true;
    }
    bool value = false;
    return !isServer() && booleanConstant(expr.name, value);
  }
  if (expr.kind == ExprKind::kFunction) {
    for (std::string_view name : {"count", "sum", "avg", "min", "max", "first", "last"}) {
      if (expr.name == name) return false;
    }
  }
  for (const ExprPtr& argument : expr.args) {
    if (!isGrouped(*argument, statement)) return false;
  }
  return true;
}

// Queries -------------------------------------------------------------------

std::string Translator::from(const SelectStatement& statement) {
  std::string sql;
  for (std::size_t i = 0; i < statement.sources.size(); ++i) {
    const Source& source = statement.sources[i];
    constexpr const char* kJoins[] = {", ", " INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN "};
    sql += i == 0 ? " FROM " : kJoins[static_cast<std::size_t>(source.join)];
    sql += quoteName(scope_->sources[i].table->name) + " AS " + quoteName(source.table.alias);
    if (source.on) sql += " ON " + condition(*source.on);
  }
  return sql;
}

std::string Translator::conjunction(const std::vector<const Expr*>& terms) {
  std::string sql;
  for (const Expr* term : terms) sql += (sql.empty() ? " WHERE " : " AND ") + condition(*term);
  return sql;
}

/// Terms of "having" that look at grouped columns alone choose rows before
/// they are grouped, where an index can serve them.
std::string Translator::where(const SelectStatement& statement, const Expr* criterion) {
  std::vector<const Expr*> terms;
  splitTerms(statement.where.get(), terms);
  splitTerms(criterion, terms);
  std::vector<const Expr*> having;
  splitTerms(statement.having.get(), having);
  for (const Expr* term : having) {
    if (isGrouped(*term, statement)) terms.push_back(term);
  }
  return conjunction(terms);
}

std::string Translator::grouping(const SelectStatement& statement) {
  std::string sql;
  for (const ExprPtr& group : statement.groupBy) {
    const Operand operand = translate(*group);
    if (operand.constant) failSyntax("Rows cannot be grouped by a constant.");
    sql += (sql.empty() ? " GROUP BY " : ", ") + natural(operand);
    if (operand.type == SqlType::kText && !operand.column) sql += collate();
  }
  std::vector<const Expr*> having;
  splitTerms(statement.having.get(), having);
  bool first = true;
  for (const Expr* term : having) {
    if (isGrouped(*term, statement)) continue;
    sql += (first ? " HAVING " : " AND ") + condition(*term);
    first = false;
  }
  return sql;
}

std::string Translator::orderKey(const SelectStatement& statement, const Expr& expr) {
  if (expr.kind == ExprKind::kLiteral && expr.token.kind == TokenKind::kNumber) {
    assume(expr);
    return std::string(expr.token.text);
  }
  if (expr.kind == ExprKind::kColumn && expr.qualifier.empty() && !findColumn(*scope_, expr).source) {
    for (const SelectItem& selected : statement.items) {
      if (equalsNoCase(selected.alias, expr.name)) return quoteName(selected.alias);
    }
    failColumn(expr);
  }
  sorting_ = true;
  const Operand operand = translate(expr);
  sorting_ = false;
  const bool needsCollation = operand.type == SqlType::kText && !operand.column;
  return natural(operand) + (needsCollation ? collate() : std::string());
}

std::string Translator::ordering(const SelectStatement& statement) {
  std::string sql;
  for (const OrderItem& item : statement.orderBy) {
    sql += (sql.empty() ? " ORDER BY " : ", ") + orderKey(statement, *item.expr) + (item.descending ? " DESC" : "");
  }
  return sql;
}

void Translator::starItems(const SelectItem& item, std::string& sql, std::vector<ResultColumn>& columns) {
  bool found = false;
  for (const ScopeSource& source : scope_->sources) {
    if (!item.starQualifier.empty() && !equalsNoCase(source.alias, item.starQualifier)) continue;
    found = true;
    for (const ColumnDef& def : source.table->columns) {
      Operand operand;
      operand.column = &def;
      operand.type = sqlTypeOf(def.type);
      sql += (sql.empty() ? "" : ", ") + quoteName(source.alias) + "." + quoteName(def.name);
      columns.push_back(resultOf(def.name, operand, isServer()));
    }
  }
  if (!found) failSyntax("There is nothing to select '*' from.");
}

std::string Translator::items(const SelectStatement& statement, std::vector<ResultColumn>& columns) {
  std::string sql;
  for (const SelectItem& item : statement.items) {
    if (item.star) {
      starItems(item, sql, columns);
      continue;
    }
    const Operand operand = translate(*item.expr);
    std::string name = item.alias;
    if (name.empty() && operand.column) name = operand.column->name;
    if (name.empty() && !isServer()) name = "Expr" + std::to_string(1000 + columns.size());
    sql += (sql.empty() ? "" : ", ") + natural(operand);
    if (operand.type == SqlType::kText && !operand.column && statement.distinct) sql += collate();
    if (!name.empty()) sql += " AS " + quoteName(name);
    columns.push_back(resultOf(std::move(name), operand, isServer()));
  }
  return sql;
}

std::string Translator::selectSql(const SelectStatement& statement, const Expr* criterion,
                                  std::vector<ResultColumn>& columns) {
  result_.readsOthers = true;
  Scope scope;
  scope.outer = scope_;
  for (const Source& source : statement.sources) addSource(scope, source.table);
  Scope* const outerScope = std::exchange(scope_, &scope);
  Facts facts;
  Facts* const outerFacts = std::exchange(facts_, nullptr);
  const std::string selected = items(statement, columns);
  std::string tail = from(statement);
  const bool collects = scope.sources.size() == 1;
  facts_ = collects ? &facts : nullptr;
  tail += where(statement, criterion);
  facts_ = nullptr;
  if (collects) {
    facts_ = &facts;
    noteOrder(statement);
    facts_ = nullptr;
    proposeIndex(*scope.sources[0].table, facts);
  }
  std::string sql = std::string("SELECT ") + (statement.distinct ? "DISTINCT " : "") + selected + tail +
                    grouping(statement) + ordering(statement);
  if (statement.topLiteral >= 0) sql += " LIMIT " + std::string(statement.top.text);
  scope_ = outerScope;
  facts_ = outerFacts;
  return sql;
}

/// Rows of a query over plain columns of one table are known by their key: they
/// can be changed, and read again without running the query.
bool Translator::keyedColumns(const SelectStatement& statement, const TableDef& table) {
  for (const SelectItem& item : statement.items) {
    if (item.star) {
      for (std::size_t i = 0; i < table.columns.size(); ++i) result_.columnOf.push_back(static_cast<int>(i));
    } else {
      if (item.expr->kind != ExprKind::kColumn) return false;
      const int at = table.find(item.expr->name);
      if (at < 0) return false;
      result_.columnOf.push_back(at);
    }
  }
  return true;
}

bool Translator::asKeyed(const SelectStatement& statement, const Expr* criterion) {
  if (statement.sources.size() != 1 || statement.distinct || !statement.groupBy.empty() || statement.having ||
      statement.topLiteral >= 0) {
    return false;
  }
  const TableDef& table = catalogue_.get(statement.sources[0].table.name);
  if (!keyedColumns(statement, table)) return false;
  Scope scope;
  addSource(scope, statement.sources[0].table);
  scope_ = &scope;
  std::string selected = items(statement, result_.columns);
  Facts facts;
  facts_ = &facts;
  result_.keyed = true;
  result_.table = &table;
  result_.tail = from(statement) + where(statement, criterion);
  noteOrder(statement);
  facts_ = nullptr;
  result_.ordering = ordering(statement);
  result_.wholeTable = !statement.where && !criterion && statement.orderBy.empty();
  if (result_.wholeTable) result_.ordering = std::string(" ORDER BY ") + kRowKey;
  proposeIndex(table, facts);
  scope_ = nullptr;
  return true;
}

Translation Translator::select(const SelectStatement& statement, const Expr* criterion) {
  if (asKeyed(statement, criterion)) return std::move(result_);
  result_ = Translation{};
  if (statement.topLiteral >= 0) result_.assumptions.push_back({statement.topLiteral, std::string(statement.top.text)});
  result_.sql = selectSql(statement, nullptr, result_.columns);
  if (!criterion) return std::move(result_);
  // The filter of a query is a condition on its result.
  TableDef rows;
  for (const ResultColumn& column : result_.columns) {
    const auto type =
        column.type == SqlType::kNull ? embedded::ColumnType::kText : static_cast<embedded::ColumnType>(column.type);
    rows.columns.push_back({.name = column.name, .type = type, .size = column.size, .defaultValue = {}});
  }
  Scope scope;
  scope.sources.push_back({"rows", &rows});
  scope_ = &scope;
  std::vector<const Expr*> terms = {criterion};
  result_.sql = "SELECT * FROM (" + result_.sql + ") AS \"rows\"" + conjunction(terms);
  scope_ = nullptr;
  return std::move(result_);
}

}  // namespace orva::sql
