#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

constexpr CatalogueLine kChildAssetLines[] = {
    {.label = "Asset Id No. ", .excelName = "PARENT_ID", .type = "Text", .size = "50", .required = Required::kAlways},
    {.label = "Physical ID",
     .excelName = "PHYID",
     .type = "Text",
     .size = "50",
     .required = Required::kWithDefault,
     .present = PresentWhen::kModifyByPhysicalId},
    {.label = "Desc of Assets",
     .excelName = "DESCRIPTION",
     .type = "Text",
     .size = "NO LIMITS",
     .required = Required::kAlways},
    {.label = "Cost", .excelName = "COST", .type = "Currency", .required = Required::kAlways},
    {.label = "Date put to Use",
     .excelName = "USEDATE",
     .type = "Date",
     .size = kDateFormat,
     .required = Required::kAlways},
    {.label = "Purchase Order Date", .excelName = "PODATE", .type = "Date", .size = kDateFormat},
    {.label = "Purchase Order Number", .excelName = "PONO", .type = "Text", .size = "30"},
    {.label = "User", .excelName = "USER", .type = "Text", .size = "50"},
    {.label = "Voucher Number", .excelName = "VCHRNO", .type = "Text", .size = "30"},
    {.label = "Voucher Date",
     .excelName = "VCHRDATE",
     .type = "Date",
     .size = kDateFormat,
     .required = Required::kAlways},
    {.label = "Vendor Name", .excelName = "VENDOR", .type = "Text", .size = "255"},
    {.label = "Party Doc/Ref No.", .excelName = "BILLNO", .type = "Text", .size = "30"},
    {.label = "Party Bill Date", .excelName = "BILLDATE", .type = "Date", .size = kDateFormat},
    {.label = "Warranty End Date", .excelName = "WARRANTY", .type = "Date", .size = kDateFormat},
    {.label = "Remarks", .excelName = "REMARKS", .type = "Text", .size = "NO LIMITS"},
    {.label = "Ignore Cost Income Tax",
     .excelName = "IgnoreCostIT",
     .type = "Text",
     .size = "3",
     .required = Required::kAlways},
    {.label = "Salvage Value", .excelName = "SALVAGEVALUE", .type = "Currency", .tick = Tick::kTicked},
    {.label = "Cenvat", .excelName = "CENVAT", .type = "Currency"},
};

}  // namespace

std::span<const CatalogueLine> childAssetLines() { return kChildAssetLines; }

}  // namespace orva
