#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

constexpr CatalogueLine kChangeCategoryLines[] = {
    {.label = "Asset Id No.", .excelName = "ASSETID", .type = "Text", .size = "30", .required = Required::kAlways},
    {.label = "Doc Ref No.", .excelName = "DocRef", .type = "Text", .size = "10", .required = Required::kAlways},
    {.label = "Category Level I(Desc)",
     .excelName = "CAT1",
     .type = "Text",
     .size = "50",
     .required = Required::kAlways},
    {.label = "Category Level II(Desc)",
     .excelName = "CAT2",
     .type = "Text",
     .size = "255",
     .required = Required::kAlways},
    {.label = "Category Level III(Desc)", .excelName = "CAT3", .type = "Text", .size = "255", .tick = Tick::kUnticked},
    {.label = "Remarks", .excelName = "Remarks", .type = "Text", .size = "100", .tick = Tick::kUnticked},
};

}  // namespace

std::span<const CatalogueLine> changeCategoryLines() { return kChangeCategoryLines; }

}  // namespace orva
