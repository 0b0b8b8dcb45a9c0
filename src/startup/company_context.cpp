#include "startup/company_context.h"

namespace orva {

void openCompanyConnection(CompanyContext& context, const Services& services) {
  context.connection.reset();
  context.connection = services.databases.connect(companyConnectionString(context), CursorLocation::kClient);
}

void reconnect(CompanyContext& context, const Services& services) {
  openCompanyConnection(context, services);
  readParameterFlags(context, FlagReading::kAtReconnect);
}

}  // namespace orva
