#pragma once

#include <QGroupBox>
#include <QVBoxLayout>

namespace orva {

/// A titled box with one choice below the other. The keyboard enters at the first.
class ChoiceGroup {
 public:
  explicit ChoiceGroup(const QString& title) : box_(new QGroupBox(title)), column_(new QVBoxLayout(box_)) {
    column_->setSpacing(3);
  }

  QGroupBox* box() const { return box_; }
  template <class Widget>
  Widget* add(Widget* widget, Qt::Alignment alignment = {}) {
    if (column_->isEmpty()) box_->setFocusProxy(widget);
    column_->addWidget(widget, 0, alignment);
    return widget;
  }

 private:
  QGroupBox* box_;
  QVBoxLayout* column_;
};

}  // namespace orva
