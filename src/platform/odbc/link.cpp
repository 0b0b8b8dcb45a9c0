#include "platform/odbc/link.h"

#include <array>
#include <string_view>

#include "platform/odbc/diagnostics.h"
#include "platform/odbc/utf16.h"

namespace orva::odbc {
namespace {

constexpr std::string_view kLost = "The connection to the server was lost.";

EnvironmentHandle openEnvironment() {
  EnvironmentHandle environment;
  if (!environment.allocate(nullptr) ||
      !SQL_SUCCEEDED(SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, attributeValue(SQL_OV_ODBC3), 0))) {
    throw ProviderError(provider_number::kUnspecified, "The ODBC driver manager cannot be started.");
  }
  return environment;
}

}  // namespace

Link::Link(const std::string& connectionText, const TimeLimits& limits)
    : environment_(openEnvironment()), limits_(limits) {
  if (!connection_.allocate(environment_.get())) fail(SQL_HANDLE_ENV, environment_.get());
  SQLSetConnectAttrW(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT, attributeValue(limits.login), 0);
  const std::u16string text = toUtf16(connectionText);
  const SQLRETURN done =
      SQLDriverConnectW(connection_.get(), nullptr, wide(text), static_cast<SQLSMALLINT>(text.size()), nullptr, 0,
                        nullptr, SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(done)) throw providerError(readDiagnostics(SQL_HANDLE_DBC, connection_.get()));
  connected_ = true;
}

Link::~Link() {
  if (connected_) SQLDisconnect(connection_.get());
}

void Link::checkAlive() const {
  if (lost_) throw ProviderError(provider_number::kObjectClosed, std::string(kLost));
}

void Link::fail(SQLSMALLINT handleType, SQLHANDLE handle) {
  const auto records = readDiagnostics(handleType, handle);
  SQLUINTEGER dead = SQL_CD_FALSE;
  SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
  lost_ = lost_ || dead == SQL_CD_TRUE || tellsLostConnection(records);
  const ProviderError error = providerError(records);
  if (lost_) throw ProviderError(provider_number::kUnspecified, std::string(kLost) + " " + error.description());
  throw error;
}

std::vector<std::string> registeredDrivers() {
  const EnvironmentHandle environment = openEnvironment();
  std::vector<std::string> names;
  std::array<char16_t, 256> name{};
  SQLSMALLINT length = 0;
  SQLUSMALLINT direction = SQL_FETCH_FIRST;
  while (SQL_SUCCEEDED(SQLDriversW(environment.get(), direction, reinterpret_cast<SQLWCHAR*>(name.data()),
                                   static_cast<SQLSMALLINT>(name.size()), &length, nullptr, 0, nullptr))) {
    names.push_back(toUtf8(name.data()));
    direction = SQL_FETCH_NEXT;
  }
  return names;
}

}  // namespace orva::odbc
