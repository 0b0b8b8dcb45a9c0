#include "masters/real_company.h"

#include <filesystem>

#include "startup/connection_strings.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/upgrade.h"

namespace orva {
namespace {

/// Made once a program for each dialect, copied for every test.
std::string emptyCompany(SqlDialect dialect) {
  static TemporaryFolder folder;
  const std::string path = folder.file(dialect == SqlDialect::kAccess ? "access.mdb" : "server.mdb");
  if (std::filesystem::exists(path)) return path;
  DatabaseRegistry databases;
  databases.add("Access", std::make_shared<EmbeddedAdapter>(SqlDialect::kAccess));
  std::string clauses = "Provider=Access;Data Source=" + path;
  if (dialect == SqlDialect::kAccess) clauses += ";Jet OLEDB:Database Password=" + std::string(kDatabasePassword);
  databases.create(clauses);
  const auto connection = databases.connect(clauses);
  for (const std::string& statement : baseTableStatements()) connection->execute(statement);
  runUpgrade(*connection, SchemaDialect::kAccess);
  for (const std::string& statement : afterUpgradeStatements()) connection->execute(statement);
  return path;
}

}  // namespace

RealCompany::RealCompany(SqlDialect dialect) {
  std::filesystem::copy_file(emptyCompany(dialect), folder.path() / "K1Orva.mdb");
  adapter = std::make_shared<FaultyAdapter>(std::make_shared<EmbeddedAdapter>(dialect, folder.text()));
  company.isSqlServer = dialect == SqlDialect::kSqlServer;
  fakes.databases.add(company.isSqlServer ? "SQLOLEDB.1" : "Microsoft.Jet.OLEDB.4.0", adapter);
  company.authenticationKind = "WINNT";
  company.databaseReference = company.isSqlServer ? "K1Orva" : folder.file("K1Orva.mdb");
  company.companyCode = "K1";
  company.programFolder = "c:\\orva";
  fakes.files.addFolder("c:\\orva");
  reconnect(company, fakes.services);
}

void RealCompany::prepare(const std::vector<std::string>& statements) const {
  for (const std::string& statement : statements) company.connection->execute(statement);
}

std::vector<std::string> RealCompany::rows(const std::string& query) const {
  std::vector<std::string> lines;
  const auto set = company.connection->open(query);
  for (; !set->eof(); set->moveNext()) {
    std::string& line = lines.emplace_back();
    for (const FieldInfo& field : set->fields()) line += nullToText(set->get(field.name)) + "|";
    line.pop_back();
  }
  return lines;
}

std::vector<std::string> RealCompany::errorFile() const {
  const std::string path = "c:\\orva\\ExportOrva.xls";
  return fakes.files.exists(path) ? fakes.files.readLines(path) : std::vector<std::string>();
}

}  // namespace orva
