#include "platform/odbc/odbc_adapter.h"

#include "platform/odbc/connection_text.h"
#include "platform/odbc/odbc_session.h"

namespace orva {
namespace {

/// Providers of the server, with and without the number of a version.
constexpr std::string_view kProviders[] = {
    "SQLOLEDB",    "SQLOLEDB.1", "SQLNCLI",      "SQLNCLI.1",    "SQLNCLI10",      "SQLNCLI10.1", "SQLNCLI11",
    "SQLNCLI11.1", "MSOLEDBSQL", "MSOLEDBSQL.1", "MSOLEDBSQL19", "MSOLEDBSQL19.1", "MSDASQL",     "MSDASQL.1",
};

}  // namespace

std::unique_ptr<Connection> OdbcAdapter::connect(const ConnectionClauses& clauses, CursorLocation) {
  const std::string driver = odbc::driverFor(clauses, odbc::registeredDrivers(), odbc::usualDriverPlaces());
  return std::make_unique<odbc::OdbcSession>(odbc::connectionText(clauses, driver), odbc::timeLimits(clauses));
}

void OdbcAdapter::create(const ConnectionClauses&) {
  throw ProviderError(provider_number::kUnspecified, "A database on a server is made by its administrator.");
}

std::vector<std::string> OdbcAdapter::companionFiles(const std::string&) const { return {}; }

void addServerProviders(DatabaseRegistry& databases) {
  const auto adapter = std::make_shared<OdbcAdapter>();
  for (const std::string_view provider : kProviders) databases.add(provider, adapter);
}

}  // namespace orva
