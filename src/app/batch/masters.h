#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/batch/commands.h"
#include "masters/master_kinds.h"

namespace orva {

/// The master that the options name; nothing after the user was told of an unknown one.
std::optional<MasterKindId> masterKindOf(Session& session, const MasterOptions& options);

/// The miscellaneous master that the options name, or the only one that there is; nothing after the user was told which
/// there are.
std::optional<std::string> miscellaneousMasterOf(Session& session, const MasterOptions& options,
                                                 const std::vector<std::string>& masters);

}  // namespace orva
