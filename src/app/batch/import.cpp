#include <algorithm>
#include <fstream>
#include <functional>

#include "app/batch/commands.h"
#include "app/batch/field_choice.h"
#include "app/batch/ticks.h"
#include "platform/local/path_lookup.h"
#include "wizard/frmImport.h"

namespace orva {
namespace {

/// The user's choice of kind, mode and check boxes. False when the kind cannot be imported.
bool choose(Session& session, frmImport& screen, const Selection& selection) {
  if (!screen.kindOption(selection.kind).enabled()) {
    session.tell("'" + std::string(namesOf(selection.kind).batchName) + "' cannot be imported.");
    return false;
  }
  screen.cmdSkip_Click();
  screen.optKind_Click(selection.kind);
  screen.optMode_Click(selection.mode);
  // Whoever refused the kind has said why.
  if (screen.selection().kind != selection.kind) return false;
  for (const Tick& tick : kTicks) {
    if (!(selection.*tick.chosen)) continue;
    if (!(screen.*tick.box).enabled()) {
      session.tell(std::string(tick.option) + " has no effect on this kind and mode.");
      continue;
    }
    (screen.*tick.box).setValue(true);
    (screen.*tick.click)();
    if (!(screen.*tick.box).value()) return false;
  }
  return true;
}

/// The coloured lines of the field list, which a window would show.
void tellHeaderFaults(Session& session, const frmImport& screen) {
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

void writeMarks(std::ostream& file, const frmImport& screen) {
  for (const CellMark& mark : screen.marks()) {
    file << mark.row << '\t' << cellText(screen.grid1.text(0, mark.column)) << '\t' << markName(mark.findingClass)
         << '\n';
  }
}

bool writeReports(Session& session, const ImportOptions& options, const frmImport& screen) {
  return writeFile(session, options.resultsFile, [&](std::ostream& file) { writeResults(file, screen.grid1); }) &&
         writeFile(session, options.marksFile, [&](std::ostream& file) { writeMarks(file, screen); });
}

void printControlLines(std::ostream& out, const frmImport& screen) {
  for (const std::string& line : screen.controlLines()) out << line << '\n';
}

void printTotals(std::ostream& out, const frmImport& screen) {
  for (const Label* label : {&screen.lblTotalRec, &screen.lblTotalErr, &screen.lblStatus}) {
    if (!label->caption().empty()) out << label->caption() << '\n';
  }
  printControlLines(out, screen);
}

Exit post(Session& session, frmImport& screen) {
  screen.cmdNext_Click(WizardPage::kResults);
  screen.cmdContinue_Click(WizardPage::kFinish);
  const PostResult& result = screen.postResult();
  session.out() << "Rows posted : " << result.rowsPosted << '\n';
  printControlLines(session.out(), screen);
  if (!result.finished) return Exit::kFailed;
  session.out() << result.text << '\n';
  return screen.controlTotalsAgree() ? Exit::kDone : Exit::kFailed;
}

/// Reads and validates; posts when nothing stands against it.
Exit runScreen(Session& session, const ImportOptions& options, frmImport& screen) {
  screen.cmdNext_Click(WizardPage::kSelection);
  if (screen.page() != WizardPage::kResults) tellHeaderFaults(session, screen);
  if (!screen.isValidated()) return Exit::kFailed;
  printTotals(session.out(), screen);
  if (!writeReports(session, options, screen)) return Exit::kFailed;
  if (screen.errorCount() > 0) return Exit::kRowsInError;
  return options.validateOnly ? Exit::kDone : post(session, screen);
}

/// Two questions can come up. The one about backdated entries, told by its icon, is answered as the
/// command line says; the error workbook is always written.
Answer answer(const Message& question, bool acceptBackdated) {
  return question.icon != MessageIcon::kInformation || acceptBackdated ? Answer::kYes : Answer::kNo;
}

}  // namespace

Exit runImport(Session& session, const ImportOptions& options) {
  auto selection = selectionOf(session, options.choice);
  if (!selection || !session.open(options.choice.company)) return Exit::kFailed;
  selection->backdated = selection->backdated || options.acceptBackdated;
  session.dialogs().setAnswerRule([&](const Message& question) { return answer(question, options.acceptBackdated); });

  frmImport screen(session.services(), session.company(), session.importKinds());
  session.eventLoop().onInterrupt([&] { screen.requestClose(); });
  screen.Load();
  if (!choose(session, screen, *selection)) return Exit::kFailed;
  if (!chooseFields(session, screen, options)) return Exit::kFailed;
  screen.txtExcel.setText(options.workbook);
  return runScreen(session, options, screen);
}

}  // namespace orva
