#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "platform/controls.h"

namespace orva::qt {

/// Carries changes of a screen's controls to its widgets. A change only marks the
/// control; the widgets are brought up to date together when the program next handles
/// events, so that a run over thousands of rows costs no more than what is painted.
/// The controls must outlive this object, which stops observing them when it goes.
class ScreenRefresh {
 public:
  ScreenRefresh() = default;
  ScreenRefresh(const ScreenRefresh&) = delete;
  ScreenRefresh& operator=(const ScreenRefresh&) = delete;
  ~ScreenRefresh();

  /// `refresh` copies the control's state to `widget`, which gets the control's name; it runs once at once. The
  /// control's wish for the focus goes to `widget` after the next refresh, when it can be seen.
  void watch(Control& control, QWidget* widget, std::function<void()> refresh);
  /// Brings every changed widget up to date now.
  void flush();

 private:
  struct Watched {
    Control* control = nullptr;
    std::function<void()> refresh;
    bool changed = false;
  };

  void schedule();

  QObject context_;
  std::vector<std::unique_ptr<Watched>> watched_;
  std::vector<Watched*> changed_;
  QPointer<QWidget> focusWanted_;
  bool scheduled_ = false;
};

}  // namespace orva::qt
