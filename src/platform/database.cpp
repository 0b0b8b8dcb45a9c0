#include "platform/database.h"

#include "platform/values/text.h"

namespace orva {
namespace {

/// Takes the next clause value off the front of `rest`, up to the next ";"
/// outside quotes, and drops quotes around it.
std::string takeValue(std::string_view& rest) {
  rest = rest.substr(std::min(rest.find_first_not_of(' '), rest.size()));
  std::string value;
  if (!rest.empty() && (rest[0] == '\'' || rest[0] == '"')) {
    const std::size_t end = rest.find(rest[0], 1);
    value = std::string(rest.substr(1, end == std::string_view::npos ? end : end - 1));
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    rest = rest.substr(std::min(rest.find(';'), rest.size()));
  } else {
    const std::size_t end = std::min(rest.find(';'), rest.size());
    value = std::string(trim(rest.substr(0, end)));
    rest = rest.substr(end);
  }
  if (!rest.empty()) rest.remove_prefix(1);
  return value;
}

}  // namespace

void Connection::walkTexts(std::string_view table, std::span<const std::string_view> columns,
                           const TextVisitor& visit) {
  std::string sql;
  for (const std::string_view column : columns) sql.append(sql.empty() ? "Select " : ", ").append(column);
  const auto rows = open(sql.append(" from ").append(table), CursorKind::kForwardOnly, LockKind::kReadOnly);
  std::vector<std::string> texts(columns.size());
  std::vector<std::optional<std::string_view>> cells(columns.size());
  for (; !rows->eof(); rows->moveNext()) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const Value value = rows->get(columns[i]);
      texts[i] = value.toText();
      cells[i] = value.isNull() ? std::nullopt : std::optional<std::string_view>(texts[i]);
    }
    visit(cells);
  }
}

ConnectionClauses::ConnectionClauses(std::string_view connectionString) {
  std::string_view rest = connectionString;
  while (!rest.empty()) {
    const std::size_t equals = rest.find('=');
    if (equals == std::string_view::npos) return;
    std::string name(trim(rest.substr(0, equals)));
    rest.remove_prefix(equals + 1);
    clauses_.emplace_back(std::move(name), takeValue(rest));
  }
}

std::optional<std::string> ConnectionClauses::find(std::string_view name) const {
  for (const auto& [key, value] : clauses_) {
    if (equalsNoCase(key, name)) return value;
  }
  return std::nullopt;
}

void DatabaseRegistry::add(std::string_view provider, std::shared_ptr<DatabaseAdapter> adapter) {
  adapters_[toUpper(provider)] = std::move(adapter);
}

std::unique_ptr<Connection> DatabaseRegistry::connect(std::string_view connectionString,
                                                      CursorLocation location) const {
  const ConnectionClauses clauses(connectionString);
  return adapterFor(clauses.get("Provider")).connect(clauses, location);
}

void DatabaseRegistry::create(std::string_view connectionString) const {
  const ConnectionClauses clauses(connectionString);
  adapterFor(clauses.get("Provider")).create(clauses);
}

std::vector<std::string> DatabaseRegistry::companionFiles(std::string_view provider,
                                                          const std::string& databaseFile) const {
  return adapterFor(provider).companionFiles(databaseFile);
}

DatabaseAdapter& DatabaseRegistry::adapterFor(std::string_view provider) const {
  const auto found = adapters_.find(toUpper(provider));
  if (found == adapters_.end()) {
    throw ProviderError(provider_number::kUnspecified,
                        "Provider cannot be found. It may not be properly installed: '" + std::string(provider) + "'.");
  }
  return *found->second;
}

}  // namespace orva
