#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/embedded/access_plan.h"

namespace orva::embedded {

/// Goes through the rows that a plan leads to. Rows may come, change and go on the way.
class RowWalk {
 public:
  RowWalk() = default;
  RowWalk(const RowWalk&) = delete;
  RowWalk& operator=(const RowWalk&) = delete;
  virtual ~RowWalk() = default;
  /// The first or next row; nothing at the end.
  virtual std::optional<access::RowId> next() = 0;
};

/// Starts at the first row; none when a condition can hold for no row.
std::unique_ptr<RowWalk> startWalk(AccessFile& file, AccessTable& table, const AccessPlan& plan,
                                   const std::vector<Scalar>& arguments);

}  // namespace orva::embedded
