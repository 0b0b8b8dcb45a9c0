#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTreeView>
#include <QVBoxLayout>

#include "app/windows/import_pages.h"
#include "platform/qt/bind.h"

namespace orva {
namespace {

QLabel* noteLabel() {
  auto* label = new QLabel;
  label->setWordWrap(true);
  return label;
}

QVBoxLayout* groupColumn(QGroupBox* group) {
  auto* column = new QVBoxLayout(group);
  column->setSpacing(5);
  return column;
}

}  // namespace

QWidget* ImportPages::selection() const {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  row->setSpacing(14);
  QWidget* left = choices();
  row->addWidget(left);
  row->addWidget(fields(), 1);
  column->addLayout(row, 1);
  column->addWidget(workbook());
  page->setFocusProxy(left);
  return page;
}

/// Scrolls in a low window; otherwise all choices are seen at once.
QWidget* ImportPages::choices() const {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 4, 0);
  column->setSpacing(6);
  QWidget* kindGroup = kinds();
  column->addWidget(kindGroup);
  column->addWidget(modes());
  column->addWidget(ticks());
  column->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(panel);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setFixedWidth(panel->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width());
  scroll->setFocusProxy(kindGroup);
  return scroll;
}

QWidget* ImportPages::kinds() const {
  auto* group = new QGroupBox("What to import");
  auto* column = groupColumn(group);
  for (const ImportKindNames& names : importKindNames()) {
    const ImportKindId kind = names.id;
    auto* button = new QRadioButton;
    column->addWidget(button);
    bind(refresh, screen.kindOption(kind), button, [&form = screen, kind] { form.optKind_Click(kind); });
    if (kind == ImportKindId::kAcquired) group->setFocusProxy(button);
  }
  return group;
}

QWidget* ImportPages::modes() const {
  auto* group = new QGroupBox("Mode");
  auto* column = groupColumn(group);
  for (const AssetMode mode : {AssetMode::kAdd, AssetMode::kModifyByAssetId, AssetMode::kModifyByPhysicalId}) {
    auto* button = new QRadioButton;
    column->addWidget(button);
    bind(refresh, screen.modeOption(mode), button, [&form = screen, mode] { form.optMode_Click(mode); });
  }
  QLabel* note = noteLabel();
  column->addWidget(note);
  bind(refresh, screen.lblOverwrite, note);
  bind(refresh, screen.Frame1, group);
  return group;
}

QWidget* ImportPages::ticks() const {
  struct Row {
    CheckBox* box = nullptr;
    void (frmImport::*handler)() = nullptr;
  };
  const Row rows[] = {{.box = &screen.chkAutoCalcDepRate, .handler = &frmImport::chkAutoCalcDepRate_Click},
                      {.box = &screen.ChkBackdate, .handler = &frmImport::ChkBackdate_Click},
                      {.box = &screen.ChkLeaseHold, .handler = &frmImport::ChkLeaseHold_Click},
                      {.box = &screen.chkMultAssetId, .handler = &frmImport::chkMultAssetId_Click},
                      {.box = &screen.chkShiftedIn, .handler = &frmImport::chkShiftedIn_Click}};
  auto* group = new QGroupBox("Options");
  auto* column = groupColumn(group);
  for (const Row& row : rows) {
    auto* box = new QCheckBox;
    column->addWidget(box);
    bind(refresh, *row.box, box, [&form = screen, handler = row.handler] { (form.*handler)(); });
  }
  auto* lease = new QPushButton;
  column->addWidget(lease, 0, Qt::AlignLeft);
  bind(refresh, screen.cmdCalcLeaseDate, lease, [&form = screen] { form.cmdCalcLeaseDate_Click(); });
  return group;
}

QWidget* ImportPages::fields() const {
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
  QLabel* note = noteLabel();
  column->addWidget(list, 1);
  column->addLayout(below);
  column->addWidget(note);
  bind(refresh, screen.lstFields, list,
       [&form = screen](int line, bool ticked) { form.lstFields_ItemCheck(line, ticked); });
  bind(refresh, screen.cmdSelectAll, selectAll, [&form = screen] { form.cmdSelectAll_Click(); });
  bind(refresh, screen.lblBlue, blue);
  bind(refresh, screen.lblRed, red);
  bind(refresh, screen.lblNote, note);
  return panel;
}

QWidget* ImportPages::workbook() const {
  struct Row {
    Button* button = nullptr;
    void (frmImport::*handler)() = nullptr;
  };
  const Row rows[] = {{.button = &screen.cmdExcel, .handler = &frmImport::cmdExcel_Click},
                      {.button = &screen.cmdRefresh, .handler = &frmImport::cmdRefresh_Click},
                      {.button = &screen.cmdExport, .handler = &frmImport::cmdExport_Click},
                      {.button = &screen.cmdUpdateLEOD, .handler = &frmImport::cmdUpdateLEOD_Click},
                      {.button = &screen.cmdUpdateRateMethod, .handler = &frmImport::cmdUpdateRateMethod_Click}};
  auto* panel = new QWidget;
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 4, 0, 0);
  auto* label = new QLabel;
  auto* path = new QLineEdit;
  row->addWidget(label);
  row->addWidget(path, 1);
  for (const Row& item : rows) {
    auto* button = new QPushButton;
    row->addWidget(button);
    bind(refresh, *item.button, button, [&form = screen, handler = item.handler] { (form.*handler)(); });
    if (item.button == &screen.cmdExcel) button->setAccessibleName("Browse");
  }
  bind(refresh, screen.lblExcel, label);
  bind(refresh, screen.txtExcel, path);
  return panel;
}

}  // namespace orva
