#include <array>

#include "imports/asset/asset_columns.h"
#include "imports/asset/identifiers.h"
#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

bool hasLevelOne(const AssetRow& row) { return row.category().level(CategoryDepth::kOne).isKnown(); }

bool hasNoLevelOne(AssetRow& row, const Cell&, const AssetRule&) { return !hasLevelOne(row); }

/// Without a category or, for a new asset, an open year, which have been reported, there is no rate to miss. The
/// asset of a changed row may be without a year: then it has no rate.
bool isRateMissing(const AssetRow& row, const std::string& year, const AssetRule& rule) {
  return hasLevelOne(row) && (!year.empty() || row.existing()) && !row.finds(rule.lookup);
}

bool hasNoBookRate(AssetRow& row, const Cell&, const AssetRule& rule) {
  return isRateMissing(row, row.accountingYear(), rule);
}

bool hasNoTaxRate(AssetRow& row, const Cell&, const AssetRule& rule) {
  return isRateMissing(row, row.financialYear(), rule);
}

bool isUnmapped1(AssetRow& row, const Cell&, const AssetRule&) {
  return row.run().company.flags.additionalBook1 && hasLevelOne(row) && row.category().bookCodes().additional1.empty();
}

bool isUnmapped2(AssetRow& row, const Cell&, const AssetRule&) {
  return row.run().company.flags.additionalBook2 && hasLevelOne(row) && row.category().bookCodes().additional2.empty();
}

bool hasNoRate1(AssetRow& row, const Cell&, const AssetRule& rule) {
  return row.run().company.flags.additionalBook1 && !row.category().bookCodes().additional1.empty() &&
         isRateMissing(row, row.accountingYear(), rule);
}

bool hasNoRate2(AssetRow& row, const Cell&, const AssetRule& rule) {
  return row.run().company.flags.additionalBook2 && !row.category().bookCodes().additional2.empty() &&
         isRateMissing(row, row.accountingYear(), rule);
}

bool isIdentifierTooLong(AssetRow& row, const Cell&, const AssetRule&) {
  if (!row.run().company.flags.automaticIdentifiers || !hasLevelOne(row)) return false;
  const std::string identifier = nextAssetIdentifier(row.run(), row.category());
  return static_cast<int>(characterCount(identifier)) > kAssetIdentifierSize;
}

/// Straight-line depreciation that ends at a percentage of the cost needs to know what remains.
bool isSalvageMissing(AssetRow& row, const Cell&, const AssetRule&) {
  if (!row.run().selection.autoCalcDepRate || !trim(row.cell("SALVAGEVALUE")).empty()) return false;
  if (row.category().writeOffPercent() <= Currency()) return false;
  const auto rate = depreciationRate(row.run(), row.category(), row.accountingYear());
  return rate && equalsNoCase(rate->method, "SLM");
}

constexpr AssetRule kRules[] = {
    // Nothing is said beside the colour: the missing asset has its message.
    {.column = asset_column::kBooks, .fails = hasNoLevelOne, .mode = AppliesIn::kModify, .marks = asset_column::kBooks},
    {.column = asset_column::kIncomeTax,
     .fails = hasNoLevelOne,
     .mode = AppliesIn::kModify,
     .marks = asset_column::kIncomeTax},

    {.column = "Rates As Per Books",
     .fails = hasNoBookRate,
     .text = "{books code} is not defined in AccYear : {accounting year} in Rates As per Books",
     .lookup = {"Select * from Farate where Facode ='{books code}' and Accyear ='{accounting year}'"},
     .marks = asset_column::kBooks},
    {.column = "Rates - Method 1",
     .fails = isUnmapped1,
     .text = "Rates as per Addnl Method 1 is not not mapped in Asset Category For {category descriptions}",
     .marks = asset_column::kAdditional1},
    {.column = "Rates - Method 1",
     .fails = hasNoRate1,
     .text = "{book 1 code} is not defined in AccYear : {accounting year} in Rates As per Method 1",
     .lookup = {"Select * from Farate1 where Facode ='{book 1 code}' and Accyear ='{accounting year}'"},
     .marks = asset_column::kAdditional1},
    {.column = "Rates - Method 2",
     .fails = isUnmapped2,
     .text = "Rates as per Addnl Method 2 is not not mapped in Asset Category For {category descriptions}",
     .marks = asset_column::kAdditional2},
    {.column = "Rates - Method 2",
     .fails = hasNoRate2,
     .text = "{book 2 code} is not defined in AccYear : {accounting year} in Rates - Method 2",
     .lookup = {"Select * from Farate2 where Facode ='{book 2 code}' and Accyear ='{accounting year}'"},
     .marks = asset_column::kAdditional2},
    {.column = "Rates As Per ITax",
     .fails = hasNoTaxRate,
     .text = "{income tax code} is not defined for FinYear : {financial year} in Rates As per Income-Tax",
     .lookup = {"Select * from ITAXRATES where blockcode ='{income tax code}' and finyear ='{financial year}'"},
     .marks = asset_column::kIncomeTax},

    {.column = "Asset ID",
     .fails = isIdentifierTooLong,
     .text = "Category Prefix & No. of digits exceeds AssetID's maximum length : {identifier size}",
     .mode = AppliesIn::kAdd},
    {.column = "SALVAGEVALUE",
     .fails = isSalvageMissing,
     .text = " Please provide salvage value. As Depreciation Base is WRITEOFF UPTO.",
     .mode = AppliesIn::kAdd,
     .marks = "SALVAGEVALUE"},
};

}  // namespace

std::span<const AssetRule> rowEndRules() { return kRules; }

void endAssetRow(AssetRow& row) {
  for (const AssetRule& rule : kRules) {
    if (!appliesTo(rule.mode, rule.flavour, row.run().selection) || !rule.fails(row, Cell{}, rule)) continue;
    const int column = rule.marks.empty() ? -1 : row.columnOf(rule.marks);
    row.record(column, rule.findingClass, rule.text, rule.column);
  }
  row.writeOwnColumns();
}

}  // namespace orva
