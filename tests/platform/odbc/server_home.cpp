#include "platform/odbc/server_home.h"

#include <cstdlib>

#include "platform/embedded/embedded_adapter.h"
#include "platform/odbc/odbc_adapter.h"

namespace orva {
namespace {

const char* realServer() { return std::getenv("ORVA_TEST_SQLSERVER"); }

}  // namespace

bool ServerHome::isThere(Where where) { return where == Where::kTestServer || (realServer() && *realServer()); }

ServerHome::ServerHome(Where where, const ServerHome* base) : isTest_(where == Where::kTestServer) {
  addServerProviders(databases_);
  context_.isSqlServer = true;
  context_.authenticationKind = "SQL";
  context_.providerClause = "Provider=SQLOLEDB.1;Persist Security Info=False;Connect Timeout=20;General Timeout=60;";
  if (!isTest_) {
    const ConnectionClauses clauses(realServer());
    const std::string port = clauses.get("PORT");
    context_.server = clauses.get("SERVER") + (port.empty() ? "" : "," + port);
    context_.userId = clauses.get("UID");
    context_.password = clauses.get("PWD");
    return;
  }
  context_.userId = "sa";
  context_.password = "p}w&d{ '=x";
  server_ = std::make_unique<tds::Server>(folder_.text(), context_.userId, context_.password);
  context_.server = "tcp:127.0.0.1," + std::to_string(server_->port());
  if (base) {
    std::filesystem::copy(base->folder_.path(), folder_.path());
    return;
  }
  makeCatalog("master");
  const auto master = connect("master");
  master->execute("create table sysdatabases (name nvarchar(128), filename nvarchar(260))");
  master->execute("insert into sysdatabases (name, filename) values ('ORVA', 'D:\\Data\\Orva.mdf')");
}

ServerHome::~ServerHome() {
  if (isTest_) return;
  for (const std::string& catalog : made_) connect("master")->execute("drop database [" + catalog + "]");
}

void ServerHome::makeCatalog(const std::string& catalog) {
  made_.push_back(catalog);
  if (!isTest_) {
    connect("master")->execute("create database [" + catalog + "]");
    return;
  }
  EmbeddedAdapter(SqlDialect::kSqlServer, folder_.text()).create(ConnectionClauses("Initial Catalog=" + catalog));
  if (catalog == "master") return;
  connect("master")->execute("insert into sysdatabases (name, filename) values ('" + catalog + "', 'D:\\Data\\" +
                             catalog + ".mdf')");
}

void ServerHome::fill(CompanyContext& context) const {
  context.isSqlServer = true;
  context.authenticationKind = context_.authenticationKind;
  context.providerClause = context_.providerClause;
  context.server = context_.server;
  context.userId = context_.userId;
  context.password = context_.password;
}

std::unique_ptr<Connection> ServerHome::connect(const std::string& catalog, const std::string& password) {
  CompanyContext context;
  fill(context);
  if (!password.empty()) context.password = password;
  return databases_.connect(serverConnectionString(context, catalog));
}

}  // namespace orva
