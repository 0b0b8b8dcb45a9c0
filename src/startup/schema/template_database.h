#pragma once

#include <string>

#include "platform/database.h"

namespace orva {

/// Makes the template of new companies at `path`: the whole layout, one `Parameter` row that
/// allows an import at once (identifiers generated, four digits, no region code), no company.
/// The file must not exist. Throws `ProviderError`, and may then leave a part of a file.
void createTemplate(const DatabaseRegistry& databases, const std::string& path);

}  // namespace orva
