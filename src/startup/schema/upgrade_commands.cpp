#include <array>
#include <cctype>
#include <utility>

#include "platform/values/text.h"
#include "startup/schema/upgrade_table.h"

namespace orva {
namespace {

struct TypePair {
  std::string_view access;
  std::string_view server;
};

constexpr TypePair kTypes[] = {{"text", "nvarchar"},      {"memo", "ntext"}, {"currency", "money"}, {"yesno", "bit"},
                               {"date", "smalldatetime"}, {"number", "int"}, {"long", "int"}};
constexpr TypePair kDefaults[] = {{"Yes", "1"}, {"No", "0"}};

bool isWordCharacter(char character) {
  return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

template <std::size_t size>
std::string_view translated(std::string_view word, const TypePair (&pairs)[size]) {
  for (const TypePair& pair : pairs) {
    if (equalsNoCase(word, pair.access)) return pair.server;
  }
  return word;
}

bool isDefinition(std::string_view statement) {
  return statement.starts_with("create table ") || statement.starts_with("alter table ");
}

/// "a text(1), b number" cut at the commas outside parentheses.
std::vector<std::string_view> columnsOf(std::string_view list) {
  std::vector<std::string_view> columns;
  int depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i < list.size(); ++i) {
    depth += list[i] == '(' ? 1 : list[i] == ')' ? -1 : 0;
    if (list[i] != ',' || depth > 0) continue;
    columns.push_back(trim(list.substr(start, i - start)));
    start = i + 1;
  }
  columns.push_back(trim(list.substr(start)));
  return columns;
}

std::vector<std::string> columnByColumn(const std::string& statement) {
  constexpr std::string_view kAdd = " add ";
  const std::size_t add = statement.find(kAdd);
  if (!statement.starts_with("alter table ") || add == std::string::npos) return {statement};
  const std::string head = statement.substr(0, add + kAdd.size());
  std::vector<std::string> commands;
  for (const std::string_view column : columnsOf(std::string_view(statement).substr(head.size()))) {
    commands.push_back(head + std::string(column));
  }
  return commands;
}

std::string serverText(const UpgradeRow& row) {
  if (!row.server.empty()) return std::string(row.server);
  return isDefinition(row.access) ? withServerTypes(row.access) : std::string(row.access);
}

}  // namespace

std::string withServerTypes(std::string_view accessDefinition) {
  std::string text;
  std::string_view previous;
  for (std::size_t i = 0; i < accessDefinition.size();) {
    if (!isWordCharacter(accessDefinition[i])) {
      text += accessDefinition[i++];
      continue;
    }
    const std::size_t start = i;
    while (i < accessDefinition.size() && isWordCharacter(accessDefinition[i])) ++i;
    const std::string_view word = accessDefinition.substr(start, i - start);
    text += previous == "default" ? translated(word, kDefaults) : translated(word, kTypes);
    previous = word;
  }
  return text;
}

std::vector<std::string> upgradeCommands(const UpgradeRow& row, SchemaDialect dialect) {
  const std::string statement = dialect == SchemaDialect::kServer ? serverText(row) : std::string(row.access);
  if (statement.empty()) return {};
  std::vector<std::string> commands = columnByColumn(statement);
  if (dialect == SchemaDialect::kServer && !row.serverVariant.empty()) commands.emplace_back(row.serverVariant);
  return commands;
}

}  // namespace orva
