#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

using namespace checks;

bool hasSpecialCharacter(AssetRow&, const Cell& cell, const AssetRule&) {
  return cell.value.find_first_of("'\"\r\n") != std::string_view::npos;
}

bool isUnknownLocation(AssetRow& row, const Cell&, const AssetRule&) { return !row.hasKnownLocation(); }

constexpr AssetRule kRules[] = {
    {.column = "MAINLOC SUBLOC PHYLOC",
     .fails = isShifted,
     .text = "Asset is shifted. Can't change the Locations.",
     .mode = AppliesIn::kModify},
    {.column = "MAINLOC SUBLOC PHYLOC", .fails = isTooLong, .text = "{value} exceeds its maximum length {size}"},
    {.column = "MAINLOC SUBLOC PHYLOC",
     .fails = isBlank,
     .text = "{level name} should not be blank",
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "MAINLOC",
     .fails = hasSpecialCharacter,
     .text = "Main Location contains quotes or any other special character "},
    {.column = "SUBLOC",
     .fails = hasSpecialCharacter,
     .text = "Sub Location contains quotes or any other special character "},
    {.column = "PHYLOC",
     .fails = hasSpecialCharacter,
     .text = "Physical Location contains quotes or any other special character "},
    // The three cells name one location, which is looked up once.
    {.column = "MAINLOC SUBLOC PHYLOC", .fails = isUnknownLocation, .findingClass = FindingClass::kWarning},
};

}  // namespace

std::span<const AssetRule> locationRules() { return kRules; }

}  // namespace orva
