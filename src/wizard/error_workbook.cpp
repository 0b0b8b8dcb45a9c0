#include "wizard/error_workbook.h"

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "wizard/results.h"

namespace orva {
namespace {

constexpr std::string_view kFileName = "ExportOrva.xls";

std::string joined(const FlexGrid& grid, int row) {
  std::string line;
  for (int column = 0; column < grid.columnCount(); ++column) {
    if (column > 0) line += '\t';
    line += grid.text(row, column);
  }
  return line;
}

bool removeOld(const Services& services, const std::string& path) {
  try {
    services.files.remove(path, true);
    return true;
  } catch (const FileError&) {
    services.dialogs.show({.text = "Close 'ExportOrva.xls' Excel file and try again",
                           .title = "ORVA Import",
                           .icon = MessageIcon::kInformation});
    return false;
  }
}

}  // namespace

std::vector<std::string> errorLines(const FlexGrid& grid) {
  std::vector<std::string> lines;
  if (grid.rowCount() == 0) return lines;
  lines.push_back(joined(grid, 0));
  const int errorColumn = grid.findColumn(kErrorHeading);
  for (int row = 1; row < grid.rowCount(); ++row) {
    if (grid.text(row, errorColumn) == "E") lines.push_back(joined(grid, row));
  }
  return lines;
}

std::vector<std::string> headerLines(const Catalogue& catalogue) {
  std::string line;
  for (const FieldRow& field : catalogue) {
    if (&field != &catalogue.front()) line += '\t';
    line += field.excelName;
  }
  return {line};
}

void writeAndOpenExport(const Services& services, std::string_view programFolder,
                        const std::vector<std::string>& lines) {
  const std::string path = joinPath(programFolder, kFileName);
  if (!removeOld(services, path)) return;
  services.files.writeLines(path, lines);
  if (services.shell.open(path)) return;
  services.dialogs.show({.text = path + " was written, but this desktop has no program to open it.",
                         .title = "ORVA Import",
                         .icon = MessageIcon::kInformation});
}

}  // namespace orva
