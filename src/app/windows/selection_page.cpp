#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTreeView>
#include <QVBoxLayout>

#include "app/windows/wizard_pages.h"
#include "platform/qt/bind.h"

namespace orva {
namespace {

/// Scrolls in a low window; otherwise all choices are seen at once.
QWidget* choicesPanel(const std::vector<QWidget*>& groups) {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 4, 0);
  column->setSpacing(6);
  for (QWidget* group : groups) column->addWidget(group);
  column->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(panel);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setFixedWidth(panel->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width());
  scroll->setFocusProxy(groups.front());
  return scroll;
}

}  // namespace

QWidget* WizardPages::selection(const SelectionParts& parts) const {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  row->setSpacing(14);
  QWidget* left = choicesPanel(parts.choices);
  row->addWidget(left);
  row->addWidget(fields(parts.note), 1);
  column->addLayout(row, 1);
  column->addWidget(workbook(parts.commands));
  page->setFocusProxy(left);
  return page;
}

QWidget* WizardPages::fields(QWidget* note) const {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  auto* list = new QTreeView;
  list->setAlternatingRowColors(true);
  auto* selectAll = new QPushButton;
  auto* blue = new QLabel;
  auto* red = new QLabel;
  auto* below = new QHBoxLayout;
  below->addWidget(selectAll);
  below->addSpacing(12);
  below->addWidget(blue);
  below->addSpacing(12);
  below->addWidget(red);
  below->addStretch(1);
  column->addWidget(list, 1);
  column->addLayout(below);
  if (note != nullptr) column->addWidget(note);
  bind(refresh, screen.lstFields, list,
       [&form = screen](int line, bool ticked) { form.lstFields_ItemCheck(line, ticked); });
  bind(refresh, screen.cmdSelectAll, selectAll, [&form = screen] { form.cmdSelectAll_Click(); });
  bind(refresh, screen.lblBlue, blue);
  bind(refresh, screen.lblRed, red);
  return panel;
}

QWidget* WizardPages::workbook(const std::vector<QWidget*>& commands) const {
  struct Row {
    Button* button = nullptr;
    void (ImportWizard::*handler)() = nullptr;
  };
  const Row rows[] = {{.button = &screen.cmdExcel, .handler = &ImportWizard::cmdExcel_Click},
                      {.button = &screen.cmdRefresh, .handler = &ImportWizard::cmdRefresh_Click},
                      {.button = &screen.cmdExport, .handler = &ImportWizard::cmdExport_Click}};
  auto* panel = new QWidget;
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 4, 0, 0);
  auto* label = new QLabel;
  auto* path = new QLineEdit;
  label->setBuddy(path);
  row->addWidget(label);
  row->addWidget(path, 1);
  for (const Row& item : rows) {
    auto* button = new QPushButton;
    row->addWidget(button);
    bind(refresh, *item.button, button, [&form = screen, handler = item.handler] { (form.*handler)(); });
    if (item.button == &screen.cmdExcel) button->setAccessibleName("Browse");
  }
  for (QWidget* command : commands) row->addWidget(command);
  bind(refresh, screen.lblExcel, label);
  bind(refresh, screen.txtExcel, path);
  return panel;
}

}  // namespace orva
