#include "platform/values/text_table.h"

#include <gtest/gtest.h>

#include <string>

namespace orva {
namespace {

TextTable twoByTwo() {
  TextTable table;
  table.reset(2);
  for (const char* name : {"a", "b"}) {
    const int row = table.addRow();
    table.setCell(row, 0, name);
    table.setCell(row, 1, std::string(name) + name);
  }
  return table;
}

TEST(TextTable, CopiesPartAtTheFirstWrite) {
  TextTable first = twoByTwo();
  TextTable second = first;
  TextTable third = second;
  second.setCell(0, 0, "second");
  first.setCell(0, 0, "first");
  first.setCell(1, 0, "first too");
  third.setCell(0, 0, "third");
  EXPECT_EQ(first.cell(0, 0), "first");
  EXPECT_EQ(first.cell(1, 0), "first too");
  EXPECT_EQ(second.cell(0, 0), "second");
  EXPECT_EQ(second.cell(1, 0), "b");
  EXPECT_EQ(third.cell(0, 0), "third");
  EXPECT_EQ(third.cell(1, 1), "bb");
}

TEST(TextTable, CellsOutliveTheTableTheyWereCopiedFrom) {
  TextTable copy;
  {
    const TextTable original = twoByTwo();
    copy = original;
  }
  copy.addColumns(1);
  EXPECT_EQ(copy.cell(1, 1), "bb");
}

TEST(TextTable, WideningKeepsEveryCellInPlace) {
  TextTable table = twoByTwo();
  table.addColumns(3);
  EXPECT_EQ(table.columnCount(), 5);
  EXPECT_EQ(table.cell(1, 0), "b");
  EXPECT_EQ(table.cell(0, 2), "");
  table.setCell(1, 4, "last");
  const int row = table.addRow();
  EXPECT_EQ(table.cell(row, 4), "");
  EXPECT_EQ(table.cell(1, 4), "last");
}

TEST(TextTable, OutsideIsEmptyAndWritesThereDoNothing) {
  TextTable table = twoByTwo();
  table.setCell(2, 0, "x");
  table.setCell(0, 2, "x");
  table.setCell(-1, 0, "x");
  EXPECT_EQ(table.cell(2, 0), "");
  EXPECT_EQ(table.cell(0, -1), "");
  EXPECT_EQ(table.rowCount(), 2);
}

TEST(TextTable, HoldsTextsLargerThanABlock) {
  TextTable table = twoByTwo();
  const std::string large(1'000'000, 'x');
  table.setCell(0, 0, large);
  table.setCell(0, 1, "after");
  EXPECT_EQ(table.cell(0, 0), large);
  EXPECT_EQ(table.cell(0, 1), "after");
  table.reset(1);
  EXPECT_EQ(table.rowCount(), 0);
  EXPECT_EQ(table.cell(0, 0), "");
}

}  // namespace
}  // namespace orva
