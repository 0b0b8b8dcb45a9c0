#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

constexpr CatalogueLine kAmcLines[] = {
    {.label = "Asset Id No.", .excelName = "ASSETID", .type = "Text", .size = "30", .required = Required::kAlways},
    {.label = "RefNo", .excelName = "RefNo", .type = "Text", .size = "50", .required = Required::kAlways},
    {.label = "RefDate", .excelName = "RefDate", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "AMCFrom", .excelName = "AMCFrom", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "AMCTo", .excelName = "AMCTo", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "Amount", .excelName = "Amount", .type = "Currency", .required = Required::kAlways},
    {.label = "Remarks", .excelName = "Remarks", .type = "Text", .size = "100"},
};

constexpr CatalogueLine kInsuranceLines[] = {
    {.label = "Asset Id No.", .excelName = "ASSETID", .type = "Text", .size = "30", .required = Required::kAlways},
    {.label = "RefNo", .excelName = "RefNo", .type = "Text", .size = "50", .required = Required::kAlways},
    {.label = "RefDate", .excelName = "RefDate", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "InsFrom", .excelName = "InsFrom", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "InsTo", .excelName = "InsTo", .type = "Date", .size = kDateFormat, .required = Required::kAlways},
    {.label = "PolicyNo", .excelName = "PolicyNo", .type = "Text", .size = "20", .required = Required::kAlways},
    {.label = "PolicyAMT", .excelName = "PolicyAMT", .type = "Currency", .required = Required::kAlways},
    {.label = "Remarks", .excelName = "Remarks", .type = "Text", .size = "255"},
};

}  // namespace

std::span<const CatalogueLine> amcLines() { return kAmcLines; }
std::span<const CatalogueLine> insuranceLines() { return kInsuranceLines; }

}  // namespace orva
