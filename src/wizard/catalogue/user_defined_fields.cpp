#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

// The company's own fields follow this line.
constexpr CatalogueLine kUserDefinedFieldLines[] = {
    {.label = "Asset Id No. ",
     .excelName = "ASSETID",
     .type = "Text",
     .size = "30",
     .required = Required::kAlways,
     .position = "0"},
};

}  // namespace

std::span<const CatalogueLine> userDefinedFieldLines() { return kUserDefinedFieldLines; }

}  // namespace orva
