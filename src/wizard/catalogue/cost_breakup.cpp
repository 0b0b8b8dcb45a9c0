#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

constexpr CatalogueLine kCostBreakupLines[] = {
    {.label = "Asset Id No. ",
     .excelName = "ASSETID",
     .type = "Text",
     .size = "30",
     .required = Required::kAlways,
     .present = PresentWhen::kModifyByAssetId},
    {.label = "Physical ID",
     .excelName = "PHYID",
     .type = "Text",
     .size = "50",
     .required = Required::kAlways,
     .present = PresentWhen::kModifyByPhysicalId},
    {.label = "Voucher Number", .excelName = "VCHRNO", .type = "Text", .size = "30"},
    {.label = "Voucher Date ",
     .excelName = "VCHRDATE",
     .type = "Date",
     .size = kDateFormat,
     .required = Required::kAlways},
    {.label = "Party Bill No.", .excelName = "BILLNO", .type = "Text", .size = "30"},
    {.label = "Party Bill Date",
     .excelName = "BILLDATE",
     .type = "Date",
     .size = kDateFormat,
     .required = Required::kAlways},
    {.label = "Particulars", .excelName = "PARTICULARS", .type = "Text", .size = "NO LIMIT"},
    {.label = "Amount", .excelName = "AMOUNT", .type = "Currency", .required = Required::kAlways},
    {.label = "CostCategory", .excelName = "COSTCATEGORY", .type = "Text", .size = "30", .required = Required::kAlways},
    {.label = "VendorName", .excelName = "VENDOR", .type = "Text", .size = "255", .required = Required::kWithDefault},
};

}  // namespace

std::span<const CatalogueLine> costBreakupLines() { return kCostBreakupLines; }

}  // namespace orva
