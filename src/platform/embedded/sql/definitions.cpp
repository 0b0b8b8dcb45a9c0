#include "platform/embedded/sql/definitions.h"

#include "platform/embedded/conversion.h"
#include "platform/embedded/sql/translator.h"
#include "platform/values/text.h"

namespace orva::sql {
namespace {

using embedded::ColumnDef;
using embedded::ColumnType;

struct TypeName {
  std::string_view name;
  ColumnType type;
  int size = 0;
};

/// A number without a further word is a floating one there, as the desktop
/// database understands it.
constexpr TypeName kAccessTypes[] = {
    {"text", ColumnType::kText, 255},    {"char", ColumnType::kText, 255},   {"varchar", ColumnType::kText, 255},
    {"string", ColumnType::kText, 255},  {"memo", ColumnType::kMemo},        {"longtext", ColumnType::kMemo},
    {"currency", ColumnType::kCurrency}, {"money", ColumnType::kCurrency},   {"yesno", ColumnType::kBoolean},
    {"bit", ColumnType::kBoolean},       {"logical", ColumnType::kBoolean},  {"date", ColumnType::kDate},
    {"datetime", ColumnType::kDate},     {"number", ColumnType::kDouble},    {"double", ColumnType::kDouble},
    {"float", ColumnType::kDouble},      {"single", ColumnType::kDouble},    {"long", ColumnType::kInteger},
    {"integer", ColumnType::kInteger},   {"int", ColumnType::kInteger},      {"short", ColumnType::kInteger},
    {"byte", ColumnType::kInteger},      {"smallint", ColumnType::kInteger},
};

constexpr TypeName kServerTypes[] = {
    {"nvarchar", ColumnType::kText, 1},   {"varchar", ColumnType::kText, 1},     {"nchar", ColumnType::kText, 1},
    {"char", ColumnType::kText, 1},       {"ntext", ColumnType::kMemo},          {"text", ColumnType::kMemo},
    {"money", ColumnType::kCurrency},     {"smallmoney", ColumnType::kCurrency}, {"bit", ColumnType::kBoolean},
    {"smalldatetime", ColumnType::kDate}, {"datetime", ColumnType::kDate},       {"int", ColumnType::kInteger},
    {"integer", ColumnType::kInteger},    {"smallint", ColumnType::kInteger},    {"tinyint", ColumnType::kInteger},
    {"float", ColumnType::kDouble},       {"real", ColumnType::kDouble},
};

template <std::size_t N>
std::optional<NamedType> typeIn(const TypeName (&names)[N], std::string_view name) {
  for (const TypeName& entry : names) {
    if (equalsNoCase(entry.name, name)) return NamedType{entry.type, entry.size};
  }
  return std::nullopt;
}

Value defaultOf(const ColumnSpec& spec, const ColumnDef& column) {
  if (!spec.defaultToken) return {};
  const Token& token = *spec.defaultToken;
  bool flag = false;
  if (token.kind == TokenKind::kWord && equalsNoCase(token.text, "null")) return {};
  if (token.kind == TokenKind::kWord && !booleanConstant(token.text, flag)) {
    throw ProviderError(provider_number::kSyntaxOrExists, "'" + std::string(token.text) + "' is no default value.");
  }
  Value value = token.kind == TokenKind::kWord ? Value(flag) : Value(unquoted(token.text, token.quote));
  if (spec.defaultNegative) value = Value("-" + value.toText());
  return embedded::convertForColumn(column, value, embedded::DateOrder::kMonthDayYear);
}

}  // namespace

std::optional<NamedType> columnTypeOf(std::string_view name, SqlDialect dialect) {
  return dialect == SqlDialect::kAccess ? typeIn(kAccessTypes, name) : typeIn(kServerTypes, name);
}

ColumnDef columnOf(const ColumnSpec& spec, SqlDialect dialect) {
  const auto type = columnTypeOf(spec.typeName, dialect);
  if (!type) {
    throw ProviderError(provider_number::kSyntaxOrExists, "There is no column type '" + spec.typeName + "'.");
  }
  if (spec.name.find(':') != std::string::npos) {
    throw ProviderError(provider_number::kSyntaxOrExists, "'" + spec.name + "' is no name for a column.");
  }
  constexpr int kLongestText = 255;
  ColumnDef column;
  column.name = spec.name;
  column.type = type->type;
  column.size = type->type == ColumnType::kText ? spec.size.value_or(type->size) : 0;
  if (dialect == SqlDialect::kAccess && column.size > kLongestText) {
    throw ProviderError(provider_number::kSyntaxOrExists, "A text column holds at most 255 characters.");
  }
  column.required = spec.required.value_or(false) || spec.primary;
  const Value value = defaultOf(spec, column);
  column.defaultValue = value;
  return column;
}

embedded::IndexDef indexOf(const KeySpec& key, bool unique) {
  embedded::IndexDef index;
  index.name = key.name;
  index.columns = key.columns;
  index.primary = key.primary;
  index.unique = unique || key.primary;
  if (index.name.empty()) {
    index.name = key.primary ? "PrimaryKey" : "Key";
    if (!key.primary) {
      for (const std::string& column : key.columns) index.name += "_" + column;
    }
  }
  return index;
}

embedded::TableDef tableOf(const CreateTable& statement, SqlDialect dialect) {
  embedded::TableDef table;
  table.name = statement.table;
  for (const ColumnSpec& spec : statement.columns) {
    if (table.find(spec.name) >= 0) {
      throw ProviderError(provider_number::kErrorsOccurred, "The field '" + spec.name + "' is defined twice.");
    }
    table.columns.push_back(columnOf(spec, dialect));
    if (!spec.primary && !spec.unique) continue;
    KeySpec key{spec.constraintName, {spec.name}, spec.primary};
    table.indexes.push_back(indexOf(key, true));
  }
  for (const KeySpec& key : statement.keys) table.indexes.push_back(indexOf(key, true));
  return table;
}

}  // namespace orva::sql
