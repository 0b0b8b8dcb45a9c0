#pragma once

#include <QWidget>
#include <vector>

#include "platform/qt/screen_refresh.h"
#include "wizard/import_wizard.h"

namespace orva {

/// What the selection page of one wizard has beside what every wizard has.
struct SelectionParts {
  /// Groups of choices, one below the other; the keyboard starts at the focus proxy of the first.
  std::vector<QWidget*> choices;
  /// Below the list of fields; null for none.
  QWidget* note = nullptr;
  /// Buttons beside those of the workbook.
  std::vector<QWidget*> commands;
};

/// Makes the pages of a wizard's window, each bound to the controls of the screen. Widgets
/// are put into their window in the order in which the Tab key walks them.
struct WizardPages {
  ImportWizard& screen;
  qt::ScreenRefresh& refresh;

  QWidget* guidelines() const;
  QWidget* selection(const SelectionParts& parts) const;
  QWidget* results() const;
  QWidget* finish() const;
  /// The row of buttons of each page, below what all pages share.
  QWidget* guidelineButtons() const;
  QWidget* buttons(WizardPage page) const;

 private:
  QWidget* fields(QWidget* note) const;
  QWidget* workbook(const std::vector<QWidget*>& commands) const;
  QWidget* legend() const;
  QWidget* totals() const;
  QWidget* unknownMasters() const;
};

}  // namespace orva
