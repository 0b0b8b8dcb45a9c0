#pragma once

#include <QMainWindow>
#include <functional>

#include "app/windows/wizard_pages.h"
#include "platform/qt/screen_refresh.h"
#include "wizard/import_wizard.h"

namespace orva {

/// The window of an import wizard. `screen` must outlive it. A wish to close goes to the
/// screen, which ends a run after its current row; whoever shows the window takes it away.
class WizardWindow : public QMainWindow {
 public:
  /// Makes the widgets of the selection page that only this wizard has.
  using MakeSelection = std::function<SelectionParts(qt::ScreenRefresh& refresh)>;

  WizardWindow(ImportWizard& screen, const QString& title, const MakeSelection& makeSelection);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* progressStrip();
  void showStatusBar();

  ImportWizard& screen_;
  qt::ScreenRefresh refresh_;
};

}  // namespace orva
