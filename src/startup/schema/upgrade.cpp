#include "startup/schema/upgrade.h"

#include <exception>

#include "startup/company_context.h"
#include "startup/schema/upgrade_procedures.h"
#include "startup/schema/upgrade_trap.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

bool isNeeded(Connection& connection, const UpgradeRow& row) {
  if (row.neededIf.empty()) return true;
  bool needed = true;
  passingOverDone([&] { needed = !connection.open(row.neededIf)->eof(); });
  return needed;
}

}  // namespace

void runUpgrade(Connection& connection, SchemaDialect dialect) {
  UpgradeSite site{connection, dialect};
  for (const UpgradeRow& row : upgradeRows()) {
    passingOverDone([&] { runProcedure(row.procedure, site); });
    if (!isNeeded(connection, row)) continue;
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
