#pragma once

#include <span>

#include "wizard/catalogue/catalogue_line.h"

namespace orva {

/// The fixed lines of every import, in the order in which they are listed.

inline constexpr std::string_view kDateFormat = "DD/MM/YYYY";

std::span<const CatalogueLine> assetLines();
std::span<const CatalogueLine> costBreakupLines();
std::span<const CatalogueLine> childAssetLines();
std::span<const CatalogueLine> userDefinedFieldLines();
std::span<const CatalogueLine> saleLines();
std::span<const CatalogueLine> amcLines();
std::span<const CatalogueLine> insuranceLines();
std::span<const CatalogueLine> changeCategoryLines();

}  // namespace orva
