#include "app/windows/import_window.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTreeView>

#include "app/windows/entry_window.h"
#include "platform/qt/qt_test.h"
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

TEST_F(ImportWindowTest, NothingIsCutAtTheSmallestSize) {
  window_.resize(window_.minimumSize());
  for (const WizardPage shown : {WizardPage::kSelection, WizardPage::kResults, WizardPage::kFinish}) {
    for (const WizardPage each :
         {WizardPage::kGuidelines, WizardPage::kSelection, WizardPage::kResults, WizardPage::kFinish}) {
      wizard_.screen.pageFrame(each).setVisible(each == shown);
    }
    handleEvents();
    EXPECT_EQ(window_.size(), window_.minimumSize()) << "the page needs more room than the window";
    for (const auto* widget : window_.findChildren<QPushButton*>()) {
      if (!widget->isVisible()) continue;
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->text().toStdString();
    }
  }
}

}  // namespace
}  // namespace orva
