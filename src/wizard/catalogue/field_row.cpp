#include "wizard/catalogue/field_row.h"

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"

namespace orva {

std::string_view requirementText(Requirement requirement) {
  switch (requirement) {
    case Requirement::kMandatory:
      return "M";
    case Requirement::kOptional:
      return "O";
    case Requirement::kMandatoryWithDefault:
      return "MFOE";
  }
  return "";
}

int maximumLength(const FieldRow& field) { return field.type == "Text" ? static_cast<int>(val(field.size)) : 0; }

const FieldRow* findField(const Catalogue& catalogue, std::string_view excelName) {
  const FieldRow* first = nullptr;
  for (const FieldRow& field : catalogue) {
    if (!equalsNoCase(trim(field.excelName), trim(excelName))) continue;
    if (field.ticked) return &field;
    if (!first) first = &field;
  }
  return first;
}

}  // namespace orva
