#pragma once

#include <string>
#include <vector>

#include "platform/odbc/handles.h"

namespace orva::odbc {

/// The connection to the server. A lost one answers every later call with the same failure.
class Link {
 public:
  /// Connects. Throws `ProviderError`.
  explicit Link(const std::string& connectionText);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  SQLHDBC handle() const { return connection_.get(); }
  /// Throws when the connection was lost before.
  void checkAlive() const;
  /// Throws what the records of a handle tell.
  [[noreturn]] void fail(SQLSMALLINT handleType, SQLHANDLE handle);

 private:
  EnvironmentHandle environment_;
  ConnectionHandle connection_;
  bool connected_ = false;
  bool lost_ = false;
};

/// Names of the drivers that are registered on this machine.
std::vector<std::string> registeredDrivers();

}  // namespace orva::odbc
