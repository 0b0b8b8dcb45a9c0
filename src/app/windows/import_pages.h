#pragma once

#include <QWidget>

#include "platform/qt/screen_refresh.h"
#include "wizard/frmImport.h"

namespace orva {

/// Makes the pages of the import window, each bound to the controls of the screen. Widgets
/// are made in the order in which the Tab key walks them.
struct ImportPages {
  frmImport& screen;
  qt::ScreenRefresh& refresh;

  QWidget* guidelines() const;
  QWidget* selection() const;
  QWidget* results() const;
  QWidget* finish() const;
  /// The row of buttons of each page, below what all pages share.
  QWidget* guidelineButtons() const;
  QWidget* buttons(WizardPage page) const;

 private:
  QWidget* choices() const;
  QWidget* kinds() const;
  QWidget* modes() const;
  QWidget* ticks() const;
  QWidget* fields() const;
  QWidget* workbook() const;
  QWidget* legend() const;
  QWidget* totals() const;
};

}  // namespace orva
