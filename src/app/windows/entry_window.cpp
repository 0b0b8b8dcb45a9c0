#include "app/windows/entry_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/qt/bind.h"
#include "platform/qt/look.h"
#include "platform/qt/text.h"

namespace orva {
namespace {

constexpr const char* kEmptyListHelp =
    "No company yet.\n\nPress New to make one, or name the folder of your ORVA companies in the first line of Orva.ini "
    "and start again.";

}  // namespace

EntryWindow::EntryWindow(scrEntry& screen) : screen_(screen) {
  setWindowTitle(qt::toQt(scrEntry::kCaption));
  setMinimumSize(460, 380);
  auto* path = new QLabel;
  path->setWordWrap(true);
  path->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(18, 16, 18, 14);
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(10);
  grid->addWidget(companies(), 0, 0);
  grid->addWidget(codeRow(), 1, 0);
  grid->addWidget(importTypes(), 2, 0);
  grid->addWidget(buttons(), 0, 1, 3, 1);
  grid->addWidget(path, 3, 0, 1, 2);
  grid->setRowStretch(0, 1);
  grid->setColumnStretch(0, 1);
  bind(refresh_, screen_.lblDataBasePath, path);
  qt::makePrimary(open_);
}

QWidget* EntryWindow::companies() {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel;
  auto* list = new QListWidget;
  auto* hint = new QLabel(kEmptyListHelp);
  hint->setWordWrap(true);
  hint->setAlignment(Qt::AlignCenter);
  hint->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* over = new QVBoxLayout(list->viewport());
  over->addWidget(hint);
  column->addWidget(label);
  column->addWidget(list);
  bind(refresh_, screen_.Label1, label);
  bind(refresh_, screen_.lstCompanies, list,
       {.clicked = [this] { screen_.lstCompanies_Click(); },
        .entered = [this] { screen_.lstCompanies_KeyPress(scrEntry::kEnterKey); },
        .emptyHint = hint});
  setFocusProxy(list);
  return panel;
}

QWidget* EntryWindow::codeRow() {
  auto* panel = new QWidget;
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel;
  code_ = new QLineEdit;
  code_->setMaxLength(10);
  code_->installEventFilter(this);
  row->addWidget(label);
  row->addWidget(code_, 1);
  bind(refresh_, screen_.lblcode, label);
  bind(refresh_, screen_.cmbCocode, code_);
  return panel;
}

QWidget* EntryWindow::importTypes() {
  auto* group = new QGroupBox("Import");
  auto* row = new QHBoxLayout(group);
  auto* transaction = new QRadioButton;
  auto* master = new QRadioButton;
  row->addWidget(transaction);
  row->addWidget(master);
  row->addStretch(1);
  bind(refresh_, screen_.fraType, group);
  bind(refresh_, screen_.optTransaction, transaction, {});
  bind(refresh_, screen_.optMaster, master, {});
  return group;
}

QWidget* EntryWindow::buttons() {
  struct Row {
    Button* button = nullptr;
    void (scrEntry::*handler)() = nullptr;
  };
  const Row rows[] = {{.button = &screen_.cmdOpen, .handler = &scrEntry::cmdOpen_Click},
                      {.button = &screen_.cmdNew, .handler = &scrEntry::cmdNew_Click},
                      {.button = &screen_.cmdDelete, .handler = &scrEntry::cmdDelete_Click},
                      {.button = &screen_.cmdExit, .handler = &scrEntry::cmdExit_Click}};
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, fontMetrics().height() + 6, 0, 0);
  column->setSpacing(8);
  for (const Row& row : rows) {
    auto* widget = new QPushButton;
    widget->setMinimumWidth(104);
    if (row.button == &screen_.cmdOpen) open_ = widget;
    if (row.button == &screen_.cmdNew) new_ = widget;
    if (row.button == &screen_.cmdExit) column->addStretch(1);
    column->addWidget(widget);
    bind(refresh_, *row.button, widget, [this, handler = row.handler] { (screen_.*handler)(); });
  }
  return panel;
}

void EntryWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  screen_.cmdExit_Click();
}

bool EntryWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != code_) return QWidget::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
      // The code box is seen while a new code is entered.
      qt::makePrimary(new_, event->type() == QEvent::Show);
      qt::makePrimary(open_, event->type() == QEvent::Hide);
      return false;
    case QEvent::KeyPress:
      return passKey(static_cast<QKeyEvent*>(event)->key());
    default:
      return false;
  }
}

bool EntryWindow::passKey(int key) {
  if (key == Qt::Key_Tab) {
    screen_.cmbCocode_KeyPress(scrEntry::kTabKey);
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    screen_.cmbCocode_KeyPress(scrEntry::kEnterKey);
  } else {
    return false;
  }
  return true;
}

}  // namespace orva
