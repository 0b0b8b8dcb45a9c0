#include "platform/qt/bind.h"

#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_test.h"

namespace orva::qt {
namespace {

TEST(BindTest, ControlsAndWidgetsFollowEachOther) {
  Button open("cmdOpen", "&Open");
  TextBox code("cmbCocode");
  ListBox companies("lstCompanies");
  QPushButton openWidget;
  QLineEdit codeWidget;
  QListWidget listWidget;
  std::vector<std::string> events;
  ScreenRefresh refresh;
  bind(refresh, open, &openWidget, [&] { events.push_back("open"); });
  bind(refresh, code, &codeWidget);
  bind(refresh, companies, &listWidget, {.clicked = [&] { events.push_back("clicked " + companies.text()); }});

  open.setCaption("&Cancel");
  code.setText("ABC");
  companies.add("O'Neil & Söhne");
  companies.add("XYZ");
  companies.select(0);
  handleEvents();
  EXPECT_EQ(openWidget.text(), "&Cancel");
  EXPECT_EQ(codeWidget.text(), "ABC");
  EXPECT_EQ(listWidget.currentItem()->text().toStdString(), "O'Neil & Söhne");
  EXPECT_TRUE(events.empty()) << "what the screen does is no click of the user";

  listWidget.setCurrentRow(1);
  codeWidget.clear();
  Q_EMIT codeWidget.textEdited("NEW");
  openWidget.click();
  EXPECT_EQ(companies.selected(), 1);
  EXPECT_EQ(code.text(), "NEW");
  EXPECT_EQ(events, (std::vector<std::string>{"clicked XYZ", "open"}));
}

TEST(BindTest, ClickOnAJustLockedButtonIsNotPassedOn) {
  Button next("cmdNext", "&Next");
  QPushButton widget;
  int clicks = 0;
  ScreenRefresh refresh;
  bind(refresh, next, &widget, [&] { ++clicks; });
  next.setEnabled(false);
  widget.click();
  EXPECT_EQ(clicks, 0);
}

TEST(BindTest, OptionThatTheScreenRefusesFallsBack) {
  OptionButton add("optAssetId", "Add");
  OptionButton modify("optUpdAssetId", "Modify");
  add.setValue(true);
  QWidget parent;
  auto* addWidget = new QRadioButton(&parent);
  auto* modifyWidget = new QRadioButton(&parent);
  ScreenRefresh refresh;
  bind(refresh, add, addWidget, {});
  bind(refresh, modify, modifyWidget, [&] {
    modify.setValue(false);
    add.setValue(true);
  });
  modifyWidget->click();
  handleEvents();
  EXPECT_TRUE(addWidget->isChecked());
  EXPECT_FALSE(modifyWidget->isChecked());
}

TEST(BindTest, TickOfAMandatoryLineComesBack) {
  ListView fields("lstFields");
  fields.setColumns({{"Fields In ORVA", 2600}, {"FieldNames In Excel", 1600}});
  fields.add({.cells = {"Cost", "COST"}, .ticked = true});
  fields.add({.cells = {"GST", "GST"}});
  QTreeView view;
  ScreenRefresh refresh;
  bind(refresh, fields, &view, [&](int line, bool ticked) { fields.setTicked(line, line == 0 || ticked); });
  const auto tick = [&](int line) { return view.model()->index(line, 0).data(Qt::CheckStateRole).toInt(); };
  for (const int line : {0, 1}) {
    view.model()->setData(view.model()->index(line, 0), tick(line) == Qt::Checked ? Qt::Unchecked : Qt::Checked,
                          Qt::CheckStateRole);
  }
  EXPECT_EQ(tick(0), Qt::Checked);
  EXPECT_EQ(tick(1), Qt::Checked);
}

TEST(BindTest, ManyChangesBetweenTwoPaintsRefreshOnce) {
  Label status("lblStatus");
  QLabel widget;
  int refreshed = 0;
  ScreenRefresh refresh;
  refresh.watch(status, &widget, [&] { ++refreshed; });
  for (int row = 1; row <= 10'000; ++row) status.setCaption("Validating Row : " + std::to_string(row));
  handleEvents();
  EXPECT_EQ(refreshed, 2) << "once when bound, once for all changes";
}

TEST(BindTest, FocusGoesToAWidgetThatTheSameHandlerShowed) {
  TextBox code("cmbCocode");
  code.setVisible(false);
  Button other("cmdNew", "&New");
  QWidget window;
  auto* column = new QVBoxLayout(&window);
  auto* button = new QPushButton;
  auto* widget = new QLineEdit;
  column->addWidget(button);
  column->addWidget(widget);
  ScreenRefresh refresh;
  bind(refresh, other, button, {});
  bind(refresh, code, widget);
  window.show();
  code.setFocus();
  code.setVisible(true);
  handleEvents();
  EXPECT_EQ(window.focusWidget(), widget);
}

TEST(BindTest, ControlMayChangeAfterItsWindowIsGone) {
  Label label("lblStatus");
  {
    QLabel widget;
    ScreenRefresh refresh;
    bind(refresh, label, &widget);
  }
  label.setCaption("late");
  label.setFocus();
  handleEvents();
}

TEST(BindTest, PageChangesWithItsFrame) {
  Frame first("fmHome");
  Frame second("fmSelection");
  second.setVisible(false);
  QStackedWidget pages;
  pages.addWidget(new QWidget);
  pages.addWidget(new QWidget);
  ScreenRefresh refresh;
  bindPages(refresh, {&first, &second}, &pages);
  EXPECT_EQ(pages.currentIndex(), 0);
  second.setVisible(true);
  first.setVisible(false);
  handleEvents();
  EXPECT_EQ(pages.currentIndex(), 1);
}

TEST(BindTest, FiltersOfTheFileDialogFindCapitalsToo) {
  EXPECT_EQ(fileFilters("Excel(*.xls)|*.xls|All Files(*.*)|*.*"),
            (QStringList{"Excel (*.xls *.XLS)", "All Files (*)"}));
  EXPECT_EQ(fileFilters("Excel(*.xls)"), QStringList()) << "a description without a pattern";
}

}  // namespace
}  // namespace orva::qt
