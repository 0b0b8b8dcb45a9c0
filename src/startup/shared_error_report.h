#pragma once

#include <exception>

#include "platform/dialogs.h"

namespace orva {

/// What every error trap of a screen calls: shows a failure with the critical icon. No
/// current record (3021) has a text of its own, an object that is not set (91) shows
/// nothing, anything else its description.
void reportError(Dialogs& dialogs, const std::exception& error);

}  // namespace orva
