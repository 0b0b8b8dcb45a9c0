#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"
#include "platform/values/text.h"

namespace orva {
namespace {

using namespace checks;

bool isAll(AssetRow&, const Cell& cell, const AssetRule&) { return equalsNoCase(trim(cell.value), "ALL"); }

bool isMoreThanHundred(AssetRow&, const Cell& cell, const AssetRule&) { return amountIn(cell) && numberIn(cell) > 100; }

/// A use date that is none is reported by its own column.
bool isWithoutUseDate(AssetRow& row, const Cell&, const AssetRule&) {
  return trim(row.cell("USEDATE")).empty() && !row.useDate();
}

bool isTaxedAlready(AssetRow& row, const Cell&, const AssetRule& rule) {
  const auto useDate = row.useDate();
  if (!useDate || !isInDatabaseRange(*useDate)) return false;
  const auto entries = row.open(rule.lookup);
  if (entries->eof()) return false;
  row.foundYear = nullToText(entries->get("FinYear"));
  return true;
}

bool isNotAfterUseDate(AssetRow& row, const Cell& cell, const AssetRule&) {
  const auto leaseDate = dateIn(cell);
  const auto useDate = row.useDate();
  return leaseDate && useDate && *leaseDate <= *useDate;
}

bool isMissingLeaseDate(AssetRow& row, const Cell& cell, const AssetRule&) {
  return cell.isBlank() && row.category().level(CategoryDepth::kOne).leaseHold;
}

constexpr AssetRule kRules[] = {
    {.column = "DESCRIPTION", .fails = isBlank, .text = "Description should not be blank", .namesBlank = true},

    // Behind the columns' own rules, so that it is the last message of a cell.
    {.column = "DEPT COSTCENTRE VENDOR MAINLOC SUBLOC PHYLOC USER",
     .fails = isAll,
     .text = "{value} Do not enter value <ALL> "},

    {.column = "SHIFTEDFROM", .fails = isBlank, .text = "Shifted From should not be blank"},
    {.column = "SHIFTEDFROM", .fails = isTooLong, .text = "{value} exceeds the maximum length {size}"},

    {.column = "LEASEDATE", .fails = isNotDate, .text = "Invalid Lease Date : {value}"},
    {.column = "LEASEDATE", .fails = isOutOfRange, .text = "Date out of Range. Invalid Lease Date : {value}"},
    {.column = "LEASEDATE",
     .fails = isNotAfterUseDate,
     .text = "Lease Date : {value} should be greater than Date put to use."},
    {.column = "LEASEDATE",
     .fails = isMissingLeaseDate,
     .text = "Lease Date :  should not be blank",
     .namesBlank = true},

    // A rate that is no number, or no rate, would only be found by the database.
    {.column = "ADDNLRATEASPERIT",
     .fails = isNotNumeric,
     .text = "AddnlRateAsPerIT : {value} should not contain alphabets"},
    {.column = "ADDNLRATEASPERIT", .fails = isNegative, .text = "AddnlRateAsPerIT : {value} should not be negative"},
    {.column = "ADDNLRATEASPERIT",
     .fails = isMoreThanHundred,
     .text = "AddnlRateAsPerIT : {value} cannot exceeds 100% "},
    {.column = "ADDNLRATEASPERIT",
     .fails = isWithoutUseDate,
     .text = ", UseDate is blank. UseDate is mandatory to import additional depreciation rate."},
    {.column = "ADDNLRATEASPERIT",
     .fails = notFound,
     .text = "Asset Id : {id} does not exist in Acquistion of Assets in ORVA.",
     .lookup = {"Select * from asset where assetid ='{asset id}'"},
     .mode = AppliesIn::kModify},
    {.column = "ADDNLRATEASPERIT",
     .fails = isTaxedAlready,
     .text = ", depreciation is already calculated as per Income Tax for FY {found year}",
     .lookup = {"Select * from ITaxDep where FinYear = (select FinYear from Finyear where {#use date} between FinOpDt "
                "and  FinClDt )"}},

    // User-defined fields.
    {.column = "UDV1 UDV2 UDV3 UDV4 UDV5 UDV6 UDV7 UDV8 UDV9 UDV10",
     .fails = isTooLong,
     .text = "{value} exceeds the maximum length {size}"},
    {.column = "UDV11 UDV12 UDV13 UDV14 UDV15", .fails = isNotDate, .text = "Invalid {column} date : {value}"},
    {.column = "UDV11 UDV12 UDV13 UDV14 UDV15", .fails = isOutOfRange, .text = "Invalid {column} date : {value}"},
};

}  // namespace

std::span<const AssetRule> otherRules() { return kRules; }

}  // namespace orva
