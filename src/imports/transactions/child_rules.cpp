#include "imports/transactions/child_rules.h"

#include <vector>

#include "imports/transactions/document_rules.h"

namespace orva {
namespace {

bool isParentUnused(ChildRow& row, const Cell&, const ChildRule&) { return !row.assetDate("UseDate"); }

bool isParentLeaseHold(ChildRow& row, const Cell&, const ChildRule&) {
  return row.assetField("blnLeaseHold").toBoolean();
}

/// The year of the asset with this physical identifier. Keeps {year} for the message.
bool isPhysicalYearClosed(ChildRow& row, const Cell& cell, const Calendar& calendar, std::string_view field) {
  if (cell.isBlank()) return false;
  const auto asset = row.open({.access = "select accyear,finyear from asset where phyid ='{trimmed}'"});
  const std::string year = asset->eof() ? std::string() : nullToText(asset->get(field));
  row.setFact("year", year);
  return calendar.isClosed(year);
}

bool isPhysicalAccountingYearClosed(ChildRow& row, const Cell& cell, const ChildRule&) {
  return isPhysicalYearClosed(row, cell, row.accountingYears(), "accyear");
}

bool isPhysicalFinancialYearClosed(ChildRow& row, const Cell& cell, const ChildRule&) {
  return isPhysicalYearClosed(row, cell, row.financialYears(), "finyear");
}

/// Without a parent there is no sum.
bool isFamilyCostNegative(ChildRow& row, const Cell&, const ChildRule&) {
  return row.assetExists() && boundedSum(familyCost(row), row.cost()) < Currency();
}

bool isUsedBeforeParent(ChildRow& row, const Cell&, const ChildRule&) {
  const auto parentUse = row.assetDate("UseDate");
  return parentUse && *row.date() < *parentUse;
}

bool isOutsideAccountingYears(ChildRow& row, const Cell&, const ChildRule&) {
  return row.accountingYears().hasYears() && !row.accountingYear();
}

bool hasNoAccountingYears(ChildRow& row, const Cell&, const ChildRule&) { return !row.accountingYears().hasYears(); }

bool isAccountingYearClosed(ChildRow& row, const Cell&, const ChildRule&) {
  row.placeInYear(*row.accountingYear());
  return row.accountingYear()->isClosed;
}

bool isOutsideFinancialYears(ChildRow& row, const Cell&, const ChildRule&) {
  return row.financialYears().hasYears() && !row.financialYear();
}

bool hasNoFinancialYears(ChildRow& row, const Cell&, const ChildRule&) { return !row.financialYears().hasYears(); }

bool isFinancialYearClosed(ChildRow& row, const Cell&, const ChildRule&) {
  row.setFact("year", row.financialYear()->name);
  return row.financialYear()->isClosed;
}

/// Keeps the date up to which depreciation runs as {up to}.
bool isDepreciatedPastUse(ChildRow& row, const Cell&, const ChildRule& rule) {
  const auto entries = row.open(rule.lookup);
  if (entries->eof()) return false;
  row.setFact("up to", entries->get("docdt").toText());
  return true;
}

/// Keeps the financial year of the entry as {year}.
bool isTaxCalculated(ChildRow& row, const Cell&, const ChildRule& rule) {
  const auto entries = row.open(rule.lookup);
  if (entries->eof()) return false;
  row.setFact("year", nullToText(entries->get("finyear")));
  return true;
}

bool isNeitherYesNorNo(ChildRow&, const Cell& cell, const ChildRule&) {
  return !equalsNoCase(trim(cell.value), "YES") && !equalsNoCase(trim(cell.value), "NO");
}

/// A cost that is no amount is reported in its own column.
bool isMoreThanCost(ChildRow& row, const Cell& cell, const ChildRule&) {
  return amountIn(row.cell("COST")) && amountIn(cell.value) > row.cost();
}

constexpr Query kParentDepreciated{
    .access =
        "select docdt,method from fadep where assetid='{id}' and (reclass <>'Y' or reclass is Null )"
        " and (flag <> 'S' and flag <> 'O' or flag is Null) order by docdt"};
constexpr std::string_view kTaxCalculated = "Depreciation as Per ITAX is already calculated for the Year : {year}";

// The use-date tests of closing balances (assets acquired in the year, a date after the year's end) do not
// apply: a child is an acquisition, whatever its parent is. The rules of the documents come before these.
constexpr ChildRule kOwnRules[] = {
    {.column = "PARENT_ID", .fails = isBlank, .text = kNoAssetId, .namesBlank = true},
    {.column = "PARENT_ID", .fails = exceedsSize, .text = kTooLong},
    {.column = "PARENT_ID",
     .fails = isAssetMissing,
     .text = "Parent Asset not found, Can't add Child Assets for the AssetID: {value}"},
    {.column = "PARENT_ID",
     .fails = isParentUnused,
     .text = "Can't add Child Assets for the AssetID: {value} which is not put to use"},
    {.column = "PARENT_ID",
     .fails = isParentLeaseHold,
     .text = "Can't add Child Assets for the LeaseHold AssetID: {value}"},
    {.column = "PARENT_ID",
     .fails = isFoundByDate,
     .text = "Depreciation is already calculated for Asset Id : {value}. Can't import",
     .lookup = {.access = "select docdt from fadep where assetid='{id}' and docdt>={#date}"
                          " and (reclass <>'Y' or reclass is Null ) and (flag <> 'S' and flag <> 'O' or flag is Null)"
                          " order by docdt desc"}},
    {.column = "PARENT_ID",
     .fails = isAssetAccountingYearClosed,
     .text = "Asset Id : {value}'s accounting year : {year} is closed. Can't import"},
    {.column = "PARENT_ID",
     .fails = isAssetFinancialYearClosed,
     .text = "Asset Id : {value}'s Financial year : {year} is closed. Can't import"},
    {.column = "PARENT_ID",
     .fails = isFound,
     .text = "Asset Id : {value} is sold / Discarded. Can't import",
     .lookup = kSoldOrDiscarded},
    {.column = "PARENT_ID",
     .fails = isFound,
     .text = "Asset Id : {value} is Transferred out. Can't import",
     .lookup = kTransferredOut},
    {.column = "PHYID", .fails = exceedsSize, .text = "Phy id : {value} exceeds its maximum length {size}"},
    {.column = "PHYID",
     .fails = isPhysicalAccountingYearClosed,
     .text = "Physical Id : {value}'s accounting year : {year} is closed. Can't import"},
    {.column = "PHYID",
     .fails = isPhysicalFinancialYearClosed,
     .text = "Physical Id : {value}'s Financial year : {year} is closed. Can't import"},
    {.column = "DESCRIPTION", .fails = isBlank, .text = "Description should not be blank", .namesBlank = true},
    {.column = "PONO", .fails = exceedsSize, .text = kTooLong},
    {.column = "PODATE", .fails = isNoDate, .text = "Invalid PO date : {value}"},
    {.column = "PODATE", .fails = isOutsideServerRange, .text = "Date out of Range. Invalid PO date : {value}"},
    {.column = "WARRANTY", .fails = isNoDate, .text = "Invalid Warranty Upto date : {value}"},
    {.column = "WARRANTY",
     .fails = isOutsideServerRange,
     .text = "Date out of Range. Invalid Warranty Upto date : {value}"},
    {.column = "USER", .fails = exceedsSize, .text = "User Name : {value} exceeds its maximum length {size}"},
    {.column = "COST", .fails = isBlank, .text = "Cost should not be empty", .namesBlank = true},
    {.column = "COST", .fails = isNotNumeric, .text = "Cost should not contain alphabets"},
    {.column = "COST",
     .fails = isFamilyCostNegative,
     .text = "Sum of Dependent Child asset Cost & Parent asset Cost should not be negative"},
    {.column = "COST", .fails = hasThreeDecimals, .text = "Cost should not contain more than 2 decimal places"},
    {.column = "USEDATE", .fails = isBlank, .text = "Use Date should not be blank", .namesBlank = true},
    {.column = "USEDATE", .fails = isNoDate, .text = "Invalid Use Date : {value}"},
    {.column = "USEDATE", .fails = isOutsideServerRange, .text = "Date out of Range.Invalid Use Date : {value}"},
    {.column = "USEDATE",
     .fails = isUsedBeforeParent,
     .text = "Child Asset cannot be put to use before the Parent Asset. {value} Can't import"},
    {.column = "USEDATE",
     .fails = isFound,
     .text = "Closing Balances have been entered for this Year.",
     .lookup = {.access = "Select * from fadep where (docdt >= {#date}) and flag='O'"}},
    {.column = "USEDATE",
     .fails = isOutsideAccountingYears,
     .text = "{value} doesn't fall in any of the accounting years defined."},
    {.column = "USEDATE", .fails = hasNoAccountingYears, .text = "Accounting years are not defined in ORVA."},
    {.column = "USEDATE", .fails = isAccountingYearClosed, .text = "Accounting year : {year} is closed in ORVA."},
    {.column = "USEDATE",
     .fails = isFound,
     .text = "Closing Balances have been entered for the Year : {year}",
     .lookup = {.access = "Select accyear from fadep where (docdt >= {#opening date} and docdt <= {#closing date})"
                          " and flag='O'"}},
    // Any entry counts, also those of sales and reclassifications.
    {.column = "USEDATE",
     .fails = isDepreciatedPastUse,
     .text = "Depreciation is already calculated upto : {up to}.Therefore cannot import date {value}",
     .lookup = {.access = "Select * from Fadep where docdt > {#date} and ( flag <> 'O' or flag <>'S' or flag is null)"
                          " and (reclass <>'Y' or reclass <>'R' or reclass <>'M' or reclass is Null)"}},
    {.column = "USEDATE",
     .fails = isOutsideFinancialYears,
     .text = "{value} doesn't fall in any of the financial years defined."},
    {.column = "USEDATE", .fails = hasNoFinancialYears, .text = "Financial years are not defined in ORVA."},
    {.column = "USEDATE", .fails = isFinancialYearClosed, .text = "Financial year : {year} is closed in ORVA."},
    {.column = "USEDATE",
     .fails = isTaxCalculated,
     .text = kTaxCalculated,
     .lookup = {.access = "select * from itaxdep where docdt > {#date}"}},
    {.column = "USEDATE",
     .fails = isTaxCalculated,
     .text = kTaxCalculated,
     .lookup = {.access = "select * from itaxdep where finyear = '{year}'"}},
    {.column = "VENDOR", .fails = exceedsSize, .text = "{value} exceeds its maximum length {size}"},
    // Posting adds the vendor.
    {.column = "VENDOR",
     .fails = isNotFound,
     .findingClass = FindingClass::kWarning,
     .lookup = {.access = "Select * from Vendor where {upper}(Vendorname) ='{trimmed upper}'"}},
    {.column = "IGNORECOSTIT",
     .fails = isBlank,
     .text = "Ignore Cost IT : {value} cannot blank. Can't import",
     .namesBlank = true},
    {.column = "IGNORECOSTIT", .fails = isNeitherYesNorNo, .text = "Ignore Cost IT either 'Yes' or 'No'. Can't import"},
    {.column = "SALVAGEVALUE",
     .fails = isFound,
     .text = "Depreciation is already calculated. Can't change Salvage.",
     .lookup = kParentDepreciated},
    {.column = "SALVAGEVALUE", .fails = isNotNumeric, .text = "SalvageValue should not contain alphabets"},
    {.column = "SALVAGEVALUE", .fails = isNegative, .text = "SalvageValue should not be negative amount."},
    {.column = "SALVAGEVALUE",
     .fails = isMoreThanCost,
     .text = "SalvageValue can not be more than the asset cost : {COST}"},
    {.column = "CENVAT",
     .fails = isFound,
     .text = "Depreciation is already calculated. Can't change CenVat.",
     .lookup = kParentDepreciated},
    {.column = "CENVAT", .fails = isNotNumeric, .text = "CENVAT should not contain alphabets"},
    {.column = "CENVAT", .fails = isNegative, .text = "CenVat should not be negative amount."},
    {.column = "CENVAT", .fails = isMoreThanCost, .text = "Cenvat can not be more than the asset cost : {COST}"},
};

}  // namespace

std::vector<ChildRule> childRules() {
  std::vector<ChildRule> rules(kDocumentRules<ChildRow>.begin(), kDocumentRules<ChildRow>.end());
  rules.insert(rules.end(), std::begin(kOwnRules), std::end(kOwnRules));
  return rules;
}

}  // namespace orva
