#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fakes/query_rows.h"
#include "fakes/temporary_folder.h"
#include "platform/odbc/server/tds_server.h"
#include "startup/company_context.h"

namespace orva {

/// Where the tests of the server run: against the test server, and against the one that the
/// environment variable ORVA_TEST_SQLSERVER names by an ODBC connection string
/// ("SERVER=host;PORT=1433;UID=user;PWD=secret"; its login may make databases).
enum class Where { kTestServer, kRealServer };

/// A server with catalogs of its own, which are gone when the home is.
class ServerHome {
 public:
  /// With the catalogs of another test server that was stopped, or with none.
  explicit ServerHome(Where where, const ServerHome* base = nullptr);
  ~ServerHome();
  ServerHome(const ServerHome&) = delete;
  ServerHome& operator=(const ServerHome&) = delete;

  void stop() { server_.reset(); }
  static bool isThere(Where where);
  void makeCatalog(const std::string& catalog);
  std::unique_ptr<Connection> connect(const std::string& catalog, const std::string& password = {});
  /// What start-up leaves for this server.
  const CompanyContext& context() const { return context_; }
  void fill(CompanyContext& context) const;
  DatabaseRegistry& databases() { return databases_; }
  /// Only of the test server.
  tds::ServerPlan& plan() { return server_->plan(); }
  const TemporaryFolder& folder() const { return folder_; }

 private:
  bool isTest_;
  TemporaryFolder folder_;
  std::unique_ptr<tds::Server> server_;
  CompanyContext context_;
  DatabaseRegistry databases_;
  std::vector<std::string> made_;
};

}  // namespace orva
