#pragma once

#include <string>

#include "platform/database.h"
#include "platform/embedded/sql/dialect.h"

namespace orva {

/// What a new company database of the embedded engine is kept in. A file that
/// exists is opened by its content, whichever it is.
enum class CompanyFileKind { kAccess, kSqlite };

/// The embedded engine behind a provider clause. In the Access dialect "Data
/// Source" is the path of the database file and "Jet OLEDB:Database Password" its
/// password. In the SQL Server dialect "Initial Catalog" names the file
/// CATALOG.mdb in the catalog folder, and there is no password.
class EmbeddedAdapter : public DatabaseAdapter {
 public:
  /// Databases of the SQL Server dialect are always SQLite files.
  explicit EmbeddedAdapter(SqlDialect dialect, std::string catalogFolder = {},
                           CompanyFileKind newFiles = CompanyFileKind::kAccess);

  std::unique_ptr<Connection> connect(const ConnectionClauses& clauses, CursorLocation location) override;
  void create(const ConnectionClauses& clauses) override;
  std::vector<std::string> companionFiles(const std::string& databaseFile) const override;

 private:
  std::string fileOf(const ConnectionClauses& clauses) const;
  std::string passwordOf(const ConnectionClauses& clauses) const;

  SqlDialect dialect_;
  std::string catalogFolder_;
  CompanyFileKind newFiles_;
};

}  // namespace orva
