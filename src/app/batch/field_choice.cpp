#include "app/batch/field_choice.h"

#include <algorithm>
#include <vector>

#include "platform/values/text.h"
#include "platform/workbook.h"
#include "wizard/catalogue/field_row.h"

namespace orva {
namespace {

/// Names in the header row of the sheet. None when the workbook cannot be read: reading it
/// for the import tells why.
std::vector<std::string> headerNames(Session& session, const std::string& workbook, std::string_view sheetName) {
  std::vector<std::string> names;
  try {
    const auto sheet = session.services().workbooks.openSheet(workbook, sheetName, HeaderRow::kYes);
    for (int column = 0; column < sheet->columnCount(); ++column) names.push_back(sheet->columnName(column));
  } catch (const WorkbookError&) {
    names.clear();
  }
  return names;
}

std::vector<std::string> splitNames(std::string_view list) {
  std::vector<std::string> names;
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::string_view name = trimSpace(list.substr(0, comma));
    if (!name.empty()) names.emplace_back(name);
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return names;
}

bool contains(const std::vector<std::string>& names, std::string_view wanted) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& name) { return equalsNoCase(trimSpace(name), trim(wanted)); });
}

void tickPresent(frmImport& screen, const std::vector<std::string>& names) {
  for (std::size_t index = 0; index < screen.catalogue().size(); ++index) {
    if (contains(names, screen.catalogue()[index].excelName)) screen.lstFields_ItemCheck(static_cast<int>(index), true);
  }
}

/// Ticks come last, as a line may bring others with it.
void tickOnly(frmImport& screen, const std::vector<std::string>& names) {
  for (const bool ticked : {false, true}) {
    for (std::size_t index = 0; index < screen.catalogue().size(); ++index) {
      if (contains(names, screen.catalogue()[index].excelName) != ticked) continue;
      screen.lstFields_ItemCheck(static_cast<int>(index), ticked);
    }
  }
}

bool areKnown(Session& session, const frmImport& screen, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (findField(screen.catalogue(), name) != nullptr) continue;
    session.tell("'" + name + "' is no field of this import. 'orva-import fields' lists them.");
    return false;
  }
  return true;
}

}  // namespace

void untickAbsent(Session& session, ImportWizard& screen, const std::string& workbook, std::string_view sheet) {
  const std::vector<std::string> names = headerNames(session, workbook, sheet);
  if (names.empty()) return;
  std::string absent;
  for (std::size_t index = 0; index < screen.catalogue().size(); ++index) {
    const FieldRow& field = screen.catalogue()[index];
    if (field.requirement != Requirement::kOptional || contains(names, field.excelName)) continue;
    absent += (absent.empty() ? "" : ", ") + field.excelName;
    screen.lstFields_ItemCheck(static_cast<int>(index), false);
  }
  if (!absent.empty()) session.tell("Not in the workbook and not imported: " + absent);
}

bool chooseFields(Session& session, frmImport& screen, const ImportOptions& options) {
  if (options.fields == "present") {
    tickPresent(screen, headerNames(session, options.workbook, "Asset"));
    return true;
  }
  if (options.fields == "all") {
    screen.cmdSelectAll_Click();
    return true;
  }
  const std::vector<std::string> names = splitNames(options.fields);
  if (!areKnown(session, screen, names)) return false;
  tickOnly(screen, names);
  return true;
}

}  // namespace orva
