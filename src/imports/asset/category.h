#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "wizard/import_run.h"
#include "wizard/query.h"

namespace orva {

/// The depreciation code that each book uses for a category.
struct BookCodes {
  std::string books = {};
  std::string additional1 = {};
  std::string additional2 = {};
  std::string incomeTax = {};
};

/// One level of an asset category as the company keeps it. Texts are empty where the
/// database holds null.
struct CategoryLevel {
  std::string code = {};
  std::string description = {};
  std::string prefix = {};
  BookCodes bookCodes = {};
  /// Percentage of the cost up to which the category is written off; 0 for another base.
  Currency writeOffPercent = {};
  /// Level I only: a lease hold, and a category whose `CostSalvage` is set, keeps no salvage value.
  bool withoutSalvage = false;
  bool leaseHold = false;

  bool isKnown() const { return !code.empty(); }
};

enum class CategoryDepth : std::size_t { kOne, kTwo, kThree };

/// Levels I to III of one asset; a level that is not given is unknown.
struct AssetCategory {
  std::array<CategoryLevel, 3> levels = {};

  CategoryLevel& level(CategoryDepth depth) { return levels[static_cast<std::size_t>(depth)]; }
  const CategoryLevel& level(CategoryDepth depth) const { return levels[static_cast<std::size_t>(depth)]; }
  const std::string& codeOf(CategoryDepth depth) const { return level(depth).code; }
  /// Code of the most detailed level that is known.
  const std::string& deepestCode() const;

  /// The most detailed level that has a code wins, book by book.
  BookCodes bookCodes() const;
  Currency writeOffPercent() const;
};

/// The level in the current row of its table.
CategoryLevel levelOf(Recordset& row, CategoryDepth depth);

/// Reads one level by its description, below the levels that `category` has already. Throws `ProviderError`.
CategoryLevel findLevel(const ImportRun& run, const AssetCategory& category, CategoryDepth depth,
                        std::string_view description);
/// Reads one level by its code, below the levels that `category` has already.
CategoryLevel readLevel(const ImportRun& run, const AssetCategory& category, CategoryDepth depth,
                        std::string_view code);

/// "Plant-Pumps-Centrifugal": the descriptions of the levels, as the message of an unmapped book names them.
std::string categoryDescriptions(const ImportRun& run, const AssetCategory& category);

/// Method ("SLM" or "WDV") and yearly rate in percent of a category.
struct DepreciationRate {
  std::string method = {};
  Currency rate = {};
};

/// The company's rate of a category as per books for an accounting year; the most detailed level
/// that has one wins.
std::optional<DepreciationRate> depreciationRate(const ImportRun& run, const AssetCategory& category,
                                                 std::string_view accountingYear);

}  // namespace orva
