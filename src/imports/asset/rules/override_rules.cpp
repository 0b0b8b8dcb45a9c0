#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"
#include "platform/values/text.h"

namespace orva {
namespace {

using namespace checks;

constexpr std::string_view kRate = "OVERRIDERATE";
constexpr std::string_view kMethod = "OVERRIDEMETHOD";

/// Heading of the method that belongs to a rate column, book by book, and the other way round.
std::string partner(const AssetRow& row, std::string_view own, std::string_view other) {
  return std::string(other) + std::string(row.columnName().substr(own.size()));
}

bool isGiven(const AssetRow& row, std::string_view heading) { return !trim(row.cell(heading)).empty(); }

bool isMissingRate(AssetRow& row, const Cell& cell, const AssetRule&) {
  return cell.isBlank() && isGiven(row, partner(row, kRate, kMethod));
}

/// A sheet without the method column leaves the method of the books at that of the asset's first depreciation entry;
/// the entries of the additional books name no such method.
bool hasNoMethod(AssetRow& row, const Cell& cell, const AssetRule&) {
  const std::string method = partner(row, kRate, kMethod);
  if (cell.isBlank() || isGiven(row, method)) return false;
  return method != kMethod || row.hasColumn(method) || row.depreciation().method.empty();
}

bool isMissingMethod(AssetRow& row, const Cell& cell, const AssetRule&) {
  return cell.isBlank() && isGiven(row, partner(row, kMethod, kRate));
}

bool hasNoRateColumn(AssetRow& row, const Cell& cell, const AssetRule&) {
  return !cell.isBlank() && !row.hasColumn(partner(row, kMethod, kRate));
}

/// An entry that names no method contradicts none.
bool isOtherMethod(AssetRow& row, const Cell& cell, const AssetRule&) {
  const std::string_view method = trim(row.depreciation().method);
  return !cell.isBlank() && !method.empty() && !equalsNoCase(method, trim(cell.value));
}

bool isNoMethod(AssetRow&, const Cell& cell, const AssetRule&) {
  const std::string_view method = trim(cell.value);
  return !method.empty() && !equalsNoCase(method, "SLM") && !equalsNoCase(method, "WDV");
}

constexpr std::string_view kRates = "OVERRIDERATE OVERRIDERATE1 OVERRIDERATE2";
constexpr std::string_view kMethods = "OVERRIDEMETHOD OVERRIDEMETHOD1 OVERRIDEMETHOD2";

constexpr AssetRule kRules[] = {
    {.column = kRates,
     .fails = isMissingRate,
     .text = "Overriding Rate - books should not be blank",
     .namesBlank = true},
    {.column = kRates, .fails = isNotNumeric, .text = "Overriding Rate - books should not contain Non-numeric values"},
    {.column = kRates, .fails = isNoPercentage, .text = "Overriding Rate - books should be =>0 and <=100 "},
    {.column = kRates, .fails = hasNoMethod, .text = "Overriding Method - books is not specified"},

    {.column = kMethods,
     .fails = isMissingMethod,
     .text = "Overriding Method - books should not be blank",
     .namesBlank = true},
    {.column = kMethods,
     .fails = hasNoRateColumn,
     .text = "Override Rate - Books is not updated. Import Override Rate - Books also along with Override Method - "
             "books ",
     .mode = AppliesIn::kModify},
    {.column = kMethods,
     .fails = isOtherMethod,
     .text = "Depreciation is calculated with {depreciation method} Method. Can't change Override Method -Books as "
             "{value}",
     .mode = AppliesIn::kModify},
    {.column = kMethods,
     .fails = isNoMethod,
     .text = "Overriding Method - books should not be other than 'SLM' or 'WDV' "},
};

}  // namespace

std::span<const AssetRule> overrideRules() { return kRules; }

}  // namespace orva
