#include "platform/embedded/sqlite_open.h"

#include <mutex>

#include "platform/embedded/sqlite_functions.h"

namespace orva::embedded {

DatabaseHandle openEngine(const std::string& file, int flags) {
  constexpr int kBusyMilliseconds = 3000;
  static std::once_flag configured;
  std::call_once(configured, [] { sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0); });
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  DatabaseHandle database(raw);
  if (code != SQLITE_OK) {
    throw ProviderError(provider_number::kUnspecified,
                        "The database '" + file + "' cannot be opened: " + sqlite3_errmsg(raw) + ".");
  }
  sqlite3_busy_timeout(raw, kBusyMilliseconds);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  registerFunctions(raw);
  return database;
}

}  // namespace orva::embedded
