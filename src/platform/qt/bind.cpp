#include "platform/qt/bind.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <algorithm>

#include "platform/qt/text.h"

namespace orva::qt {

void showState(const Control& control, QWidget* widget) {
  widget->setEnabled(control.enabled());
  // A widget that was never hidden comes up with its window; showing it before it has a
  // parent would make it a window of its own.
  const bool wasHidden = widget->isHidden() && widget->testAttribute(Qt::WA_WState_ExplicitShowHide);
  if (!control.visible() || wasHidden) widget->setVisible(control.visible());
  widget->setToolTip(toQt(control.toolTip()));
}

namespace {

void showColours(const Control& control, QWidget* widget) {
  QPalette palette = widget->palette();
  if (control.foreColour() != colours::kBlack) palette.setColor(QPalette::WindowText, toQt(control.foreColour()));
  if (control.backColour() != colours::kWhite) {
    palette.setColor(QPalette::Window, toQt(control.backColour()));
    widget->setAutoFillBackground(true);
  }
  widget->setPalette(palette);
}

/// A click that was under way while the screen locked the control must not reach it.
bool takesInput(const Control& control) { return control.enabled() && control.visible(); }

void call(const Handler& handler) {
  if (handler) handler();
}

}  // namespace

void bind(ScreenRefresh& refresh, Label& label, QLabel* widget) {
  widget->setTextFormat(Qt::PlainText);
  refresh.watch(label, widget, [&label, widget] {
    widget->setText(toQt(label.caption()));
    showColours(label, widget);
    showState(label, widget);
  });
}

void bind(ScreenRefresh& refresh, Frame& frame, QWidget* widget) {
  refresh.watch(frame, widget, [&frame, widget] {
    auto* group = dynamic_cast<QGroupBox*>(widget);
    if (group != nullptr && !frame.caption().empty()) group->setTitle(toQt(frame.caption()));
    showState(frame, widget);
  });
}

void bindPages(ScreenRefresh& refresh, const std::vector<Frame*>& frames, QStackedWidget* pages) {
  const auto show = [frames, pages] {
    for (int index = 0; index < pages->count(); ++index) {
      pages->widget(index)->setEnabled(frames[index]->enabled());
    }
    const auto seen = std::find_if(frames.begin(), frames.end(), [](const Frame* frame) { return frame->visible(); });
    const int page = static_cast<int>(seen - frames.begin());
    if (seen == frames.end() || page == pages->currentIndex()) return;
    pages->setCurrentIndex(page);
    pages->currentWidget()->setFocus(Qt::OtherFocusReason);
  };
  for (std::size_t index = 0; index < frames.size(); ++index) {
    refresh.watch(*frames[index], pages->widget(static_cast<int>(index)), show);
  }
}

void bind(ScreenRefresh& refresh, Button& button, QAbstractButton* widget, Handler clicked) {
  if (auto* push = dynamic_cast<QPushButton*>(widget)) push->setAutoDefault(true);
  QObject::connect(widget, &QAbstractButton::clicked, widget, [&button, clicked = std::move(clicked)] {
    if (takesInput(button)) call(clicked);
  });
  refresh.watch(button, widget, [&button, widget] {
    widget->setText(toQt(button.caption()));
    showState(button, widget);
  });
}

void bind(ScreenRefresh& refresh, TickControl& tick, QAbstractButton* widget, Handler clicked) {
  const auto show = [&tick, widget] {
    const QSignalBlocker quiet(widget);
    widget->setText(toQt(tick.caption()));
    const bool exclusive = widget->autoExclusive();
    widget->setAutoExclusive(false);
    widget->setChecked(tick.value());
    widget->setAutoExclusive(exclusive);
    showState(tick, widget);
  };
  QObject::connect(widget, &QAbstractButton::toggled, widget, [&tick](bool checked) {
    if (takesInput(tick)) tick.setValue(checked);
  });
  QObject::connect(widget, &QAbstractButton::clicked, widget, [&tick, show, clicked = std::move(clicked)] {
    if (takesInput(tick)) call(clicked);
    // The screen may have refused the change and kept its old value.
    show();
  });
  refresh.watch(tick, widget, show);
}

void bind(ScreenRefresh& refresh, TextBox& box, QLineEdit* widget, Handler changed) {
  QObject::connect(widget, &QLineEdit::textEdited, widget, [&box, changed = std::move(changed)](const QString& text) {
    box.setText(fromQt(text));
    call(changed);
  });
  refresh.watch(box, widget, [&box, widget] {
    const QString text = toQt(box.text());
    // Setting the same text again would move the cursor of a user who is typing.
    if (widget->text() != text) widget->setText(text);
    showState(box, widget);
  });
}

void bind(ScreenRefresh& refresh, TextBox& box, QLabel* widget) {
  widget->setTextFormat(Qt::PlainText);
  refresh.watch(box, widget, [&box, widget] {
    widget->setText(toQt(box.text()));
    showState(box, widget);
  });
}

namespace {

QString shownText(const QListWidget& widget, int index) { return widget.item(index)->text(); }
QString shownText(const QComboBox& widget, int index) { return widget.itemText(index); }

template <class Widget>
void showItems(const ListBox& list, Widget* widget) {
  bool isSame = widget->count() == list.count();
  for (int index = 0; isSame && index < list.count(); ++index) {
    isSame = shownText(*widget, index) == toQt(list.item(index));
  }
  if (isSame) return;
  widget->clear();
  for (int index = 0; index < list.count(); ++index) widget->addItem(toQt(list.item(index)));
}

}  // namespace

void bind(ScreenRefresh& refresh, ListBox& list, QListWidget* widget, ListBoxHandlers handlers) {
  const auto entered = std::move(handlers.entered);
  QObject::connect(widget, &QListWidget::currentRowChanged, widget,
                   [&list, clicked = std::move(handlers.clicked)](int row) {
                     if (row < 0) return;
                     list.select(row);
                     call(clicked);
                   });
  QObject::connect(widget, &QListWidget::itemActivated, widget, [entered] { call(entered); });
  refresh.watch(list, widget, [&list, widget, hint = handlers.emptyHint] {
    const QSignalBlocker quiet(widget);
    showItems(list, widget);
    widget->setCurrentRow(list.selected());
    if (hint != nullptr) hint->setVisible(list.count() == 0);
    showState(list, widget);
  });
}

void bind(ScreenRefresh& refresh, ListBox& list, QComboBox* widget, Handler chosen) {
  QObject::connect(widget, &QComboBox::activated, widget, [&list, chosen = std::move(chosen)](int index) {
    if (!takesInput(list)) return;
    list.select(index);
    call(chosen);
  });
  refresh.watch(list, widget, [&list, widget] {
    const QSignalBlocker quiet(widget);
    showItems(list, widget);
    widget->setCurrentIndex(list.selected());
    showState(list, widget);
  });
}

void bind(ScreenRefresh& refresh, ProgressBar& bar, QProgressBar* widget) {
  refresh.watch(bar, widget, [&bar, widget] {
    // A bar of 0 of 0 would be drawn as one that runs for ever.
    widget->setRange(0, std::max(1, bar.maximum()));
    widget->setValue(bar.value());
    showState(bar, widget);
  });
}

}  // namespace orva::qt
