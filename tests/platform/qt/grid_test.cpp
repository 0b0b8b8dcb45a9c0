#include <QElapsedTimer>
#include <QHeaderView>
#include <QTableView>

#include "platform/qt/bind.h"
#include "platform/qt/flex_grid_model.h"
#include "platform/qt/qt_test.h"

namespace orva::qt {
namespace {

TextTable sheet(int rows) {
  TextTable table;
  table.reset(3);
  for (int row = 0; row <= rows; ++row) {
    table.addRow();
    table.setCell(row, 0, row == 0 ? "PHYID" : "P" + std::to_string(row));
    table.setCell(row, 1, row == 0 ? "COST" : "100.00");
    table.setCell(row, 2, row == 0 ? "ERROR" : "");
  }
  return table;
}

class GridTest : public testing::Test {
 protected:
  QString shown(int row, int column) const {
    return view_.model()->index(row, column).data(Qt::DisplayRole).toString();
  }

  FlexGrid grid_{"grid1"};
  QTableView view_;
  ScreenRefresh refresh_;
};

constexpr int kFullSheet = 65'535;

TEST_F(GridTest, FullSheetWithAFilterNeedsNoWidgetOfARow) {
  bind(refresh_, grid_, &view_);
  view_.show();
  const auto children = view_.findChildren<QObject*>().size();
  grid_.setTable(sheet(kFullSheet));
  handleEvents();
  EXPECT_EQ(view_.model()->rowCount(), kFullSheet);
  EXPECT_EQ(shown(kFullSheet - 1, 0), "P65535");

  for (int row = 1; row <= kFullSheet; ++row) grid_.setRowVisible(row, row % 1000 == 7);
  handleEvents();
  ASSERT_EQ(view_.model()->rowCount(), 66);
  EXPECT_EQ(shown(1, 0), "P1007");
  EXPECT_EQ(view_.model()->headerData(1, Qt::Vertical).toInt(), 1007) << "rows keep their number";

  for (int row = 1; row <= kFullSheet; ++row) grid_.setRowVisible(row, true);
  handleEvents();
  EXPECT_EQ(view_.model()->rowCount(), kFullSheet);
  EXPECT_EQ(view_.findChildren<QObject*>().size(), children);
}

TEST_F(GridTest, HeadingsColoursAndMessagesStandAtTheirCells) {
  bind(refresh_, grid_, &view_, {.cellToolTip = [](int row, int column) {
         return row == 3 && column == 1 ? std::string("Cost cannot be zero") : std::string();
       }});
  grid_.setTable(sheet(3));
  grid_.setCellColour(3, 1, colours::kPink);
  grid_.setRowVisible(2, false);
  handleEvents();
  const QModelIndex bad = view_.model()->index(1, 1);
  EXPECT_EQ(bad.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 192, 192));
  EXPECT_EQ(bad.data(Qt::ToolTipRole).toString(), "Cost cannot be zero");
  EXPECT_FALSE(view_.model()->index(0, 1).data(Qt::BackgroundRole).isValid());
  EXPECT_EQ(view_.model()->headerData(1, Qt::Horizontal).toString(), "COST");
}

TEST_F(GridTest, PointingNamesTheGridsOwnRow) {
  std::vector<std::pair<int, int>> pointed;
  bind(refresh_, grid_, &view_, {.pointed = [&](int row, int column) { pointed.emplace_back(row, column); }});
  grid_.setTable(sheet(5));
  for (const int row : {1, 2, 3}) grid_.setRowVisible(row, false);
  handleEvents();
  view_.setCurrentIndex(view_.model()->index(0, 2));
  Q_EMIT view_.entered(view_.model()->index(1, 0));
  Q_EMIT view_.viewportEntered();
  EXPECT_EQ(pointed, (std::vector<std::pair<int, int>>{{4, 2}, {5, 0}, {-1, -1}}));
}

TEST_F(GridTest, RowsAndColumnsThatComeLaterAreSeen) {
  struct Step {
    const char* what;
    std::function<void(FlexGrid&)> change;
    int rows;
    int columns;
  };
  const Step steps[] = {
      {"a first sheet", [](FlexGrid& grid) { grid.setTable(sheet(4)); }, 4, 3},
      {"more rows", [](FlexGrid& grid) { grid.setTable(sheet(9)); }, 9, 3},
      {"columns at the end", [](FlexGrid& grid) { grid.addColumns(2); }, 9, 5},
      {"a shorter sheet", [](FlexGrid& grid) { grid.setTable(sheet(2)); }, 2, 3},
      {"headings only", [](FlexGrid& grid) { grid.setTable(sheet(0)); }, 0, 3},
      {"nothing", [](FlexGrid& grid) { grid.clear(); }, 0, 0},
  };
  bind(refresh_, grid_, &view_);
  for (const Step& step : steps) {
    step.change(grid_);
    // The view may ask for cells before it has heard of the change.
    view_.grab();
    handleEvents();
    EXPECT_EQ(view_.model()->rowCount(), step.rows) << step.what;
    EXPECT_EQ(view_.model()->columnCount(), step.columns) << step.what;
  }
}

}  // namespace
}  // namespace orva::qt
