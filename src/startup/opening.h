#pragma once

#include <string>

#include "platform/services.h"

namespace orva {

struct CompanyContext;

enum class OpenResult {
  kOpened,
  /// The company does not generate asset identifiers; the user was told.
  kRefused,
  /// The failure was shown.
  kFailed,
};

/// Opens the company `code` and fills the context: closes and opens the shared connection,
/// upgrades the schema, reads the company's name and flags. When the connection cannot be
/// opened, the context keeps the code and database reference that it had.
OpenResult openCompany(CompanyContext& context, const Services& services, const std::string& code);

}  // namespace orva
