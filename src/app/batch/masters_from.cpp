#include "masters/masters_from.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "app/batch/masters.h"
#include "platform/files.h"
#include "platform/local/path_lookup.h"
#include "platform/values/text.h"
#include "startup/shared_error_report.h"
#include "wizard/staging.h"

namespace orva {
namespace {

bool isSameFile(const std::string& one, const std::string& other) {
  std::error_code none;
  return std::filesystem::equivalent(findPath(one), findPath(other), none);
}

/// The master import reads no other files; neither the register nor a workbook that was completed by hand may be lost.
bool mayWrite(Session& session, const MastersFromOptions& options) {
  if (!equalsNoCase(extensionName(options.out), "xls")) {
    session.tell("The name of the master workbook must end in .xls: " + options.out);
    return false;
  }
  if (isSameFile(options.out, options.workbook)) {
    session.tell("The master workbook would replace the asset workbook.");
    return false;
  }
  std::error_code none;
  if (!std::filesystem::exists(findPath(options.out), none)) return true;
  session.tell("There is a file " + options.out + " already. Name another one, or delete it first.");
  return false;
}

void printMissing(std::ostream& out, const std::vector<MissingMaster>& missing) {
  const auto isMissing = [](const MissingMaster& each) { return !each.isKnown; };
  if (std::any_of(missing.begin(), missing.end(), isMissing)) {
    out << tabbed({"Master", "Name", "Rows", "Nearest in ORVA"}) << '\n';
  }
  for (const MissingMaster& each : missing) {
    if (each.isKnown) continue;
    std::vector<std::string> cells{each.unknown.master, each.unknown.name(), std::to_string(each.unknown.rows)};
    cells.insert(cells.end(), each.nearest.begin(), each.nearest.end());
    out << tabbed(cells) << '\n';
  }
}

void printKnown(std::ostream& out, const std::vector<MissingMaster>& missing) {
  const auto isKnown = [](const MissingMaster& each) { return each.isKnown; };
  if (std::none_of(missing.begin(), missing.end(), isKnown)) return;
  out << "In ORVA, but not found because of blanks in the workbook :\n";
  for (const MissingMaster& each : missing) {
    if (each.isKnown) out << cellText(unknownMasterText(each.unknown)) << '\n';
  }
}

struct CountLine {
  NamedMaster kind;
  std::string_view text;
};

constexpr CountLine kCounts[] = {
    {NamedMaster::kDepartment, "Departments"},
    {NamedMaster::kVendor, "Vendors"},
    {NamedMaster::kUser, "Users"},
    {NamedMaster::kCostCentre, "Cost Centres"},
    {NamedMaster::kLocation, "Locations"},
    {NamedMaster::kMiscellaneous, "Miscellaneous Masters"},
};

void printCounts(std::ostream& out, const std::vector<MissingMaster>& missing) {
  for (const CountLine& line : kCounts) {
    const auto count = std::count_if(missing.begin(), missing.end(), [&](const MissingMaster& each) {
      return !each.isKnown && each.unknown.kind == line.kind;
    });
    out << line.text << " not in ORVA : " << count << '\n';
  }
}

Exit searchAndWrite(Session& session, const MastersFromOptions& options, MasterKindId kind) {
  std::string miscellaneous;
  if (kind == MasterKindId::kMiscellaneous) {
    const auto master =
        miscellaneousMasterOf(session, options.master, miscellaneousMasters(*session.company().connection));
    if (!master) return Exit::kFailed;
    miscellaneous = *master;
  }
  const ImportProcedures* assets = findProcedures(session.importKinds(), ImportKindId::kAcquired);
  const MastersFrom search(session.services(), session.company(), *assets);
  const std::vector<MissingMaster> missing = search.search(options.workbook);
  const auto rows = search.masterSheet(missing, kind, miscellaneous);
  printMissing(session.out(), missing);
  printKnown(session.out(), missing);
  printCounts(session.out(), missing);
  session.services().workbooks.write(options.out, "Master", rows);
  session.out() << "Rows written to " << options.out << " : " << rows.size() - 1 << '\n';
  return Exit::kDone;
}

}  // namespace

Exit runMastersFrom(Session& session, const MastersFromOptions& options) {
  const auto kind = masterKindOf(session, options.master);
  if (!kind || !mayWrite(session, options)) return Exit::kFailed;
  if (!session.open(options.master.company)) return Exit::kFailed;
  try {
    return searchAndWrite(session, options, *kind);
  } catch (const std::exception& error) {
    const auto* fault = dynamic_cast<const WorkbookError*>(&error);
    if (fault == nullptr) {
      reportError(session.dialogs(), error);
    } else {
      session.tell(sheetFaultText(*fault));
    }
    return Exit::kFailed;
  }
}

}  // namespace orva
