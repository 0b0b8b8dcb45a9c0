#pragma once

#include <string>
#include <string_view>

#include "imports/asset/category.h"

namespace orva {

/// How a company numbers its assets; a missing parameter row counts as empty.
struct Numbering {
  std::string regionCode = {};
  /// Digits of the running number; 4, or 5 for every other setting.
  int digits = 5;
};

Numbering readNumbering(const ImportRun& run);

/// Region code and the prefixes of the category's levels, joined with a backslash.
std::string categoryPrefix(const Numbering& numbering, const AssetCategory& category);

/// The identifier that follows the highest of a prefix: read from `Asset` at every call, gaps are never
/// used again. Throws `ProviderError`.
std::string nextAssetIdentifier(const ImportRun& run, std::string_view prefix, int digits);

/// The next identifier of a category, from its prefixes and the company's numbering as they are now.
std::string nextAssetIdentifier(const ImportRun& run, const AssetCategory& category);

/// Code for a new level II below a level-I code ("PM-03"), or a new level III below a level-II code.
std::string nextClassificationCode(const ImportRun& run, std::string_view levelOne);
std::string nextSubclassCode(const ImportRun& run, std::string_view levelOne, std::string_view levelTwo);

}  // namespace orva
