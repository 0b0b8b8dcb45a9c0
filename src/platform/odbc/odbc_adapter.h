#pragma once

#include <string>
#include <string_view>

#include "platform/database.h"

namespace orva {

/// Companies on SQL Server, over the driver manager of the system. It serves every provider
/// clause of that server: "Data Source" is the server, "Initial Catalog" the database.
class OdbcAdapter : public DatabaseAdapter {
 public:
  std::unique_ptr<Connection> connect(const ConnectionClauses& clauses, CursorLocation location) override;
  /// Catalogs are made on the server: always throws.
  void create(const ConnectionClauses& clauses) override;
  std::vector<std::string> companionFiles(const std::string& databaseFile) const override;
};

/// Registers the adapter under every provider name of SQL Server.
void addServerProviders(DatabaseRegistry& databases);

}  // namespace orva
