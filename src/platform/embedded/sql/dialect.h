#pragma once

namespace orva {

/// The two kinds of SQL text that the program composes.
enum class SqlDialect { kAccess, kSqlServer };

}  // namespace orva
