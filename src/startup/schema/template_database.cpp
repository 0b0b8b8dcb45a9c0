#include "startup/schema/template_database.h"

#include "startup/connection_strings.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/upgrade.h"

namespace orva {
namespace {

/// What a new company starts with beyond the defaults that the upgrade gives every company:
/// four digits in identifiers, and every optional feature off until the main system's
/// parameters switch it on.
constexpr std::string_view kNewCompanyParameters =
    "update parameter set digits=4, centre=false, users=false, validation=false, farate1=false, farate2=false, "
    "asperrbi=false, depchildcaln=false, multientry=false, usedefault=true";

void executeAll(Connection& connection, const std::vector<std::string>& statements) {
  for (const std::string& statement : statements) connection.execute(statement);
}

}  // namespace

void createTemplate(const DatabaseRegistry& databases, const std::string& path) {
  databases.create(accessConnectionString(path));
  const auto connection = databases.connect(accessConnectionString(path), CursorLocation::kClient);
  executeAll(*connection, baseTableStatements());
  runUpgrade(*connection, SchemaDialect::kAccess);
  executeAll(*connection, afterUpgradeStatements());
  connection->execute(kNewCompanyParameters);
}

}  // namespace orva
