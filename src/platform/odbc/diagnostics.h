#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/odbc/driver_manager.h"

namespace orva::odbc {

/// One record that a failed call left behind.
struct DiagnosticRecord {
  std::string state;  ///< five characters
  std::int32_t native = 0;
  std::string text;
};

std::vector<DiagnosticRecord> readDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle);

/// The failure that the records describe: the number is found by the server's own number,
/// then by the state, never by the text, which changes with the server's language. The
/// description is the server's text without the driver's names in front.
ProviderError providerError(std::span<const DiagnosticRecord> records);

/// True when the records say that the connection is gone.
bool tellsLostConnection(std::span<const DiagnosticRecord> records);

}  // namespace orva::odbc
