#include "startup/schema/upgrade.h"

#include <exception>

#include "startup/company_context.h"
#include "startup/schema/upgrade_procedures.h"
#include "startup/schema/upgrade_trap.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

bool isNeeded(Connection& connection, std::string_view query) {
  if (query.empty()) return true;
  bool needed = true;
  passingOverDone([&] { needed = !connection.open(query)->eof(); });
  return needed;
}

}  // namespace

void runUpgrade(Connection& connection, SchemaDialect dialect) {
  UpgradeSite site{connection, dialect};
  for (const UpgradeRow& row : upgradeRows()) {
    passingOverDone([&] { runProcedure(row.procedure, site); });
    if (!isNeeded(connection, row.neededIf) || !isNeeded(connection, row.alsoNeededIf)) continue;
    for (const std::string& command : upgradeCommands(row, dialect)) {
      passingOverDone([&] { connection.execute(command); });
    }
  }
}

void upgradeSchema(CompanyContext& context, Dialogs& dialogs) {
  try {
    runUpgrade(*context.connection, context.isSqlServer ? SchemaDialect::kServer : SchemaDialect::kAccess);
  } catch (const std::exception& error) {
    reportError(dialogs, error);
  }
}

}  // namespace orva
