#pragma once

#include "platform/embedded/sql/syntax.h"
#include "platform/embedded/store.h"

namespace orva::embedded {

bool isDefinition(const sql::Statement& statement);

/// Carries out a statement that changes the layout, whole or not at all; 0 rows.
/// Throws `ProviderError` with the number that the dialect's provider gives.
std::int64_t runDefinition(Store& store, SqlDialect dialect, const sql::Statement& statement);

}  // namespace orva::embedded
