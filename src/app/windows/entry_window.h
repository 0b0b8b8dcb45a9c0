#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "platform/qt/screen_refresh.h"
#include "startup/scrEntry.h"

namespace orva {

/// The window of the start screen. `screen` must outlive it.
class EntryWindow : public QWidget {
 public:
  explicit EntryWindow(scrEntry& screen);

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* companies();
  QWidget* codeRow();
  QWidget* importTypes();
  QWidget* buttons();
  /// Enter and Tab of the code box go to the screen; true when `key` was one of them.
  bool passKey(int key);

  scrEntry& screen_;
  QLineEdit* code_ = nullptr;
  QPushButton* open_ = nullptr;
  QPushButton* new_ = nullptr;
  qt::ScreenRefresh refresh_;
};

}  // namespace orva
