#include "wizard/unknown_masters.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

using Texts = std::vector<std::string>;

const Catalogue kCatalogue{
    {.label = "Project",
     .excelName = "Project",
     .type = "Text",
     .size = "255",
     .position = {},
     .isMiscellaneous = true},
    {.label = "Remarks", .excelName = "REMARKS", .type = "Text", .size = "255", .position = {}},
    {.label = "Department", .excelName = "DEPT", .type = "Text", .size = "255", .position = {}},
};

FlexGrid& fill(FlexGrid& grid, const std::vector<Texts>& rows) {
  TextTable table;
  table.reset(static_cast<int>(rows[0].size()));
  for (const Texts& cells : rows) {
    const int row = table.addRow();
    for (std::size_t column = 0; column < cells.size(); ++column) {
      table.setCell(row, static_cast<int>(column), cells[column]);
    }
  }
  grid.setTable(table);
  return grid;
}

Texts linesOf(const std::vector<UnknownMaster>& unknown) {
  Texts lines;
  for (const UnknownMaster& each : unknown) lines.push_back(unknownMasterText(each));
  return lines;
}

TEST(UnknownMasters, AreCountedByMasterAndNameWithoutRegardToCaseAndBlanks) {
  FlexGrid grid("grid1");
  fill(grid, {{"Project", "MAINLOC", "SUBLOC", "PHYLOC", "dept", "COST"},
              {"", "Pune", "Shop", "Bay", "Stores", "odd"},
              {" Alpha", "pune ", "SHOP", "bay", " stores ", "odd"},
              {"", "", "", "", "Accounts", ""},
              {"", "", "", "", "", ""}});
  Findings findings;
  for (int row = 1; row <= 4; ++row) {
    for (int column = 0; column < 6; ++column) {
      findings.add({.row = row, .column = column, .findingClass = FindingClass::kWarning});
    }
  }
  EXPECT_EQ(
      linesOf(unknownMastersIn(findings, grid, kCatalogue)),
      (Texts{"Department : Accounts (1 row)", "Department : Stores (2 rows, 1 of them with blanks around the name)",
             "Location : Pune / Shop / Bay (2 rows, 1 of them with blanks around the name)",
             "Project : Alpha (1 row with blanks around the name)"}));
}

TEST(UnknownMasters, ANameInErrorOrALocationWithoutALevelIsNone) {
  FlexGrid grid("grid1");
  fill(grid, {{"DEPT", "MAINLOC", "SUBLOC", "PHYLOC"},
              {"ALL", "Pune", "", "Bay"},
              {"Stores", "Pune", "Shop's", "Bay"},
              {"Known", "Nashik", "Shop", "Bay"}});
  Findings findings;
  findings.add({.row = 1, .column = 0, .findingClass = FindingClass::kWarning});
  findings.add({.row = 1, .column = 0, .findingClass = FindingClass::kError});
  findings.add({.row = 1, .column = 1, .findingClass = FindingClass::kWarning});
  findings.add({.row = 2, .column = 0, .findingClass = FindingClass::kWarning});
  findings.add({.row = 2, .column = 1, .findingClass = FindingClass::kWarning});
  findings.add({.row = 2, .column = 2, .findingClass = FindingClass::kError});
  findings.add({.row = 3, .column = -1, .findingClass = FindingClass::kWarning});
  EXPECT_EQ(linesOf(unknownMastersIn(findings, grid, kCatalogue)), Texts{"Department : Stores (1 row)"});
}

}  // namespace
}  // namespace orva
