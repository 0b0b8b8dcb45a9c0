#include "startup/company_context.h"

namespace orva {

void openCompanyConnection(CompanyContext& context, const Services& services) {
  context.connection.reset();
  context.connection = services.databases.connect(companyConnectionString(context), CursorLocation::kClient);
}

void reconnect(CompanyContext& context, const Services& services) {
  // A company file that stays open all the while is not locked anew and keeps what it has read; a server is asked for
  // one connection at a time.
  const auto before = context.isSqlServer ? nullptr : std::move(context.connection);
  openCompanyConnection(context, services);
  readParameterFlags(context, FlagReading::kAtReconnect);
}

}  // namespace orva
