#include "platform/embedded/embedded_adapter.h"

#include "platform/embedded/session.h"
#include "platform/embedded/sqlite_store.h"

namespace orva {

EmbeddedAdapter::EmbeddedAdapter(SqlDialect dialect, std::string catalogFolder)
    : dialect_(dialect), catalogFolder_(std::move(catalogFolder)) {}

std::string EmbeddedAdapter::fileOf(const ConnectionClauses& clauses) const {
  if (dialect_ == SqlDialect::kAccess) return clauses.get("Data Source");
  const std::string catalog = clauses.get("Initial Catalog");
  if (catalog.empty()) throw ProviderError(provider_number::kUnspecified, "The connection names no catalog.");
  return catalogFolder_ + "\\" + catalog + ".mdb";
}

std::string EmbeddedAdapter::passwordOf(const ConnectionClauses& clauses) const {
  return dialect_ == SqlDialect::kAccess ? clauses.get("Jet OLEDB:Database Password") : std::string();
}

std::unique_ptr<Connection> EmbeddedAdapter::connect(const ConnectionClauses& clauses, CursorLocation) {
  auto store = std::make_unique<embedded::SqliteStore>(fileOf(clauses), passwordOf(clauses));
  return std::make_unique<embedded::Session>(std::move(store), dialect_);
}

void EmbeddedAdapter::create(const ConnectionClauses& clauses) {
  embedded::SqliteStore::create(fileOf(clauses), passwordOf(clauses), dialect_);
}

std::vector<std::string> EmbeddedAdapter::companionFiles(const std::string& databaseFile) const {
  return {databaseFile + "-wal", databaseFile + "-shm", databaseFile + "-journal"};
}

}  // namespace orva
