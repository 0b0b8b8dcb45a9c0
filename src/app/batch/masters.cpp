#include "app/batch/masters.h"

#include "app/batch/commands.h"
#include "app/batch/field_choice.h"
#include "app/batch/wizard_run.h"
#include "masters/frmMasterImport.h"
#include "platform/values/text.h"

namespace orva {
namespace {

std::string knownKinds() {
  std::string names;
  for (const MasterKind& kind : masterKinds()) names += " " + std::string(kind.batchName);
  return names;
}

std::string quoted(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "'" : ", '") + name + "'";
  return text;
}

}  // namespace

std::optional<MasterKindId> masterKindOf(Session& session, const MasterOptions& options) {
  const auto kind = masterKindByBatchName(options.kind);
  if (!kind) session.tell("Unknown kind '" + options.kind + "'. The kinds are:" + knownKinds());
  return kind;
}

std::optional<std::string> miscellaneousMasterOf(Session& session, const MasterOptions& options,
                                                 const std::vector<std::string>& masters) {
  const std::string_view wanted = trim(options.miscellaneousMaster);
  if (masters.empty()) {
    session.tell("The company has no miscellaneous master.");
    return std::nullopt;
  }
  if (wanted.empty() && masters.size() == 1) return masters.front();
  for (const std::string& master : masters) {
    if (!wanted.empty() && equalsNoCase(trim(master), wanted)) return master;
  }
  session.tell((wanted.empty() ? "Name the miscellaneous master with --misc-master."
                               : "Unknown miscellaneous master '" + std::string(wanted) + "'.") +
               " The masters are: " + quoted(masters));
  return std::nullopt;
}

namespace {

bool choose(Session& session, frmMasterImport& screen, MasterKindId kind, const MasterOptions& options) {
  screen.cmdSkip_Click();
  if (kind == MasterKindId::kMiscellaneous) {
    std::vector<std::string> masters;
    masters.reserve(static_cast<std::size_t>(screen.cmbMisc.count()));
    for (int index = 0; index < screen.cmbMisc.count(); ++index) masters.push_back(screen.cmbMisc.item(index));
    const auto master = miscellaneousMasterOf(session, options, masters);
    if (!master) return false;
    screen.cmbMisc.setText(*master);
  }
  screen.optMaster_Click(kind);
  return screen.choice().kind == kind;
}

void tellWhatIsNotKept(Session& session, const frmMasterImport& screen) {
  std::string names;
  for (const std::string& name : namesNotKept(screen.choice().kind)) {
    const FieldRow* field = findField(screen.catalogue(), name);
    if (field && field->ticked) names += (names.empty() ? "" : ", ") + name;
  }
  if (!names.empty()) session.tell("In the workbook, but ORVA does not keep: " + names);
}

}  // namespace

Exit runMasters(Session& session, const MasterImportOptions& options) {
  const auto kind = masterKindOf(session, options.master);
  if (!kind || !session.open(options.master.company, ImportScreen::kMaster)) return Exit::kFailed;
  session.dialogs().setAnswerRule([](const Message&) { return Answer::kYes; });

  frmMasterImport screen(session.services(), session.company());
  session.eventLoop().onInterrupt([&] { screen.requestClose(); });
  screen.Load();
  if (!choose(session, screen, *kind, options.master)) return Exit::kFailed;
  untickAbsent(session, screen, options.workbook, "Master");
  tellWhatIsNotKept(session, screen);
  screen.txtExcel.setText(options.workbook);
  return runWizard(session, options.reports, screen);
}

}  // namespace orva
