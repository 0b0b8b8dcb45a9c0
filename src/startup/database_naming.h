#pragma once

#include <string>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/values/text.h"

namespace orva {

/// Runs `action`; a provider's failure leaves with the database's name in its description,
/// so that the user knows which of many files or catalogs is meant. A missing record keeps
/// its own text.
template <typename Action>
void namingTheDatabase(const std::string& database, Action action) {
  try {
    action();
  } catch (const ProviderError& error) {
    const bool named = toUpper(error.description()).find(toUpper(fileName(database))) != std::string::npos;
    if (named || error.number() == provider_number::kNoCurrentRecord) throw;
    throw ProviderError(error.number(), error.description() + "\n" + database);
  }
}

}  // namespace orva
