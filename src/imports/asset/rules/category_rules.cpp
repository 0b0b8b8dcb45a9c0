#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

using namespace checks;

template <CategoryDepth kDepth>
bool isUnknownLevel(AssetRow& row, const Cell& cell, const AssetRule&) {
  return !cell.isBlank() && !row.category().level(kDepth).isKnown();
}

constexpr AssetRule kRules[] = {
    {.column = "CAT1",
     .fails = isBlank,
     .text = "Asset Category - Level I should not be blank",
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "CAT1", .fails = isTooLong, .text = "{value} exceeds the maximum length {size}"},
    {.column = "CAT1",
     .fails = isUnknownLevel<CategoryDepth::kOne>,
     .text = "Asset Category - Level I : {value} is not defined in ORVA."},

    {.column = "CAT2",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change CAT2.",
     .mode = AppliesIn::kModify},
    {.column = "CAT2",
     .fails = isReclassified,
     .text = "Change of Asset Category entry is present. Can't change CAT2.",
     .mode = AppliesIn::kModify},
    {.column = "CAT2",
     .fails = isBlank,
     .text = "Asset Category - Level II should not be blank",
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "CAT2", .fails = isTooLong, .text = "{value} exceeds the maximum length {size}"},
    {.column = "CAT2",
     .fails = isUnknownLevel<CategoryDepth::kTwo>,
     .text = "Asset Category - Level II : {value} is not defined in ORVA."},

    {.column = "CAT3",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change CAT3.",
     .mode = AppliesIn::kModify},
    {.column = "CAT3",
     .fails = isReclassified,
     .text = "Change of Asset Category entry is present. Can't change CAT3.",
     .mode = AppliesIn::kModify},
    {.column = "CAT3", .fails = isTooLong, .text = "{value} exceeds the maximum length {size}"},
    {.column = "CAT3",
     .fails = isUnknownLevel<CategoryDepth::kThree>,
     .text = "Asset Category - Level III : {value} is not defined in ORVA."},
};

}  // namespace

std::span<const AssetRule> categoryRules() { return kRules; }

}  // namespace orva
