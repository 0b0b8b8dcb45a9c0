#pragma once

#include "platform/database.h"
#include "wizard/catalogue/field_row.h"

namespace orva {

/// One optional line for every field that the company has defined (a name in `UDfields`; a blank name is
/// an unused field), with the number of its value column as position. The value column with
/// number k belongs to the name with number k; the key column `Assetid` is no field.
/// Empty when `UDfields` has no row. Throws `ProviderError`.
Catalogue userDefinedLines(Connection& connection);

/// False when the company has defined no field of its own. Throws `ProviderError`.
bool hasUserDefinedFields(Connection& connection);

/// One optional line for every miscellaneous master of the company. Throws `ProviderError`.
Catalogue miscellaneousMasterLines(Connection& connection);

}  // namespace orva
