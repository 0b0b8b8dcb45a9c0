#include "app/batch/wizard_run.h"

#include <fstream>
#include <functional>

#include "platform/local/path_lookup.h"

namespace orva {
namespace {

/// The coloured lines of the field list, which a window would show.
void tellHeaderFaults(Session& session, const ImportWizard& screen) {
  for (int index = 0; index < screen.lstFields.count(); ++index) {
    const ListView::Line& line = screen.lstFields.line(index);
    if (!line.bold || line.cells.size() < 2) continue;
    const Label& legend = line.foreColour == colours::kBlue ? screen.lblBlue : screen.lblRed;
    session.tell(legend.caption() + ": " + line.cells[1]);
  }
}

/// Writes a text file line by line. False when it could not be written; the user was told.
bool writeFile(Session& session, const std::string& path, const std::function<void(std::ostream&)>& write) {
  if (path.empty()) return true;
  std::ofstream file(findPath(path));
  if (file) write(file);
  file.close();
  if (!file) session.tell("Cannot write " + path + ".");
  return !file.fail();
}

void writeResults(std::ostream& file, const FlexGrid& grid) {
  for (int row = 0; row < grid.rowCount(); ++row) {
    for (int column = 0; column < grid.columnCount(); ++column) {
      if (column > 0) file << '\t';
      file << cellText(grid.text(row, column));
    }
    file << '\n';
  }
}

std::string_view markName(FindingClass findingClass) {
  switch (findingClass) {
    case FindingClass::kError:
      return "error";
    case FindingClass::kWarning:
      return "warning";
    case FindingClass::kBackdated:
      break;
  }
  return "backdated";
}

void writeMarks(std::ostream& file, const ImportWizard& screen) {
  for (const CellMark& mark : screen.marks()) {
    file << mark.row << '\t' << cellText(screen.grid1.text(0, mark.column)) << '\t' << markName(mark.findingClass)
         << '\n';
  }
}

bool writeReports(Session& session, const ReportOptions& options, const ImportWizard& screen) {
  return writeFile(session, options.resultsFile, [&](std::ostream& file) { writeResults(file, screen.grid1); }) &&
         writeFile(session, options.marksFile, [&](std::ostream& file) { writeMarks(file, screen); });
}

void printControlLines(std::ostream& out, const ImportWizard& screen) {
  for (const std::string& line : screen.controlLines()) out << line << '\n';
}

void printTotals(std::ostream& out, const ImportWizard& screen) {
  for (const Label* label : {&screen.lblTotalRec, &screen.lblTotalErr, &screen.lblStatus}) {
    if (!label->caption().empty()) out << label->caption() << '\n';
  }
  printControlLines(out, screen);
  if (screen.unknownMasters().empty()) return;
  out << screen.lblUnknown.caption() << " :\n";
  for (const UnknownMaster& unknown : screen.unknownMasters()) out << cellText(unknownMasterText(unknown)) << '\n';
}

Exit post(Session& session, ImportWizard& screen) {
  screen.cmdNext_Click(WizardPage::kResults);
  screen.cmdContinue_Click(WizardPage::kFinish);
  const PostResult& result = screen.postResult();
  session.out() << "Rows posted : " << result.rowsPosted << '\n';
  printControlLines(session.out(), screen);
  if (!result.finished) return Exit::kFailed;
  session.out() << result.text << '\n';
  return screen.controlTotalsAgree() ? Exit::kDone : Exit::kFailed;
}

}  // namespace

Exit runWizard(Session& session, const ReportOptions& options, ImportWizard& screen) {
  screen.cmdNext_Click(WizardPage::kSelection);
  if (screen.page() != WizardPage::kResults) tellHeaderFaults(session, screen);
  if (!screen.isValidated()) return Exit::kFailed;
  printTotals(session.out(), screen);
  if (!writeReports(session, options, screen)) return Exit::kFailed;
  if (screen.errorCount() > 0) return Exit::kRowsInError;
  return options.validateOnly ? Exit::kDone : post(session, screen);
}

}  // namespace orva
