#include "wizard/query.h"

#include "platform/values/text.h"

namespace orva {
namespace {

void appendPlaceholder(std::string& sql, std::string_view name, const DialectTokens& dialect,
                       const QueryArguments& arguments) {
  if (name == "upper") {
    sql += dialect.upperCase;
  } else if (name == "substring") {
    sql += dialect.substring;
  } else if (name == "true") {
    sql += dialect.trueText;
  } else if (name == "false") {
    sql += dialect.falseText;
  } else if (name == "integer") {
    sql += dialect.integerConversion;
  } else if (name.starts_with('#')) {
    sql += dialect.date(arguments.dateArgument(name.substr(1)).value_or(Date()));
  } else {
    sql += sqlEscape(arguments.textArgument(name));
  }
}

}  // namespace

std::string_view Query::text(const DialectTokens& dialect) const {
  const bool isServer = &dialect == &sqlServerTokens();
  return isServer && !sqlServer.empty() ? sqlServer : access;
}

std::string composeQuery(const Query& query, const DialectTokens& dialect, const QueryArguments& arguments) {
  std::string sql;
  std::string_view rest = query.text(dialect);
  sql.reserve(rest.size() + 64);
  for (std::size_t open = rest.find('{'); open != std::string_view::npos; open = rest.find('{')) {
    const std::size_t close = rest.find('}', open);
    if (close == std::string_view::npos) break;
    sql += rest.substr(0, open);
    appendPlaceholder(sql, rest.substr(open + 1, close - open - 1), dialect, arguments);
    rest.remove_prefix(close + 1);
  }
  sql += rest;
  return sql;
}

}  // namespace orva
