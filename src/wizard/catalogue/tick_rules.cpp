#include "wizard/catalogue/tick_rules.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva {
namespace {

bool isAnyOf(const FieldRow& field, std::initializer_list<std::string_view> names) {
  return std::any_of(names.begin(), names.end(),
                     [&](std::string_view name) { return equalsNoCase(field.excelName, name); });
}

bool isFreelyTicked(const FieldRow& field) { return isAnyOf(field, {"ACCDEP1", "ACCDEP2"}); }
bool isLocation(const FieldRow& field) { return isAnyOf(field, {"MAINLOC", "SUBLOC", "PHYLOC"}); }

}  // namespace

void tickLine(Catalogue& catalogue, int index, bool ticked, const Selection& selection) {
  FieldRow& field = catalogue.at(static_cast<std::size_t>(index));
  field.ticked = ticked || (field.requirement == Requirement::kMandatory && !isFreelyTicked(field));
  if (!selection.isModify() || !isLocation(field)) return;
  for (FieldRow& other : catalogue) {
    if (isLocation(other)) other.ticked = field.ticked;
  }
}

bool tickAll(Catalogue& catalogue) {
  bool changed = false;
  for (FieldRow& field : catalogue) {
    if (field.ticked || isFreelyTicked(field)) continue;
    field.ticked = true;
    changed = true;
  }
  return changed;
}

int tickedLines(const Catalogue& catalogue) {
  return static_cast<int>(
      std::count_if(catalogue.begin(), catalogue.end(), [](const FieldRow& field) { return field.ticked; }));
}

}  // namespace orva
