#pragma once

#include <memory>
#include <string_view>

#include "imports/asset/category.h"

namespace orva {

/// Levels II and III of the categories that posted rows name. A level that was removed since validation is added
/// again, below its level I or II, with the next code.
class CategoryCreation {
 public:
  explicit CategoryCreation(const ImportRun& run) : run_(run) {}

  /// The level of `description` below the levels that `category` has; unknown for a blank description.
  CategoryLevel findOrCreate(const AssetCategory& category, CategoryDepth depth, std::string_view description);

 private:
  Recordset& table(CategoryDepth depth);

  const ImportRun& run_;
  std::unique_ptr<Recordset> classifications_;
  std::unique_ptr<Recordset> subclasses_;
};

}  // namespace orva
