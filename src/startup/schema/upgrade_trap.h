#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "platform/database.h"

namespace orva {

/// Failures by which a statement of the upgrade says that its work is done already.
inline constexpr std::int32_t kDoneAlready[] = {
    provider_number::kSyntaxOrExists,  // the table or index exists, or the text is no statement
    provider_number::kErrorsOccurred,  // the column exists, or its type cannot change
    provider_number::kUnspecified,     // the column exists
    provider_number::kNoSuchTable,     // nothing to drop or alter
};

/// Runs one statement or procedure; of its failures only the others leave.
template <typename Action>
void passingOverDone(Action action) {
  try {
    action();
  } catch (const ProviderError& error) {
    if (std::ranges::find(kDoneAlready, error.number()) == std::end(kDoneAlready)) throw;
  }
}

}  // namespace orva
