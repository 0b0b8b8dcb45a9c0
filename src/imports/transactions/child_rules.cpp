#include "imports/transactions/child_rules.h"

namespace orva {
namespace {

/// The checks that all imports of existing assets share, on a child's parent.
template <bool (*Check)(TransactionRow&, const Cell&, const TransactionRule&)>
bool ofParent(ChildRow& row, const Cell& cell, const ChildRule&) {
  return Check(row, cell, {});
}

bool isParentUnused(ChildRow& row, const Cell&, const ChildRule&) { return !row.assetDate("UseDate"); }

bool isParentLeaseHold(ChildRow& row, const Cell&, const ChildRule&) {
  return row.assetField("blnLeaseHold").toBoolean();
}

/// A use date that is none is reported in its own column.
bool isParentDepreciatedFromUse(ChildRow& row, const Cell&, const ChildRule& rule) {
  return row.useDate() && row.finds(rule.lookup);
}

bool isPhysicalYearClosed(ChildRow& row, const Query& yearOf, const Query& closed, std::string_view field) {
  const auto asset = row.open(yearOf);
  if (asset->eof()) return false;
  row.setFact("year", nullToText(asset->get(field)));
  return row.finds(closed);
}

constexpr Query kAssetOfPhysicalId{.access = "select accyear,finyear from asset where phyid ='{PHYID}'"};

bool isPhysicalAccountingYearClosed(ChildRow& row, const Cell&, const ChildRule& rule) {
  return isPhysicalYearClosed(row, kAssetOfPhysicalId, rule.lookup, "accyear");
}

bool isPhysicalFinancialYearClosed(ChildRow& row, const Cell&, const ChildRule& rule) {
  return isPhysicalYearClosed(row, kAssetOfPhysicalId, rule.lookup, "finyear");
}

bool isFamilyCostNegative(ChildRow& row, const Cell&, const ChildRule&) {
  return familyCost(row) + row.cost() < Currency();
}

bool isUsedBeforeParent(ChildRow& row, const Cell&, const ChildRule&) {
  const auto parentUse = row.assetDate("UseDate");
  return parentUse && *row.useDate() < *parentUse;
}

bool isOutsideAccountingYears(ChildRow& row, const Cell&, const ChildRule&) {
  return accountingYearOf(row, *row.useDate()).empty();
}

bool isAccountingYearClosed(ChildRow& row, const Cell&, const ChildRule& rule) {
  row.setFact("year", accountingYearOf(row, *row.useDate()));
  return row.finds(rule.lookup);
}

/// Keeps the date up to which depreciation runs as {up to}.
bool isDepreciatedPastUse(ChildRow& row, const Cell&, const ChildRule& rule) {
  const auto entries = row.open(rule.lookup);
  if (entries->eof()) return false;
  row.setFact("up to", entries->get("docdt").toText());
  return true;
}

bool isIncomeTaxPastUse(ChildRow& row, const Cell&, const ChildRule& rule) {
  const auto entries = row.open(rule.lookup);
  if (entries->eof()) return false;
  row.setFact("year", nullToText(entries->get("finyear")));
  return true;
}

bool isNeitherYesNorNo(ChildRow&, const Cell& cell, const ChildRule&) {
  return !equalsNoCase(trim(cell.value), "YES") && !equalsNoCase(trim(cell.value), "NO");
}

bool isMoreThanCost(ChildRow& row, const Cell& cell, const ChildRule&) {
  row.setFact("cost", row.cost().toText());
  return Currency::parse(cell.value).value_or(Currency()) > row.cost();
}

constexpr Query kParentDepreciated{
    .access =
        "select docdt,method from fadep where assetid='{id}' and (reclass <>'Y' or reclass is Null )"
        " and (flag <> 'S' and flag <> 'O' or flag is Null) order by docdt"};
constexpr Query kClosedAccountingYear{.access = "select accyear from accyear where accyear='{year}' and closed={true}"};
constexpr Query kClosedFinancialYear{.access = "select finyear from finyear where finyear='{year}' and closed={true}"};
constexpr std::string_view kNoId = "AssetID should not be blank";

// The use-date tests of closing balances (assets acquired in the year, a date after the year's end) do not
// apply: a child is an acquisition, whatever its parent is.
constexpr ChildRule kChildRules[] = {
    {.column = "PARENT_ID", .fails = isBlank, .text = kNoId, .namesBlank = true},
    {.column = "PARENT_ID", .fails = exceedsSize, .text = "{value} exceeds the maximum length {size}"},
    {.column = "PARENT_ID",
     .fails = ofParent<isAssetMissing>,
     .text = "Parent Asset not found, Can't add Child Assets for the AssetID: {value}"},
    {.column = "PARENT_ID",
     .fails = isParentUnused,
     .text = "Can't add Child Assets for the AssetID: {value} which is not put to use"},
    {.column = "PARENT_ID",
     .fails = isParentLeaseHold,
     .text = "Can't add Child Assets for the LeaseHold AssetID: {value}"},
    {.column = "PARENT_ID",
     .fails = isParentDepreciatedFromUse,
     .text = "Depreciation is already calculated for Asset Id : {value}. Can't import",
     .lookup = {.access = "select docdt from fadep where assetid='{id}' and docdt>={#USEDATE}"
                          " and (reclass <>'Y' or reclass is Null ) and (flag <> 'S' and flag <> 'O' or flag is Null)"
                          " order by docdt desc"}},
    {.column = "PARENT_ID",
     .fails = ofParent<isAssetAccountingYearClosed>,
     .text = "Asset Id : {value}'s accounting year : {year} is closed. Can't import"},
    {.column = "PARENT_ID",
     .fails = ofParent<isAssetFinancialYearClosed>,
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
     .text = "Physical Id : {value}'s accounting year : {year} is closed. Can't import",
     .lookup = kClosedAccountingYear},
    {.column = "PHYID",
     .fails = isPhysicalFinancialYearClosed,
     .text = "Physical Id : {value}'s Financial year : {year} is closed. Can't import",
     .lookup = kClosedFinancialYear},
    {.column = "VCHRNO", .fails = exceedsSize, .text = "Voucher No : {value} exceeds the maximum length {size}"},
    {.column = "BILLNO", .fails = exceedsSize, .text = "Party Bill no : {value} exceeds the maximum length {size}"},
    {.column = "VCHRDATE", .fails = isBlank, .text = "Voucher Date should not be blank", .namesBlank = true},
    {.column = "USEDATE", .fails = isBlank, .text = "Use Date should not be blank", .namesBlank = true},
    {.column = "BILLDATE", .fails = isBlank, .text = "Party Bill Date should not be blank", .namesBlank = true},
    {.column = "VCHRDATE", .fails = isNoDate, .text = "Invalid Voucher Date : {value}"},
    {.column = "USEDATE", .fails = isNoDate, .text = "Invalid Use Date : {value}"},
    {.column = "BILLDATE", .fails = isNoDate, .text = "Invalid Party Bill Date : {value}"},
    {.column = "VCHRDATE", .fails = isOutsideServerRange, .text = "Date out of Range.Invalid Voucher Date : {value}"},
    {.column = "USEDATE", .fails = isOutsideServerRange, .text = "Date out of Range.Invalid Use Date : {value}"},
    {.column = "BILLDATE",
     .fails = isOutsideServerRange,
     .text = "Date out of Range.Invalid Party Bill Date : {value}"},
    {.column = "COST", .fails = isBlank, .text = "Cost should not be empty", .namesBlank = true},
    {.column = "COST", .fails = isNotNumeric, .text = "Cost should not contain alphabets"},
    {.column = "COST",
     .fails = isFamilyCostNegative,
     .text = "Sum of Dependent Child asset Cost & Parent asset Cost should not be negative"},
    {.column = "COST", .fails = hasThreeDecimals, .text = "Cost should not contain more than 2 decimal places"},
    {.column = "USEDATE",
     .fails = isUsedBeforeParent,
     .text = "Child Asset cannot be put to use before the Parent Asset. {value} Can't import"},
    {.column = "USEDATE",
     .fails = isFound,
     .text = "Closing Balances have been entered for this Year.",
     .lookup = {.access = "Select * from fadep where (docdt >= {#USEDATE}) and flag='O'"}},
    {.column = "USEDATE",
     .fails = isOutsideAccountingYears,
     .text = "{value} doesn't fall in any of the accounting years defined."},
    {.column = "USEDATE",
     .fails = isAccountingYearClosed,
     .text = "Accounting year : {year} is closed in ORVA.",
     .lookup = kClosedAccountingYear},
    {.column = "USEDATE",
     .fails = isDepreciatedPastUse,
     .text = "Depreciation is already calculated upto : {up to}.Therefore cannot import date {value}",
     .lookup = {.access =
                    "Select * from Fadep where docdt > {#USEDATE} and ( flag <> 'O' and flag <>'S' or flag is null)"
                    " and ((reclass <>'Y' and reclass <>'R' and reclass <>'M') or reclass is Null)"}},
    {.column = "USEDATE",
     .fails = isIncomeTaxPastUse,
     .text = "Depreciation as Per ITAX is already calculated for the Year : {year}",
     .lookup = {.access = "select * from itaxdep where docdt > {#USEDATE}"}},
    {.column = "VENDOR", .fails = exceedsSize, .text = "{value} exceeds its maximum length {size}"},
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
     .text = "SalvageValue can not be more than the asset cost : {cost}"},
    {.column = "CENVAT",
     .fails = isFound,
     .text = "Depreciation is already calculated. Can't change CenVat.",
     .lookup = kParentDepreciated},
    {.column = "CENVAT", .fails = isNotNumeric, .text = "CENVAT should not contain alphabets"},
    {.column = "CENVAT", .fails = isNegative, .text = "CenVat should not be negative amount."},
    {.column = "CENVAT", .fails = isMoreThanCost, .text = "Cenvat can not be more than the asset cost : {cost}"},
};

}  // namespace

std::span<const ChildRule> childRules() { return kChildRules; }

}  // namespace orva
