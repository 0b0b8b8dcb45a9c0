#include "app/windows/wizard_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/bind.h"

namespace orva {
namespace {

constexpr WizardPage kLaterPages[] = {WizardPage::kSelection, WizardPage::kResults, WizardPage::kFinish};
/// Height that the desktop needs above a window.
constexpr int kTitleBar = 40;

}  // namespace

WizardWindow::WizardWindow(ImportWizard& screen, const QString& title, const MakeSelection& makeSelection)
    : screen_(screen) {
  setWindowTitle(title);
  setMinimumSize(1020, 600);
  const QSize room = QGuiApplication::primaryScreen()->availableSize();
  resize(std::min(1120, room.width()), std::min(780, room.height() - kTitleBar));
  const WizardPages maker{.screen = screen_, .refresh = refresh_};
  auto* pages = new QStackedWidget;
  auto* buttons = new QStackedWidget;
  for (QWidget* page : {maker.guidelines(), maker.selection(makeSelection(refresh_)), maker.results(), maker.finish()})
    pages->addWidget(page);
  buttons->addWidget(maker.guidelineButtons());
  for (const WizardPage page : kLaterPages) buttons->addWidget(maker.buttons(page));
  buttons->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  QWidget* strip = progressStrip();
  auto* centre = new QWidget;
  auto* column = new QVBoxLayout(centre);
  column->setContentsMargins(16, 12, 16, 8);
  column->addWidget(pages, 1);
  column->addWidget(strip);
  column->addWidget(buttons);
  setCentralWidget(centre);
  showStatusBar();
  const auto follow = [buttons, strip](int page) {
    buttons->setCurrentIndex(page);
    strip->setVisible(page >= static_cast<int>(WizardPage::kResults));
  };
  QObject::connect(pages, &QStackedWidget::currentChanged, this, follow);
  follow(pages->currentIndex());
  pages->widget(0)->setFocusProxy(buttons->widget(0));
  bindPages(refresh_, {&screen_.fmHome, &screen_.fmSelection, &screen_.fmResults, &screen_.fmFinish}, pages);
  pages->currentWidget()->setFocus();
}

/// Below the pages, because rows are read and checked on one page and posted on the next.
QWidget* WizardWindow::progressStrip() {
  auto* strip = new QWidget;
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 2, 0, 2);
  auto* status = new QLabel;
  auto* current = new QLabel;
  auto* outcome = new QLabel;
  auto* bar = new QProgressBar;
  QFont bold = status->font();
  bold.setBold(true);
  status->setFont(bold);
  bar->setFixedWidth(260);
  row->addWidget(status);
  row->addSpacing(16);
  row->addWidget(current, 1);
  row->addWidget(outcome);
  row->addWidget(bar);
  strip->setMinimumHeight(bar->sizeHint().height() + 4);
  bind(refresh_, screen_.lblStatus, status);
  bind(refresh_, screen_.lblCurrentStatus, current);
  bind(refresh_, screen_.lblMsg2, outcome);
  bind(refresh_, screen_.ProgressBar1, bar);
  return strip;
}

void WizardWindow::showStatusBar() {
  auto* version = new QLabel;
  auto* company = new QLabel;
  version->setContentsMargins(10, 0, 10, 0);
  company->setContentsMargins(10, 0, 10, 0);
  statusBar()->addWidget(version, 1);
  statusBar()->addPermanentWidget(company);
  bind(refresh_, screen_.lblVersion, version);
  bind(refresh_, screen_.lblCompany, company);
}

void WizardWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  screen_.requestClose();
}

}  // namespace orva
