#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/embedded/access_plan.h"

namespace orva::embedded {

/// Entries of an index: from `lower` on, up to and without `upper` (none: to the end).
template <typename Key>
struct KeyRange {
  Key lower;
  std::optional<Key> upper;
};

/// The part of an index of the file in which all rows stand that a plan with
/// these arguments looks for; nothing when there can be none. Wider than needed
/// where the keys of the file cannot tell.
std::optional<KeyRange<access::Bytes>> fileRange(const access::TableDefinition& definition, const AccessPlan& plan,
                                                 const std::vector<Scalar>& arguments);

/// The same for a look-up in memory.
std::optional<KeyRange<std::string>> lookupRange(const AccessPlan& plan, const std::vector<Scalar>& arguments);
/// The part of that range that holds the value which the plan leaves out.
std::optional<KeyRange<std::string>> leftOutRange(const AccessPlan& plan, const std::vector<Scalar>& arguments);

}  // namespace orva::embedded
