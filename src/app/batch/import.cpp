#include "app/batch/commands.h"
#include "app/batch/field_choice.h"
#include "app/batch/ticks.h"
#include "app/batch/wizard_run.h"
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
  return runWizard(session, options.reports, screen);
}

}  // namespace orva
