#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"
#include "platform/values/numeric_text.h"

namespace orva {
namespace {

using namespace checks;

bool isLessThan(const AssetRow& row, const Cell& cell, std::string_view heading) {
  const auto cost = amountIn(cell);
  const auto other = row.amount(heading);
  return cost && other && *cost < *other;
}

bool isLessThanBook1(AssetRow& row, const Cell& cell, const AssetRule&) { return isLessThan(row, cell, "ACCDEP1"); }

bool isLessThanBook2(AssetRow& row, const Cell& cell, const AssetRule&) { return isLessThan(row, cell, "ACCDEP2"); }

bool isCostOrMore(AssetRow& row, const Cell& cell, const AssetRule&) {
  const auto amount = amountIn(cell);
  const auto cost = row.cost();
  return amount && cost && *amount >= *cost;
}

bool isForbiddenSalvage(AssetRow& row, const Cell& cell, const AssetRule&) {
  const auto amount = amountIn(cell);
  return amount && *amount != Currency() && row.category().level(CategoryDepth::kOne).withoutSalvage;
}

bool isZeroOrNegative(AssetRow&, const Cell& cell, const AssetRule&) {
  const auto amount = amountIn(cell);
  return amount && *amount <= Currency();
}

bool isNoLife(AssetRow&, const Cell& cell, const AssetRule&) {
  const double months = val(cell.value);
  return !isNumeric(cell.value) || months < 1 || months > 1200;
}

constexpr AssetRule kRules[] = {
    {.column = "LIFE", .fails = isNoLife, .text = "Asset's Life should be within the range 1 to 1200"},
    {.column = "LIFE", .fails = isNegative, .text = "Asset's Life must be a whole number"},
    {.column = "LIFE", .fails = hasDecimals, .text = "LIFE : {value} should not contain decimal part"},

    {.column = "COST",
     .fails = isBlank,
     .text = "Cost should not be empty",
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "COST", .fails = isNotNumeric, .text = "Cost should not contain alphabets"},
    {.column = "COST", .fails = isNegative, .text = "Cost should not be negative amount"},
    {.column = "COST", .fails = hasTooManyDecimals, .text = "Cost should not contain more than 2 decimal places"},
    {.column = "COST",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change cost.",
     .mode = AppliesIn::kModify},
    {.column = "COST", .fails = isLessThanBook1, .text = "Cost should not be less than AccDep1"},
    {.column = "COST", .fails = isLessThanBook2, .text = "Cost should not be less than AccDep2"},

    {.column = "GST",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change GST.",
     .mode = AppliesIn::kModify},
    {.column = "GST", .fails = isNotNumeric, .text = "GST should not contain alphabets"},
    {.column = "GST", .fails = isCostOrMore, .text = "GST can not be more than or equal to the asset cost : {cost}"},
    {.column = "GST", .fails = isNegative, .text = "GST should not be negative amount."},
    {.column = "GST", .fails = hasTooManyDecimals, .text = "GST  value should be upto 2 decimals only "},

    {.column = "SALVAGEVALUE",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change Salvage.",
     .mode = AppliesIn::kModify},
    {.column = "SALVAGEVALUE", .fails = isNotNumeric, .text = "SalvageValue should not contain alphabets"},
    {.column = "SALVAGEVALUE",
     .fails = isMoreThanCost,
     .text = "SalvageValue can not be more than the asset cost : {cost}"},
    {.column = "SALVAGEVALUE", .fails = isNegative, .text = "SalvageValue should not be negative amount."},
    {.column = "SALVAGEVALUE",
     .fails = isForbiddenSalvage,
     .text = " Salvage Value Should be Zero or Blank for this category."},

    {.column = "QTY",
     .fails = isDepreciated,
     .text = "Depreciation is calculated. Can't change QTY.",
     .mode = AppliesIn::kModify},
    // Posted as one unit.
    {.column = "QTY", .fails = isBlank, .findingClass = FindingClass::kWarning},
    {.column = "QTY", .fails = isNotNumeric, .text = "QTY : {value} should not contain alphabets"},
    {.column = "QTY", .fails = isZeroOrNegative, .text = "QTY : {value} should not be negative or zero"},
    {.column = "QTY", .fails = isNegative, .text = "QTY : {value} should not be negative"},
    {.column = "QTY", .fails = hasDecimals, .text = "QTY : {value} should not contain decimal part"},

    {.column = "ACCDEP",
     .fails = isBlank,
     .text = "ACCDep should not be blank",
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "ACCDEP", .fails = isNotNumeric, .text = "ACCDEP : {value} should not contain alphabets"},
    {.column = "ACCDEP", .fails = isNegative, .text = "ACCDep should not be negative amount."},
    {.column = "ACCDEP", .fails = isMoreThanCost, .text = "AccDep should not exceed Asset Cost"},
    {.column = "ACCDEP", .fails = hasTooManyDecimals, .text = "AccDep should not contain more than 2 decimal places"},
    {.column = "ACCDEP",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change AccDep.",
     .mode = AppliesIn::kModify},

    // Both books report the same text.
    {.column = "ACCDEP1 ACCDEP2",
     .fails = isDepreciated,
     .text = "Depreciation is already calculated. Can't change AccDep1.",
     .mode = AppliesIn::kModify},
    {.column = "ACCDEP1", .fails = isNotNumeric, .text = "ACCDEP1 : {value} should not contain alphabets"},
    {.column = "ACCDEP1", .fails = isMoreThanCost, .text = "AccDep1 should not exceed Asset Cost"},
    {.column = "ACCDEP1", .fails = isNegative, .text = "ACCDEP1 : {value} should not be a negative amount"},
    {.column = "ACCDEP2", .fails = isNotNumeric, .text = "ACCDEP2 : {value} should not contain alphabets"},
    {.column = "ACCDEP2",
     .fails = isBlank,
     .text = "ACCDep2 should not be blank",
     .namesBlank = true,
     .afterFailure = AfterFailure::kNextCell},
    {.column = "ACCDEP2", .fails = isMoreThanCost, .text = "AccDep2 should not exceed Asset Cost"},
    {.column = "ACCDEP2", .fails = isNegative, .text = "AccDep2 should not contain negative value"},
};

}  // namespace

std::span<const AssetRule> amountRules() { return kRules; }

}  // namespace orva
