#include "wizard/unknown_masters.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

#include "platform/values/text.h"

namespace orva {
namespace {

struct MasterColumn {
  std::string_view heading;
  std::string_view master;
};

constexpr MasterColumn kColumns[] = {
    {"DEPT", "Department"},        {"VENDOR", "Vendor"},    {"USER", "User"},
    {"COSTCENTRE", "Cost Centre"}, {"MAINLOC", "Location"},
};
constexpr std::string_view kLocationLevels[] = {"MAINLOC", "SUBLOC", "PHYLOC"};

/// What a column of the grid names. Nothing for a column of no master, and for the lower levels of a location, which
/// its first one brings along.
struct Named {
  std::size_t order = 0;
  std::string master = {};
  bool isLocation = false;
};

std::optional<Named> namedBy(std::string_view heading, const Catalogue& catalogue) {
  for (std::size_t order = 0; order < std::size(kColumns); ++order) {
    if (!equalsNoCase(heading, kColumns[order].heading)) continue;
    const std::string master(kColumns[order].master);
    return Named{.order = order, .master = master, .isLocation = master == "Location"};
  }
  // The line of a miscellaneous master is labelled like its column, by the company.
  const FieldRow* field = findField(catalogue, heading);
  const bool isMiscellaneous = field && field->requirement == Requirement::kOptional && field->type == "Text" &&
                               equalsNoCase(trim(field->label), heading) && field->size == "255";
  if (!isMiscellaneous) return std::nullopt;
  return Named{.order = std::size(kColumns), .master = std::string(heading), .isLocation = false};
}

std::string nameIn(const FlexGrid& grid, int row, int column, bool isLocation) {
  if (!isLocation) return std::string(trim(grid.text(row, column)));
  std::string name;
  for (const std::string_view level : kLocationLevels) {
    if (!name.empty()) name += " / ";
    name += trim(grid.text(row, grid.findColumn(level)));
  }
  return name;
}

using Key = std::tuple<std::size_t, std::string, std::string>;

}  // namespace

std::vector<UnknownMaster> unknownMastersIn(const Findings& findings, const FlexGrid& grid,
                                            const Catalogue& catalogue) {
  std::vector<std::optional<Named>> columns;
  columns.reserve(static_cast<std::size_t>(grid.columnCount()));
  for (int column = 0; column < grid.columnCount(); ++column) {
    columns.push_back(namedBy(trim(grid.text(0, column)), catalogue));
  }
  std::map<Key, UnknownMaster> found;
  for (const Finding& finding : findings.all()) {
    if (finding.findingClass != FindingClass::kWarning || finding.column < 0) continue;
    const auto& named = columns[static_cast<std::size_t>(finding.column)];
    if (!named || trim(grid.text(finding.row, finding.column)).empty()) continue;
    const std::string name = nameIn(grid, finding.row, finding.column, named->isLocation);
    UnknownMaster& unknown = found[{named->order, named->master, toUpper(name)}];
    if (unknown.rows++ == 0) {
      unknown.master = named->master;
      unknown.name = name;
    }
  }
  std::vector<UnknownMaster> unknown;
  unknown.reserve(found.size());
  for (auto& [key, master] : found) unknown.push_back(std::move(master));
  return unknown;
}

std::string unknownMasterText(const UnknownMaster& unknown) {
  return unknown.master + " : " + unknown.name + " (" + std::to_string(unknown.rows) +
         (unknown.rows == 1 ? " row)" : " rows)");
}

}  // namespace orva
