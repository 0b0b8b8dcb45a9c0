#include "startup/company_context.h"

namespace orva {

void openCompanyConnection(CompanyContext& context, const Services& services) {
  context.connection.reset();
  context.connection = services.databases.connect(companyConnectionString(context), CursorLocation::kClient);
}

void reconnect(CompanyContext& context, const Services& services) {
  const bool isFile = !context.isSqlServer;
  if (isFile) {
    // A company file that stays open all the while is not locked anew and keeps what it has read.
    const auto before = std::move(context.connection);
    try {
      context.connection = services.databases.connect(companyConnectionString(context), CursorLocation::kClient);
    } catch (const ProviderError&) {
      // The file may be one that has to be closed first.
    }
  }
  if (!isFile || !context.connection) openCompanyConnection(context, services);
  readParameterFlags(context, FlagReading::kAtReconnect);
}

}  // namespace orva
