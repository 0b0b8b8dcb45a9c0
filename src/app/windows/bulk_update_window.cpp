#include "app/windows/bulk_update_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/qt/bind.h"
#include "platform/qt/look.h"
#include "platform/qt/text.h"

namespace orva {

BulkUpdateWindow::BulkUpdateWindow(BulkUpdateScreen& screen, QWidget* parent) : QDialog(parent), screen_(screen) {
  setWindowTitle(qt::toQt(screen_.caption()));
  setWindowModality(Qt::ApplicationModal);
  setMinimumSize(620, 220);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(18, 16, 18, 14);
  column->setSpacing(10);
  auto* columns = new QLabel;
  columns->setWordWrap(true);
  column->addWidget(columns);
  bind(refresh_, screen_.lblColumns, columns);
  column->addLayout(workbookRow());
  column->addLayout(progressRow());
  column->addStretch(1);
  column->addLayout(buttonRow());
}

QLayout* BulkUpdateWindow::workbookRow() {
  auto* row = new QHBoxLayout;
  auto* label = new QLabel;
  auto* path = new QLineEdit;
  auto* browse = new QPushButton;
  label->setBuddy(path);
  row->addWidget(label);
  row->addWidget(path, 1);
  row->addWidget(browse);
  bind(refresh_, screen_.lblExcel, label);
  bind(refresh_, screen_.txtExcel, path);
  bind(refresh_, screen_.btnBrowse, browse, [this] { screen_.btnBrowse_Click(); });
  return row;
}

QLayout* BulkUpdateWindow::progressRow() {
  auto* row = new QHBoxLayout;
  auto* status = new QLabel;
  auto* current = new QLabel;
  auto* bar = new QProgressBar;
  bar->setFixedWidth(180);
  row->addWidget(status);
  row->addWidget(current, 1);
  row->addWidget(bar);
  // The window keeps its height when the bar comes and goes.
  row->addItem(new QSpacerItem(0, bar->sizeHint().height(), QSizePolicy::Fixed, QSizePolicy::Fixed));
  bind(refresh_, screen_.lblStatus, status);
  bind(refresh_, screen_.lblCurrentStatus, current);
  bind(refresh_, screen_.ProgressBar1, bar);
  return row;
}

QLayout* BulkUpdateWindow::buttonRow() {
  auto* row = new QHBoxLayout;
  auto* import = new QPushButton;
  auto* leave = new QPushButton;
  row->addStretch(1);
  row->addWidget(import);
  row->addWidget(leave);
  bind(refresh_, screen_.btnImport, import, [this] { screen_.btnImport_Click(); });
  bind(refresh_, screen_.btnImportExit, leave, [this] { screen_.btnImportExit_Click(); });
  qt::makePrimary(import);
  // Enter in the path means the run, not the first button of the window.
  import->setDefault(true);
  return row;
}

}  // namespace orva
