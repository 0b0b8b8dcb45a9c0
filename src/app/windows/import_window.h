#pragma once

#include <QMainWindow>

#include "platform/qt/screen_refresh.h"
#include "wizard/frmImport.h"

namespace orva {

/// The window of the transaction wizard. `screen` must outlive it. A wish to close goes to the
/// screen, which ends a run after its current row; whoever shows the window takes it away.
class ImportWindow : public QMainWindow {
 public:
  explicit ImportWindow(frmImport& screen);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* progressStrip();
  void showStatusBar();

  frmImport& screen_;
  qt::ScreenRefresh refresh_;
};

}  // namespace orva
