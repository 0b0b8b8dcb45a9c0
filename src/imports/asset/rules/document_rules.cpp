#include "imports/asset/rules/asset_rules.h"
#include "imports/asset/rules/checks.h"

namespace orva {
namespace {

using namespace checks;

bool isBlankReference(AssetRow& row, const Cell& cell, const AssetRule&) {
  return row.run().company.flags.validation && cell.isBlank();
}

constexpr AssetRule kRules[] = {
    {.column = "VCHRNO", .fails = isBlankReference, .text = "Voucher No. should not be blank", .namesBlank = true},
    {.column = "PONO", .fails = isBlankReference, .text = "PO No. should not be blank", .namesBlank = true},
    {.column = "BILLNO",
     .fails = isBlankReference,
     .text = "Party Doc/Ref No. should not be blank",
     .namesBlank = true},
    {.column = "VCHRNO PONO BILLNO", .fails = isTooLong, .text = "{value} exceeds the maximum length {size}"},

    // Whether a blank one is a fault is the catalogue's to say: the rules do not run on a blank cell of an optional
    // line.
    {.column = "WARRANTY", .fails = isBlank, .text = "Warranty Upto date should not blank"},
    {.column = "WARRANTY", .fails = isNotDate, .text = "Invalid Warranty Upto date : {value}"},
    {.column = "WARRANTY", .fails = isOutOfRange, .text = "Date out of Range. Invalid Warranty Upto date : {value}"},
    {.column = "PODATE", .fails = isBlank, .text = "PO date should not be blank"},
    {.column = "PODATE", .fails = isNotDate, .text = "Invalid PO date : {value}"},
    {.column = "PODATE", .fails = isOutOfRange, .text = "Date out of Range. Invalid PO date : {value}"},
    {.column = "BILLDATE", .fails = isBlank, .text = "Party Bill date should not be blank"},
    {.column = "BILLDATE", .fails = isNotDate, .text = "Invalid Party Bill date : {value}"},
    {.column = "BILLDATE", .fails = isOutOfRange, .text = "Date out of Range. Invalid Bill date : {value}"},
};

}  // namespace

std::span<const AssetRule> documentRules() { return kRules; }

}  // namespace orva
