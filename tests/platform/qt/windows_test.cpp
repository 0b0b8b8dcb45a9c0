#include "app/windows/import_window.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTreeView>
#include <map>

#include "app/windows/bulk_update_window.h"
#include "app/windows/master_window.h"
#include "imports/asset/lease_dates.h"
#include "masters/real_company.h"
#include "platform/qt/qt_test.h"
#include "updates/frmUpdateLEOD.h"
#include "updates/frmUpdateRateAndMethod.h"
#include "wizard/wizard_screen.h"

namespace orva {
namespace {

class ImportWindowTest : public testing::Test {
 protected:
  ImportWindowTest() {
    window_.show();
    handleEvents();
  }

  QPushButton* button(const QString& caption) const {
    for (auto* widget : window_.findChildren<QPushButton*>()) {
      if (widget->text() == caption && widget->isVisible()) return widget;
    }
    ADD_FAILURE() << "no button " << caption.toStdString();
    return nullptr;
  }
  void press(const QString& caption) {
    if (auto* widget = button(caption)) widget->click();
    handleEvents();
  }
  int page() const { return window_.findChild<QStackedWidget*>()->currentIndex(); }

  WizardScreen wizard_;
  ImportWindow window_{wizard_.screen};
};

TEST_F(ImportWindowTest, ButtonsWalkThroughTheWholeImport) {
  press("Next");
  press("Next");
  press("Next");
  ASSERT_EQ(page(), 1) << "the third section leads to the selection";
  wizard_.screen.optKind_Click(ImportKindId::kSale);
  wizard_.tick("Remarks");
  wizard_.putSales({"fine", "bad"});
  press("&Next");
  ASSERT_EQ(page(), 2);
  EXPECT_FALSE(button("&Next")->isEnabled());
  auto* grid = window_.findChild<QTableView*>("grid1");
  ASSERT_EQ(grid->model()->rowCount(), 2);
  press("&Show only Errors");
  EXPECT_EQ(grid->model()->rowCount(), 1);
  grid->setCurrentIndex(grid->model()->index(0, 5));
  EXPECT_EQ(wizard_.screen.lblErrormsg.caption(), "bad is no remark") << "the row's own number reached the screen";

  wizard_.putSales({"fine", "good"});
  press("Continue..");
  press("&Next");
  press("Finish");
  EXPECT_EQ(wizard_.posted(), (std::vector<std::string>{"A1", "A2"}));
}

TEST_F(ImportWindowTest, ClosingDuringPostingStopsAfterTheRow) {
  wizard_.validateSales({"1", "2", "3", "4", "5"});
  wizard_.screen.cmdNext_Click(WizardPage::kResults);
  bool stayed = false;
  wizard_.fakes.eventLoop.actAtYield(3, [&] {
    window_.close();
    stayed = window_.isVisible() && wizard_.closed == 0;
  });
  wizard_.screen.cmdContinue_Click(WizardPage::kFinish);
  EXPECT_TRUE(stayed) << "a run needs its window until it has stopped";
  EXPECT_EQ(wizard_.closed, 1);
  EXPECT_GT(wizard_.posted().size(), 0U);
  EXPECT_LT(wizard_.posted().size(), 5U);
}

TEST_F(ImportWindowTest, ClosingAtRestAsksTheScreenOnce) {
  window_.close();
  EXPECT_EQ(wizard_.closed, 1);
  EXPECT_TRUE(window_.isVisible()) << "whoever shows the window takes it away";
}

TEST_F(ImportWindowTest, HeadersNotFoundAreMarkedInTheList) {
  wizard_.choose(ImportKindId::kSale);
  wizard_.putRows({{"ASSETID", "InvoiceNo"}, {"A1", "7"}});
  wizard_.read();
  handleEvents();
  const auto* fields = window_.findChild<QTreeView*>()->model();
  const int line = wizard_.lineOf("SaleDate");
  EXPECT_EQ(fields->index(line, 1).data(Qt::ForegroundRole).value<QBrush>().color(), QColor(0, 0, 255));
  EXPECT_TRUE(fields->index(line, 1).data(Qt::FontRole).value<QFont>().bold());
}

constexpr WizardPage kPages[] = {WizardPage::kGuidelines, WizardPage::kSelection, WizardPage::kResults,
                                 WizardPage::kFinish};

void showPage(ImportWizard& screen, WizardPage page) {
  for (const WizardPage each : kPages) screen.pageFrame(each).setVisible(each == page);
  handleEvents();
}

template <class Widget>
std::vector<Widget*> visible(const QWidget& window) {
  std::vector<Widget*> widgets;
  for (auto* widget : window.findChildren<Widget*>()) {
    if (widget->isVisible()) widgets.push_back(widget);
  }
  return widgets;
}

/// Widgets that the Tab key reaches, in its order.
QStringList tabOrder(QWidget& window) {
  QStringList names;
  for (QWidget* widget = window.nextInFocusChain(); widget != &window; widget = widget->nextInFocusChain()) {
    const bool isReached = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr;
    if (isReached && widget->isVisible() && widget->isEnabled()) names << widget->objectName();
  }
  return names;
}

void expectNothingCut(const QWidget& window) {
  for (const auto* widget : visible<QPushButton>(window)) {
    EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->text().toStdString();
  }
  for (const auto* label : visible<QLabel>(window)) {
    const int wanted = label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().width();
    EXPECT_GE(label->wordWrap() ? label->height() : label->width(), wanted) << label->text().toStdString();
  }
}

void expectNothingCut(ImportWizard& screen, QWidget& window) {
  window.resize(window.minimumSize());
  for (const WizardPage page : kPages) {
    showPage(screen, page);
    EXPECT_EQ(window.size(), window.minimumSize()) << "the page needs more room than the window";
    expectNothingCut(window);
  }
}

TEST_F(ImportWindowTest, NothingIsCutAtTheSmallestSize) {
  wizard_.screen.lblBlue.setVisible(true);
  wizard_.screen.lblRed.setVisible(true);
  for (Label* label : {&wizard_.screen.lblYellow, &wizard_.screen.lblMsgYellow, &wizard_.screen.lblUnknown}) {
    label->setVisible(true);
  }
  wizard_.screen.lstUnknown.setVisible(true);
  expectNothingCut(wizard_.screen, window_);
}

TEST_F(ImportWindowTest, NoShortcutMeansTwoThingsOnAPage) {
  for (const bool all : {false, true}) {
    wizard_.screen.CmdSelErrors.setCaption(all ? "&All" : "&Show only Errors");
    for (const WizardPage page : kPages) {
      showPage(wizard_.screen, page);
      std::map<QString, QString> shortcuts;
      for (const auto* button : visible<QAbstractButton>(window_)) {
        const QString key = button->shortcut().toString();
        if (key.isEmpty()) continue;
        EXPECT_TRUE(shortcuts.emplace(key, button->text()).second)
            << key.toStdString() << ": " << button->text().toStdString() << " and " << shortcuts[key].toStdString();
      }
    }
  }
}

TEST_F(ImportWindowTest, TabWalksThePageFromTheChoiceToTheButtons) {
  wizard_.choose(ImportKindId::kAcquired);
  handleEvents();
  QStringList order = tabOrder(window_);
  EXPECT_EQ(window_.focusWidget()->objectName(), "optAsset");
  EXPECT_TRUE(order.removeAll("") == 0) << "every widget that takes the keyboard belongs to a control";
  const QStringList after = order.mid(order.indexOf("lstFields"));
  EXPECT_EQ(order.first(), "optAsset");
  EXPECT_EQ(after, (QStringList{"lstFields", "cmdSelectAll", "txtExcel", "cmdExcel", "cmdRefresh", "cmdExport",
                                "cmdHome", "cmdBack", "cmdNext", "cmdClose"}));
}

TEST_F(ImportWindowTest, SpaceTicksTheLineUnderTheCursor) {
  wizard_.choose(ImportKindId::kSale);
  handleEvents();
  auto* list = window_.findChild<QTreeView*>("lstFields");
  const int line = wizard_.lineOf("Remarks");
  list->setCurrentIndex(list->model()->index(line, 3));
  QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
  QCoreApplication::sendEvent(list, &space);
  EXPECT_TRUE(wizard_.isTicked("Remarks"));
}

TEST_F(ImportWindowTest, TheSaveGridGoesWhenAllIsPosted) {
  wizard_.validateSales({"1", "2"});
  handleEvents();
  press("&Next");
  auto* grid = window_.findChild<QTableView*>("flxSave");
  EXPECT_TRUE(grid->isVisible());
  press("Finish");
  EXPECT_FALSE(grid->isVisible());
}

TEST(ImportWindow, CalcLeaseEndDateAsksAndTellsHowManyAssetsChanged) {
  RealCompany company;
  company.prepare({"insert into FADefinition (DefCode, AssetLife) values ('PM', 12)",
                   "insert into Asset (Assetid, DefCode, UseDate) values ('A1', 'PM', #01/31/2005#)"});
  FakeDialogs& dialogs = company.fakes.dialogs;
  const ImportRegistry registry;
  frmImport screen(company.fakes.services, company.company, registry,
                   {.onCalcLeaseDate = [&] { calculateLeaseDates(dialogs, company.company); }});
  screen.Load();
  ImportWindow window(screen);
  window.show();
  screen.cmdSkip_Click();
  handleEvents();
  auto* button = window.findChild<QPushButton*>("cmdCalcLeaseDate");
  EXPECT_EQ(button->text(), "Calc Lease End Date");
  const auto tickLeaseHold = [&] {
    window.findChild<QAbstractButton*>("ChkLeaseHold")->click();
    handleEvents();
    return button->isEnabled();
  };
  EXPECT_FALSE(button->isEnabled());
  screen.cmdCalcLeaseDate_Click();
  EXPECT_TRUE(dialogs.messages.empty()) << "the box is not ticked";
  EXPECT_TRUE(tickLeaseHold());
  dialogs.defaultAnswer = Answer::kNo;
  button->click();
  ASSERT_EQ(dialogs.messages.size(), 1U);
  EXPECT_EQ(dialogs.messages[0].buttons, MessageButtons::kYesNo);
  EXPECT_NE(dialogs.lastText().find("Do you want to continue?"), std::string::npos);
  EXPECT_EQ(company.rows("select LeaseDate from Asset"), std::vector<std::string>{""});
  dialogs.defaultAnswer = Answer::kYes;
  for (const char* told : {"1 asset was changed.", "0 assets were changed."}) {
    button->click();
    EXPECT_EQ(dialogs.lastText(), told);
    EXPECT_EQ(company.rows("select LeaseDate from Asset"), std::vector<std::string>{"31/01/2006"});
  }
  EXPECT_FALSE(tickLeaseHold());
}

TEST(MasterWindow, ReadsTheMasterThatIsChosen) {
  WizardScreen company;
  company.database->answer("C01ORVA", "select MName from MisMaster",
                           {.columns = {"MName"}, .rows = {{Value("Project")}, {Value("Grant")}}});
  frmMasterImport screen(company.fakes.services, company.company);
  screen.Load();
  MasterWindow window(screen);
  window.show();
  screen.cmdSkip_Click();
  handleEvents();
  auto* masters = window.findChild<QComboBox*>("cmbMisc");
  EXPECT_FALSE(masters->isEnabled());
  window.findChild<QAbstractButton*>("optMisc")->click();
  handleEvents();
  EXPECT_TRUE(masters->isEnabled());
  EXPECT_EQ(masters->currentText(), "Project");
  masters->setCurrentIndex(1);
  Q_EMIT masters->activated(1);
  EXPECT_EQ(screen.choice().master, "M2");
  EXPECT_EQ(window.findChild<QTreeView*>("lstFields")->model()->rowCount(), 2);
  window.findChild<QAbstractButton*>("optDept")->click();
  handleEvents();
  EXPECT_FALSE(masters->isEnabled());
  EXPECT_EQ(screen.choice().kind, MasterKindId::kDepartment);
  const QStringList order = tabOrder(window);
  EXPECT_EQ(order.mid(order.indexOf("lstFields")),
            (QStringList{"lstFields", "cmdSelectAll", "txtExcel", "cmdExcel", "cmdRefresh", "cmdExport", "cmdHome",
                         "cmdBack", "cmdNext", "cmdClose"}));
  // Its note is the longest.
  window.findChild<QAbstractButton*>("OptUser")->click();
  expectNothingCut(screen, window);
  window.close();
  EXPECT_TRUE(window.isVisible()) << "whoever shows the window takes it away";
}

TEST(BulkUpdateWindow, ShowsEverythingAndTabWalksToTheRun) {
  WizardScreen company;
  frmUpdateRateAndMethod screen(company.fakes.services, company.company);
  BulkUpdateWindow window(screen, nullptr);
  window.resize(window.minimumSize());
  window.show();
  handleEvents();
  expectNothingCut(window);
  EXPECT_EQ(tabOrder(window), (QStringList{"txtExcel", "btnBrowse", "btnImport", "btnImportExit"}));
}

TEST(BulkUpdateWindow, EnterRunsAndEscapeCloses) {
  WizardScreen company;
  frmUpdateLEOD screen(company.fakes.services, company.company);
  int closed = 0;
  screen.onClose([&] { ++closed; });
  BulkUpdateWindow window(screen, nullptr);
  window.show();
  handleEvents();
  const auto press = [&](int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(window.findChild<QLineEdit*>("txtExcel"), &event);
    handleEvents();
  };
  press(Qt::Key_Return);
  EXPECT_EQ(company.fakes.dialogs.texts(), std::vector<std::string>{"Please select an excel file"});
  EXPECT_EQ(closed, 0);
  press(Qt::Key_Escape);
  EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace orva
