#pragma once

#include <sqlite3.h>

#include <memory>
#include <unordered_set>

#include "platform/embedded/access_file.h"

namespace orva::embedded {

/// What the virtual tables of one connection share.
struct AccessTables {
  std::shared_ptr<AccessFile> file;
  /// Rows that the statement under way has updated, and how often again: a join may meet a row twice.
  std::unordered_set<std::uint64_t> updated;
  std::int64_t repeated = 0;
};

/// Name of the module: "CREATE VIRTUAL TABLE t USING access_table" shows the table
/// t of the file. Changes collect in the file until it is committed.
inline constexpr const char* kAccessModule = "access_table";

/// `tables` must outlive the connection.
void registerAccessModule(sqlite3* database, AccessTables& tables);

/// The hidden column, quoted, for the expression at this place of `AccessTable::expressions`.
std::string expressionColumnName(std::size_t place);

}  // namespace orva::embedded
