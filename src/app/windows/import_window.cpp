#include "app/windows/import_window.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "app/windows/choice_group.h"
#include "platform/qt/bind.h"

namespace orva {
namespace {

QLabel* noteLabel() {
  auto* label = new QLabel;
  label->setWordWrap(true);
  return label;
}

/// Makes what only the transaction wizard has on its selection page.
struct ImportSelection {
  frmImport& screen;
  qt::ScreenRefresh& refresh;

  SelectionParts make() const {
    return {.choices = {kinds(), modes(), ticks()}, .note = note(), .commands = commands()};
  }

 private:
  QWidget* kinds() const {
    ChoiceGroup group("What to import");
    for (const ImportKindNames& names : importKindNames()) {
      const ImportKindId kind = names.id;
      bind(refresh, screen.kindOption(kind), group.add(new QRadioButton),
           [&form = screen, kind] { form.optKind_Click(kind); });
    }
    return group.box();
  }

  QWidget* modes() const {
    ChoiceGroup group("Mode");
    for (const AssetMode mode : {AssetMode::kAdd, AssetMode::kModifyByAssetId, AssetMode::kModifyByPhysicalId}) {
      bind(refresh, screen.modeOption(mode), group.add(new QRadioButton),
           [&form = screen, mode] { form.optMode_Click(mode); });
    }
    bind(refresh, screen.lblOverwrite, group.add(noteLabel()));
    bind(refresh, screen.Frame1, group.box());
    return group.box();
  }

  QWidget* ticks() const {
    struct Row {
      CheckBox* box = nullptr;
      void (frmImport::*handler)() = nullptr;
    };
    const Row rows[] = {{.box = &screen.chkAutoCalcDepRate, .handler = &frmImport::chkAutoCalcDepRate_Click},
                        {.box = &screen.ChkBackdate, .handler = &frmImport::ChkBackdate_Click},
                        {.box = &screen.ChkLeaseHold, .handler = &frmImport::ChkLeaseHold_Click},
                        {.box = &screen.chkMultAssetId, .handler = &frmImport::chkMultAssetId_Click},
                        {.box = &screen.chkShiftedIn, .handler = &frmImport::chkShiftedIn_Click}};
    ChoiceGroup group("Options");
    for (const Row& row : rows) {
      bind(refresh, *row.box, group.add(new QCheckBox), [&form = screen, handler = row.handler] { (form.*handler)(); });
    }
    bind(refresh, screen.cmdCalcLeaseDate, group.add(new QPushButton, Qt::AlignLeft),
         [&form = screen] { form.cmdCalcLeaseDate_Click(); });
    return group.box();
  }

  QWidget* note() const {
    QLabel* label = noteLabel();
    bind(refresh, screen.lblNote, label);
    return label;
  }

  std::vector<QWidget*> commands() const {
    auto* leaseEnd = new QPushButton;
    auto* rateAndMethod = new QPushButton;
    bind(refresh, screen.cmdUpdateLEOD, leaseEnd, [&form = screen] { form.cmdUpdateLEOD_Click(); });
    bind(refresh, screen.cmdUpdateRateMethod, rateAndMethod, [&form = screen] { form.cmdUpdateRateMethod_Click(); });
    return {leaseEnd, rateAndMethod};
  }
};

}  // namespace

ImportWindow::ImportWindow(frmImport& screen)
    : WizardWindow(screen, "ORVA Import", [&screen](qt::ScreenRefresh& refresh) {
        return ImportSelection{.screen = screen, .refresh = refresh}.make();
      }) {}

}  // namespace orva
