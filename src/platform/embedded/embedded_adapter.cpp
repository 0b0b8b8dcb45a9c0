#include "platform/embedded/embedded_adapter.h"

#include <array>
#include <fstream>

#include "platform/access/access_database.h"
#include "platform/embedded/access_store.h"
#include "platform/embedded/session.h"
#include "platform/embedded/sqlite_store.h"
#include "platform/local/path_lookup.h"

namespace orva {
namespace {

bool isAccessFile(const std::string& file) {
  std::array<char, access::kPageSize> head{};
  std::ifstream in(findPath(file), std::ios::binary);
  in.read(head.data(), head.size());
  const access::Bytes bytes(head.begin(), head.begin() + in.gcount());
  return access::looksLikeAccessFile(bytes);
}

}  // namespace

EmbeddedAdapter::EmbeddedAdapter(SqlDialect dialect, std::string catalogFolder, CompanyFileKind newFiles)
    : dialect_(dialect),
      catalogFolder_(std::move(catalogFolder)),
      newFiles_(dialect == SqlDialect::kAccess ? newFiles : CompanyFileKind::kSqlite) {}

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
  std::unique_ptr<embedded::Store> store;
  if (isAccessFile(fileOf(clauses))) {
    store = std::make_unique<embedded::AccessStore>(fileOf(clauses), passwordOf(clauses));
  } else {
    store = std::make_unique<embedded::SqliteStore>(fileOf(clauses), passwordOf(clauses));
  }
  return std::make_unique<embedded::Session>(std::move(store), dialect_);
}

void EmbeddedAdapter::create(const ConnectionClauses& clauses) {
  if (newFiles_ == CompanyFileKind::kAccess) {
    embedded::AccessStore::create(fileOf(clauses), passwordOf(clauses));
  } else {
    embedded::SqliteStore::create(fileOf(clauses), passwordOf(clauses), dialect_);
  }
}

std::vector<std::string> EmbeddedAdapter::companionFiles(const std::string& databaseFile) const {
  std::vector<std::string> files = {databaseFile + "-wal", databaseFile + "-shm", databaseFile + "-journal"};
  for (std::string& file : access::AccessDatabase::companionFiles(databaseFile)) files.push_back(std::move(file));
  return files;
}

}  // namespace orva
