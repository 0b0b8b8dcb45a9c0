#pragma once

#include <sqlite3.h>

namespace orva::embedded {

/// Names of the collations. The desktop database counts trailing blanks, the
/// server does not: "A" = "A " there.
inline constexpr const char* kAccessCollation = "ORVA_TEXT";
inline constexpr const char* kServerCollation = "ORVA_PADDED";

/// Gives a connection the collations and functions that translated statements use.
void registerFunctions(sqlite3* database);

}  // namespace orva::embedded
