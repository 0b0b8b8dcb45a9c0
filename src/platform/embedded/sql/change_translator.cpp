#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/embedded/sql/translator.h"
#include "platform/embedded/sqlite_handle.h"
#include "platform/values/text.h"

namespace orva::sql {

using embedded::ColumnDef;
using embedded::quoteName;
using embedded::TableDef;

namespace {

[[noreturn]] void failSyntax(const std::string& text) { throw ProviderError(provider_number::kSyntaxOrExists, text); }

struct Constant {
  std::string operator()(std::monostate) const { return "NULL"; }
  std::string operator()(bool value) const { return value ? "1" : "0"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(double value) const {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.17e", value);
    return text.data();
  }
  std::string operator()(Currency value) const { return std::to_string(value.units()); }
  std::string operator()(Date value) const { return std::to_string(value.dayNumber()); }
  std::string operator()(const std::string& value) const { return sqlQuote(value); }
};

[[noreturn]] void failRequired(const ColumnDef& column) {
  throw ProviderError(provider_number::kIntegrity, "The field '" + column.name + "' cannot be empty.");
}

}  // namespace

/// An expression as the column stores it.
std::string Translator::storedSql(const ColumnDef& column, const Operand& operand) {
  if (operand.literal) return bind(operand, BindAs::kColumn, &column);
  if (operand.sql == "NULL") {
    if (column.required) failRequired(column);
    return operand.sql;
  }
  const bool same = operand.type == sqlTypeOf(column.type) && !column.required;
  if (same && (!column.isText() || (column.size == 0 && column.allowZeroLength))) return operand.sql;
  const int flags = (column.required ? 1 : 0) + (column.allowZeroLength ? 2 : 0);
  return "orva_put(" + operand.sql + ", " + std::to_string(static_cast<int>(operand.type)) + ", " +
         std::to_string(static_cast<int>(column.type)) + ", " + std::to_string(column.size) + ", " +
         sqlQuote(column.name) + ", " + std::to_string(flags) + ")";
}

std::string Translator::insertColumns(const InsertStatement& statement, std::vector<int>& columns) const {
  const TableDef& table = catalogue_.get(statement.table);
  std::string names;
  const auto add = [&](int at) {
    columns.push_back(at);
    names += (names.empty() ? "" : ", ") + quoteName(table.columns[static_cast<std::size_t>(at)].name);
  };
  for (const std::string& name : statement.columns) {
    const int at = table.find(name);
    if (at < 0) {
      throw ProviderError(provider_number::kSyntaxOrExists,
                          "There is no field '" + name + "' in the table '" + table.name + "'.");
    }
    if (std::find(columns.begin(), columns.end(), at) != columns.end()) failSyntax("'" + name + "' is given twice.");
    add(at);
  }
  for (std::size_t i = 0; statement.columns.empty() && i < table.columns.size(); ++i) add(static_cast<int>(i));
  return names;
}

/// Columns that the statement leaves out take their defaults; a yes/no column
/// of the desktop database starts as no.
std::string Translator::insertRest(const std::vector<int>& columns, std::string& names) {
  std::string values;
  const TableDef& table = *result_.table;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (std::find(columns.begin(), columns.end(), static_cast<int>(i)) != columns.end()) continue;
    const ColumnDef& column = table.columns[i];
    Value value = column.defaultValue;
    if (value.isNull() && column.type == embedded::ColumnType::kBoolean && !isServer()) value = Value(false);
    if (value.isNull() && column.required) failRequired(column);
    if (value.isNull()) continue;
    names += ", " + quoteName(column.name);
    values += ", " + std::visit(Constant{}, value.storage());
  }
  return values;
}

Translation Translator::insert(const InsertStatement& statement) {
  result_.table = &catalogue_.get(statement.table);
  std::vector<int> columns;
  std::string names = insertColumns(statement, columns);
  const std::string into = "INSERT INTO " + quoteName(result_.table->name) + " (";
  const auto columnAt = [this, &columns](std::size_t i) -> const ColumnDef& {
    return result_.table->columns[static_cast<std::size_t>(columns[i])];
  };
  std::string values;
  if (!statement.select) {
    if (statement.values.size() != columns.size()) failSyntax("The number of values and of fields differ.");
    for (std::size_t i = 0; i < columns.size(); ++i) {
      values += (i == 0 ? "" : ", ") + storedSql(columnAt(i), translate(*statement.values[i]));
    }
    values += insertRest(columns, names);
    result_.sql = into + names + ") VALUES (" + values + ")";
    return std::move(result_);
  }
  std::vector<ResultColumn> selected;
  const std::string query = selectSql(*statement.select, nullptr, selected);
  if (selected.size() != columns.size()) failSyntax("The number of values and of fields differ.");
  std::string inner;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    Operand operand;
    operand.sql = "c" + std::to_string(i);
    operand.type = selected[i].type;
    inner += (i == 0 ? "" : ", ") + operand.sql;
    values += (i == 0 ? "" : ", ") + storedSql(columnAt(i), operand);
  }
  values += insertRest(columns, names);
  result_.sql = "WITH picked(" + inner + ") AS (" + query + ") " + into + names + ") SELECT " + values + " FROM picked";
  return std::move(result_);
}

/// The table that the assignments change: the one that they name, else the
/// table behind "update" or, with several there, the one that has the column.
std::size_t Translator::updateTarget(const UpdateStatement& statement, const Scope& scope) const {
  std::string wanted = statement.assignments[0].qualifier;
  if (wanted.empty() && statement.tables.size() == 1) wanted = statement.tables[0].table.alias;
  for (std::size_t i = 0; i < scope.sources.size(); ++i) {
    const ScopeSource& source = scope.sources[i];
    const bool named = equalsNoCase(source.alias, wanted) || equalsNoCase(source.table->name, wanted);
    if (wanted.empty() ? source.table->find(statement.assignments[0].column) >= 0 : named) return i;
  }
  failSyntax("The statement does not say which table it changes.");
}

std::string Translator::assignments(const UpdateStatement& statement, const TableDef& table, std::size_t target) {
  std::string sql;
  bool onlyLiterals = true;
  for (const Assignment& assignment : statement.assignments) {
    const ScopeSource& source = scope_->sources[target];
    const bool other = !assignment.qualifier.empty() && !equalsNoCase(assignment.qualifier, source.alias) &&
                       !equalsNoCase(assignment.qualifier, table.name);
    if (other) failSyntax("One statement changes one table.");
    const int at = table.find(assignment.column);
    Expr name(ExprKind::kColumn);
    name.name = assignment.column;
    if (at < 0) failColumn(name);
    const ColumnDef& column = table.columns[static_cast<std::size_t>(at)];
    const Operand value = translate(*assignment.value);
    onlyLiterals =
        onlyLiterals && value.literal && std::count(result_.assigned.begin(), result_.assigned.end(), at) == 0;
    result_.assigned.push_back(at);
    sql += (sql.empty() ? " SET " : ", ") + quoteName(column.name) + " = " + storedSql(column, value);
  }
  if (!onlyLiterals) result_.assigned.clear();
  return sql;
}

/// The tables beside the changed one. When no condition ties such a table to
/// the changed one, every row meets every row and the last one decides: then
/// only that row is looked at.
std::string Translator::updateFrom(const Scope& scope, std::size_t target, std::vector<const Expr*>& terms) {
  std::string sql;
  for (std::size_t i = 0; i < scope.sources.size(); ++i) {
    if (i == target) continue;
    const std::string alias = quoteName(scope.sources[i].alias);
    const std::string table = quoteName(scope.sources[i].table->name) + " AS " + alias;
    std::vector<const Expr*> own;
    bool tied = scope.sources.size() > 2;
    for (const Expr* term : terms) {
      if (!reads(*term, i)) continue;
      tied = tied || reads(*term, target);
      own.push_back(term);
    }
    sql += sql.empty() ? " FROM " : ", ";
    if (tied) {
      sql += table;
      continue;
    }
    sql.append("(SELECT * FROM ").append(table).append(conjunction(own));
    sql.append(" ORDER BY ").append(kRowKey).append(" DESC LIMIT 1) AS ").append(alias);
    std::erase_if(terms, [&own](const Expr* term) { return std::find(own.begin(), own.end(), term) != own.end(); });
  }
  return sql;
}

Translation Translator::update(const UpdateStatement& statement) {
  Scope scope;
  std::vector<const Expr*> terms;
  const auto addAll = [&](const std::vector<Source>& sources) {
    for (const Source& source : sources) {
      addSource(scope, source.table);
      splitTerms(source.on.get(), terms);
    }
  };
  if (statement.from.empty()) {
    addAll(statement.tables);
  } else {
    addAll(statement.from);
    const std::string& changed = statement.tables[0].table.alias;
    const bool listed = std::any_of(scope.sources.begin(), scope.sources.end(), [&changed](const ScopeSource& source) {
      return equalsNoCase(source.alias, changed) || equalsNoCase(source.table->name, changed);
    });
    if (statement.tables.size() != 1) failSyntax("One statement changes one table.");
    if (!listed) addSource(scope, statement.tables[0].table);
  }
  splitTerms(statement.where.get(), terms);
  scope_ = &scope;
  const std::size_t target = updateTarget(statement, scope);
  result_.table = scope.sources[target].table;
  Facts facts;
  const std::string set = assignments(statement, *result_.table, target);
  const std::string from = updateFrom(scope, target, terms);
  facts_ = scope.sources.size() == 1 ? &facts : nullptr;
  const std::string where = conjunction(terms);
  facts_ = nullptr;
  if (scope.sources.size() == 1 && !facts.equal.empty()) proposeIndex(*result_.table, facts);
  const std::string changed = quoteName(result_.table->name) + " AS " + quoteName(scope.sources[target].alias);
  result_.sql = "UPDATE " + changed + set + from + where;
  result_.tail = " FROM " + changed + where;
  if (scope.sources.size() > 1) result_.assigned.clear();
  scope_ = nullptr;
  return std::move(result_);
}

Translation Translator::deleteRows(const DeleteStatement& statement) {
  Scope scope;
  addSource(scope, {statement.table, statement.table});
  scope_ = &scope;
  result_.table = scope.sources[0].table;
  result_.sql = "DELETE FROM " + quoteName(result_.table->name) + " AS " + quoteName(statement.table);
  std::vector<const Expr*> terms;
  splitTerms(statement.where.get(), terms);
  result_.sql += conjunction(terms);
  scope_ = nullptr;
  return std::move(result_);
}

}  // namespace orva::sql
