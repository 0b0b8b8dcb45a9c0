#include "startup/schema/old_company.h"

#include "platform/embedded/embedded_adapter.h"
#include "startup/contexts.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/upgrade.h"

namespace orva {

OldCompany::OldCompany(SchemaDialect dialect) {
  const bool isServer = dialect == SchemaDialect::kServer;
  if (isServer) context = serverContext("WINNT");
  context.databaseReference = isServer ? "ABORVA" : folder_.file("ABOrva.mdb");
  adapter_ = std::make_shared<FaultyAdapter>(
      std::make_shared<EmbeddedAdapter>(isServer ? SqlDialect::kSqlServer : SqlDialect::kAccess, folder_.text()));
  all.databases.add(isServer ? "SQLOLEDB.1" : kAccessProvider, adapter_);
  all.databases.create(companyConnectionString(context));
  openCompanyConnection(context, all.services);
  std::vector<std::string> statements = baseTableStatements();
  statements.emplace_back("alter table Asset add DateSold date");
  statements.emplace_back("alter table Asset add Opening text(10)");
  statements.emplace_back("alter table Shift add srno text(10)");
  statements.emplace_back("create table AddntoAsset (x text(1))");
  for (const std::string& statement : statements) run(isServer ? withServerTypes(statement) : statement);
}

std::vector<std::string> OldCompany::upgrade() {
  all.dialogs.messages.clear();
  openCompanyConnection(context, all.services);
  upgradeSchema(context, all.dialogs);
  return all.dialogs.texts();
}

}  // namespace orva
