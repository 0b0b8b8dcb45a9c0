#pragma once

#include <string>
#include <vector>

#include "platform/odbc/connection_text.h"
#include "platform/odbc/handles.h"

namespace orva::odbc {

/// The connection to the server. The call that loses it fails with the general number, every
/// later one as on a closed connection: an upgrade, which passes over general failures, ends
/// there instead of failing in silence to its end.
class Link {
 public:
  /// Connects. Throws `ProviderError`.
  Link(const std::string& connectionText, const TimeLimits& limits);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  SQLHDBC handle() const { return connection_.get(); }
  unsigned statementSeconds() const { return limits_.statement; }
  /// Throws when the connection was lost before.
  void checkAlive() const;
  /// Throws what the records of a handle tell.
  [[noreturn]] void fail(SQLSMALLINT handleType, SQLHANDLE handle);

 private:
  EnvironmentHandle environment_;
  ConnectionHandle connection_;
  TimeLimits limits_;
  bool connected_ = false;
  bool lost_ = false;
};

/// Names of the drivers that are registered on this machine.
std::vector<std::string> registeredDrivers();

}  // namespace orva::odbc
