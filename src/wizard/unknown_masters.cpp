#include "wizard/unknown_masters.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "platform/values/text.h"

namespace orva {
namespace {

struct MasterColumn {
  std::string_view heading;
  NamedMaster kind;
  std::string_view master;
};

constexpr MasterColumn kColumns[] = {
    {"DEPT", NamedMaster::kDepartment, "Department"},
    {"VENDOR", NamedMaster::kVendor, "Vendor"},
    {"USER", NamedMaster::kUser, "User"},
    {"COSTCENTRE", NamedMaster::kCostCentre, "Cost Centre"},
    {"MAINLOC", NamedMaster::kLocation, "Location"},
};
constexpr std::string_view kLocationLevels[] = {"MAINLOC", "SUBLOC", "PHYLOC"};

/// What a column of the grid names, and the columns that make up the name.
struct Named {
  NamedMaster kind;
  std::string master;
  std::vector<int> columns;
};

bool isMiscellaneous(std::string_view heading, const Catalogue& catalogue) {
  const FieldRow* field = findField(catalogue, heading);
  return field && field->isMiscellaneous;
}

/// Nothing for a column of no master, and for the lower levels of a location, which its first one brings along.
std::optional<Named> namedBy(const FlexGrid& grid, int column, const Catalogue& catalogue) {
  const std::string_view heading = trim(grid.text(0, column));
  for (const MasterColumn& known : kColumns) {
    if (!equalsNoCase(heading, known.heading)) continue;
    Named named{.kind = known.kind, .master = std::string(known.master), .columns = {column}};
    if (known.kind != NamedMaster::kLocation) return named;
    named.columns.clear();
    for (const std::string_view level : kLocationLevels) named.columns.push_back(grid.findColumn(level));
    return named;
  }
  if (!isMiscellaneous(heading, catalogue)) return std::nullopt;
  return Named{.kind = NamedMaster::kMiscellaneous, .master = std::string(heading), .columns = {column}};
}

bool isInError(const Findings& findings, int row, const std::vector<int>& columns) {
  const Findings::Range range = findings.ofRow(row);
  return std::any_of(findings.all().begin() + static_cast<std::ptrdiff_t>(range.first),
                     findings.all().begin() + static_cast<std::ptrdiff_t>(range.last), [&](const Finding& finding) {
                       return finding.findingClass == FindingClass::kError &&
                              std::find(columns.begin(), columns.end(), finding.column) != columns.end();
                     });
}

/// The trimmed cells that make up a name; none when one of them is blank.
std::vector<std::string> namesIn(const FlexGrid& grid, int row, const std::vector<int>& columns) {
  std::vector<std::string> names;
  for (const int column : columns) {
    names.emplace_back(trim(grid.text(row, column)));
    if (names.back().empty()) return {};
  }
  return names;
}

bool hasBlanksAround(const FlexGrid& grid, int row, const std::vector<int>& columns) {
  return std::any_of(columns.begin(), columns.end(), [&](int column) {
    const std::string_view text = grid.text(row, column);
    return trim(text) != text;
  });
}

std::vector<std::string> uppered(std::vector<std::string> names) {
  for (std::string& name : names) name = toUpper(name);
  return names;
}

using Key = std::tuple<NamedMaster, std::string, std::vector<std::string>>;

}  // namespace

std::string UnknownMaster::name() const {
  std::string joined;
  for (const std::string& part : names) joined += (joined.empty() ? "" : " / ") + part;
  return joined;
}

bool namesMaster(std::string_view heading, const Catalogue& catalogue) {
  const auto isHeading = [&](std::string_view known) { return equalsNoCase(trim(heading), known); };
  return std::any_of(std::begin(kColumns), std::end(kColumns),
                     [&](const MasterColumn& column) { return isHeading(column.heading); }) ||
         std::any_of(std::begin(kLocationLevels), std::end(kLocationLevels), isHeading) ||
         isMiscellaneous(trim(heading), catalogue);
}

std::vector<UnknownMaster> unknownMastersIn(const Findings& findings, const FlexGrid& grid,
                                            const Catalogue& catalogue) {
  std::vector<std::optional<Named>> columns;
  columns.reserve(static_cast<std::size_t>(grid.columnCount()));
  for (int column = 0; column < grid.columnCount(); ++column) columns.push_back(namedBy(grid, column, catalogue));
  std::map<Key, UnknownMaster> found;
  for (const Finding& finding : findings.all()) {
    if (finding.findingClass != FindingClass::kWarning || finding.column < 0) continue;
    const auto& named = columns[static_cast<std::size_t>(finding.column)];
    if (!named || isInError(findings, finding.row, named->columns)) continue;
    std::vector<std::string> names = namesIn(grid, finding.row, named->columns);
    if (names.empty()) continue;
    UnknownMaster& unknown = found[{named->kind, named->master, uppered(names)}];
    if (hasBlanksAround(grid, finding.row, named->columns)) ++unknown.rowsWithBlanks;
    if (unknown.rows++ > 0) continue;
    unknown.kind = named->kind;
    unknown.master = named->master;
    unknown.names = std::move(names);
  }
  std::vector<UnknownMaster> unknown;
  unknown.reserve(found.size());
  for (auto& [key, master] : found) unknown.push_back(std::move(master));
  return unknown;
}

std::string unknownMasterText(const UnknownMaster& unknown) {
  std::string text = unknown.master + " : " + unknown.name() + " (" + std::to_string(unknown.rows) +
                     (unknown.rows == 1 ? " row" : " rows");
  if (unknown.rowsWithBlanks == 0) return text + ")";
  if (unknown.rowsWithBlanks < unknown.rows) text += ", " + std::to_string(unknown.rowsWithBlanks) + " of them";
  return text + " with blanks around the name)";
}

}  // namespace orva
