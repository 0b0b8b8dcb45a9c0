#include "masters/masters_from.h"

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "masters/master_posting.h"
#include "masters/nearest_names.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"
#include "wizard/catalogue/builders.h"
#include "wizard/staging.h"

namespace orva {
namespace {

/// How the names of an asset sheet become rows of a master workbook.
struct MasterSheetRow {
  MasterKindId kind;
  NamedMaster named;
  /// Null for locations, which have no code of their own.
  std::string (*nextCode)(const MasterRow& row);
  /// Columns of the master workbook; those of the names are separated by blanks.
  std::string_view codeColumn;
  std::string_view nameColumns;
  std::string_view knownNames;
};

constexpr MasterSheetRow kMasters[] = {
    {MasterKindId::kDepartment, NamedMaster::kDepartment, nextDepartmentCode, "DeptCode", "DeptName",
     "select DeptName from Dept"},
    {MasterKindId::kCostCentre, NamedMaster::kCostCentre, nextCostCentreCode, "CentreCode", "COSTCENTRE",
     "select CentreName from Costcentre"},
    {MasterKindId::kLocation, NamedMaster::kLocation, nullptr, "", "MAINLOC SUBLOC PHYLOC",
     "select MainLocation, SubLocation, PhysicalLocation from Location"},
    {MasterKindId::kUser, NamedMaster::kUser, nextUserCode, "Usercode", "Username", "select Username from Users"},
    {MasterKindId::kVendor, NamedMaster::kVendor, nextVendorCode, "VendorCode", "VendorName",
     "select VendorName from Vendor"},
    {MasterKindId::kMiscellaneous, NamedMaster::kMiscellaneous, nextMiscellaneousCode, "Code", "MName",
     "select MName from MisData where Master = "},
};

template <class Id>
const MasterSheetRow& rowOf(Id MasterSheetRow::*key, Id id) {
  return *std::find_if(std::begin(kMasters), std::end(kMasters),
                       [&](const MasterSheetRow& row) { return row.*key == id; });
}

constexpr std::string_view kRowsHeading = "Rows in workbook", kNearestHeading = "Nearest in ORVA";

/// What a validator works on, without a window.
struct Desk {
  Desk(const Services& services, CompanyContext& company)
      : catalogue(buildCatalogue(selection, company)),
        progress({message, current, bar, services.eventLoop}),
        run{services, company, selection, catalogue, grid, findings, progress, saved} {
    std::erase_if(catalogue,
                  [&, all = catalogue](const FieldRow& field) { return !namesMaster(field.excelName, all); });
    for (FieldRow& field : catalogue) field.ticked = true;
  }
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  Selection selection;
  Catalogue catalogue;
  FlexGrid grid{"grid1"}, saved{"flxSave"};
  Findings findings;
  Label message{"lblMsg2"}, current{"lblCurrentStatus"};
  ProgressBar bar{"ProgressBar1"};
  RunProgress progress;
  ImportRun run;
};

/// "M1" and so on; empty for a name that is none of the company's masters.
std::string masterNumber(Connection& connection, std::string_view name) {
  const std::vector<std::string> masters = miscellaneousMasters(connection);
  for (std::size_t index = 0; index < masters.size(); ++index) {
    if (equalsNoCase(trim(masters[index]), trim(name))) return "M" + std::to_string(index + 1);
  }
  return {};
}

int partOf(std::string_view columns, std::string_view column) {
  for (int part = 0; !columns.empty(); ++part) {
    const std::size_t blank = std::min(columns.find(' '), columns.size());
    if (columns.substr(0, blank) == column) return part;
    columns.remove_prefix(std::min(blank + 1, columns.size()));
  }
  return -1;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

OutputCell text(std::string value) {
  return value.empty() ? OutputCell{} : OutputCell{CellKind::kText, std::move(value)};
}

std::vector<OutputCell> headingRow(const Catalogue& catalogue) {
  std::vector<OutputCell> headings;
  for (const FieldRow& field : catalogue) headings.push_back(text(field.excelName));
  headings.push_back(text(std::string(kRowsHeading)));
  headings.push_back(text(std::string(kNearestHeading)));
  return headings;
}

std::vector<OutputCell> masterRow(const MasterSheetRow& sheet, const Catalogue& catalogue, const MissingMaster& missing,
                                  const std::string& code) {
  std::vector<OutputCell> cells;
  for (const FieldRow& field : catalogue) {
    const int part = partOf(sheet.nameColumns, field.excelName);
    const bool isCode = field.excelName == sheet.codeColumn;
    cells.push_back(part >= 0 ? text(missing.unknown.names[static_cast<std::size_t>(part)])
                              : text(isCode ? code : std::string()));
  }
  cells.push_back({CellKind::kNumber, std::to_string(missing.unknown.rows)});
  cells.push_back(text(joined(missing.nearest)));
  return cells;
}

}  // namespace

std::vector<UnknownMaster> MastersFrom::unknownIn(const std::string& workbook) const {
  Desk desk(services_, company_);
  const auto sheet = openAssetSheet(services_.workbooks, workbook);
  Staged staged = DumpExlData(*sheet, {.catalogue = desk.catalogue}, desk.progress);
  if (staged.failure) throw std::runtime_error(conversionFailureText(*staged.failure));
  if (staged.table.columnCount() == 0) {
    throw std::runtime_error("The sheet 'Asset' has no column that names a master.");
  }
  desk.grid.setTable(std::exchange(staged.table, TextTable()));
  assets_.validate(desk.run);
  return unknownMastersIn(desk.findings, desk.grid, desk.catalogue);
}

std::vector<std::string> MastersFrom::knownNames(const UnknownMaster& like) const {
  std::string query(rowOf(&MasterSheetRow::named, like.kind).knownNames);
  if (like.kind == NamedMaster::kMiscellaneous) query += sqlQuote(masterNumber(*company_.connection, like.master));
  std::vector<std::string> names;
  const auto rows = company_.connection->open(query);
  const std::vector<FieldInfo> fields = rows->fields();
  for (; !rows->eof(); rows->moveNext()) {
    UnknownMaster known;
    for (const FieldInfo& field : fields) known.names.push_back(nullToText(rows->get(field.name)));
    names.push_back(known.name());
  }
  return names;
}

std::vector<MissingMaster> MastersFrom::search(const std::string& workbook) const {
  std::vector<MissingMaster> missing;
  std::optional<NearestNames> near;
  std::unordered_set<std::string> known;
  for (UnknownMaster& unknown : unknownIn(workbook)) {
    // Those of one master stand together.
    const bool isSame = !missing.empty() && missing.back().unknown.kind == unknown.kind &&
                        missing.back().unknown.master == unknown.master;
    if (!isSame) {
      std::vector<std::string> names = knownNames(unknown);
      known.clear();
      for (const std::string& name : names) known.insert(toUpper(name));
      near.emplace(std::move(names));
    }
    const std::string name = unknown.name();
    missing.push_back({std::move(unknown), near->nearest(name), known.contains(toUpper(name))});
  }
  return missing;
}

std::vector<std::vector<OutputCell>> MastersFrom::masterSheet(const std::vector<MissingMaster>& missing,
                                                              MasterKindId kind,
                                                              std::string_view miscellaneousMaster) const {
  const MasterSheetRow& sheet = rowOf(&MasterSheetRow::kind, kind);
  const Catalogue catalogue = masterCatalogue(kind);
  Desk desk(services_, company_);
  const MasterRow row(desk.run, masterNumber(*company_.connection, miscellaneousMaster));
  auto code = sheet.nextCode ? Value(sheet.nextCode(row)).toInteger().value_or(0) : 0;
  std::vector<std::vector<OutputCell>> rows{headingRow(catalogue)};
  for (const MissingMaster& each : missing) {
    if (each.isKnown || each.unknown.kind != sheet.named) continue;
    if (!miscellaneousMaster.empty() && !equalsNoCase(each.unknown.master, trim(miscellaneousMaster))) continue;
    rows.push_back(masterRow(sheet, catalogue, each, zeroPadded(code++, 4)));
  }
  return rows;
}

}  // namespace orva
