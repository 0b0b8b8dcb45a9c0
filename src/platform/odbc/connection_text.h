#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace orva::odbc {

/// "Data Source" taken apart: "tcp:" and the like in front dropped, "host\instance", "host,port".
struct ServerName {
  std::string host;
  std::string instance;
  std::string port;
};
ServerName serverNameOf(std::string_view dataSource);

/// The driver for a connection: the clause "Driver", else the environment variable
/// ORVA_ODBC_DRIVER (a name or a path each), else the best of the registered drivers, else a
/// driver library at one of `places`. Throws `ProviderError` when there is none.
std::string driverFor(const ConnectionClauses& clauses, const std::vector<std::string>& registered,
                      std::span<const char* const> places);
/// Where distributions put the driver library, registered or not.
std::span<const char* const> usualDriverPlaces();

/// The connection string of ODBC for the clauses of a provider: catalog, login or the
/// system's own login, and the encryption that the clauses ask for.
std::string connectionText(const ConnectionClauses& clauses, const std::string& driver);

/// How long the server may take, in seconds; 0 is without an end.
struct TimeLimits {
  unsigned login = 15;
  unsigned statement = 300;
};
/// The limits of the clauses "Connect Timeout" and "General Timeout", where they stand. Without
/// one a statement that another user blocks would hold the screen for ever.
TimeLimits timeLimits(const ConnectionClauses& clauses);

}  // namespace orva::odbc
