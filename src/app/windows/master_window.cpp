#include "app/windows/master_window.h"

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

#include "app/windows/choice_group.h"
#include "platform/qt/bind.h"

namespace orva {
namespace {

SelectionParts masterSelection(frmMasterImport& screen, qt::ScreenRefresh& refresh) {
  ChoiceGroup group("What to import");
  for (const MasterKind& kind : masterKinds()) {
    bind(refresh, screen.masterOption(kind.id), group.add(new QRadioButton),
         [&screen, id = kind.id] { screen.optMaster_Click(id); });
  }
  auto* label = new QLabel;
  auto* masters = new QComboBox;
  label->setBuddy(masters);
  label->setContentsMargins(0, 8, 0, 0);
  bind(refresh, screen.lblMisc, group.add(label));
  bind(refresh, screen.cmbMisc, group.add(masters), [&screen] { screen.cmbMisc_Click(); });
  auto* note = new QLabel;
  note->setWordWrap(true);
  bind(refresh, screen.lblNote, note);
  return {.choices = {group.box()}, .note = note, .commands = {}};
}

}  // namespace

MasterWindow::MasterWindow(frmMasterImport& screen)
    : WizardWindow(screen, "ORVA Master Import",
                   [&screen](qt::ScreenRefresh& refresh) { return masterSelection(screen, refresh); }) {}

}  // namespace orva
