#pragma once

#include <QDialog>

#include "platform/qt/screen_refresh.h"
#include "updates/bulk_update_screen.h"

namespace orva {

/// The window of a bulk update, in front of the wizard that opened it. `screen` must outlive it. A wish to
/// close goes to the screen; whoever shows the window takes it away.
class BulkUpdateWindow : public QDialog {
 public:
  BulkUpdateWindow(BulkUpdateScreen& screen, QWidget* parent);

  void reject() override { screen_.requestClose(); }

 private:
  QLayout* workbookRow();
  QLayout* progressRow();
  QLayout* buttonRow();

  BulkUpdateScreen& screen_;
  qt::ScreenRefresh refresh_;
};

}  // namespace orva
