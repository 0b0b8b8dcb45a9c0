#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

constexpr CatalogueLine kSaleLines[] = {
    {.label = "Asset Id No.", .excelName = "ASSETID", .type = "Text", .size = "30", .required = Required::kAlways},
    {.label = "InvoiceNo", .excelName = "InvoiceNo", .type = "Text", .size = "10", .required = Required::kAlways},
    {.label = "SaleDate", .excelName = "SaleDate", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "SaleAMT", .excelName = "SaleAMT", .type = "Currency", .required = Required::kAlways},
    {.label = "SerialNo", .excelName = "SerialNo", .type = "Text", .size = "10", .required = Required::kAlways},
    {.label = "Remarks", .excelName = "Remarks", .type = "Text", .size = "255"},
};

}  // namespace

std::span<const CatalogueLine> saleLines() { return kSaleLines; }

}  // namespace orva
