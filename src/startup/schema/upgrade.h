#pragma once

#include "platform/database.h"
#include "platform/dialogs.h"
#include "startup/schema/upgrade_table.h"

namespace orva {

struct CompanyContext;

/// Runs every step on the connection. Failures that mean "done already" are passed over; any
/// other `ProviderError` ends the run and is thrown, with the statements before it done.
void runUpgrade(Connection& connection, SchemaDialect dialect);

/// The same at every opening of a company: what ends the run is shown, and the company is
/// used as it is.
void upgradeSchema(CompanyContext& context, Dialogs& dialogs);

}  // namespace orva
