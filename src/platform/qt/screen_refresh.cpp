#include "platform/qt/screen_refresh.h"

#include <QMetaObject>

namespace orva::qt {

ScreenRefresh::~ScreenRefresh() {
  for (const auto& watched : watched_) {
    watched->control->observe(nullptr);
    watched->control->onFocusRequest(nullptr);
  }
}

void ScreenRefresh::watch(Control& control, QWidget* widget, std::function<void()> refresh) {
  watched_.push_back(std::make_unique<Watched>(Watched{&control, std::move(refresh)}));
  Watched* watched = watched_.back().get();
  widget->setObjectName(QString::fromStdString(control.name()));
  control.observe([this, watched] {
    if (watched->changed) return;
    watched->changed = true;
    changed_.push_back(watched);
    schedule();
  });
  control.onFocusRequest([this, widget] {
    focusWanted_ = widget;
    schedule();
  });
  watched->refresh();
}

void ScreenRefresh::schedule() {
  if (scheduled_) return;
  scheduled_ = true;
  QMetaObject::invokeMethod(
      &context_, [this] { flush(); }, Qt::QueuedConnection);
}

void ScreenRefresh::flush() {
  scheduled_ = false;
  std::vector<Watched*> changed;
  changed.swap(changed_);
  for (Watched* watched : changed) {
    watched->changed = false;
    watched->refresh();
  }
  if (focusWanted_) focusWanted_->setFocus(Qt::OtherFocusReason);
  focusWanted_ = nullptr;
}

}  // namespace orva::qt
