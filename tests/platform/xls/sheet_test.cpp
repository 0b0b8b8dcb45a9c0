#include <gtest/gtest.h>

#include "fakes/case_file.h"
#include "fakes/temporary_folder.h"
#include "platform/xls/cell_text.h"
#include "platform/xls/xls_workbooks.h"

namespace orva::xls {
namespace {

std::unique_ptr<Sheet> open(const std::string& name, std::string_view sheet, HeaderRow header = HeaderRow::kNo) {
  return XlsWorkbooks().openSheet(fixturePath("xls/" + name), sheet, header);
}

TEST(SheetTest, NumbersAreWrittenOut) {
  const std::pair<double, std::string> cases[] = {
      {0.0, "0"},
      {-0.0, "0"},
      {1001, "1001"},
      {-98765432109876, "-98765432109876"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {99999999999.99, "99999999999.99"},
      {12345678901234.56, "12345678901234.6"},
      {999999999999999.9, "1000000000000000"},
      {1234567890123456, "1234567890123460"},
      {1e15, "1000000000000000"},
      {1.5e20, "150000000000000000000"},
      {-1e-5, "-0.00001"},
      {1.23e-10, "0.000000000123"},
      {0.99999999999999999, "1"},
      {2.675, "2.675"},
      {1.005, "1.005"},
      {19.99, "19.99"},
  };
  for (const auto& [number, text] : cases) EXPECT_EQ(numberText(number), text);
  EXPECT_EQ(numberText(1.7976931348623157e308).size(), 309U);
  EXPECT_EQ(numberText(5e-324).size(), 2U + 323 + 15);
}

struct TextCase {
  std::string file, sheet;
  int row, column;
  CellKind kind;
  std::string text;
};

TEST(SheetTest, CellsAreTexts) {
  using enum CellKind;
  const TextCase cases[] = {
      {"records.xls", "Numbers", 2, 0, kNumber, "12345.67"},
      {"records.xls", "Numbers", 25, 0, kNumber, "38061.25"},
      {"records.xls", "Numbers", 26, 0, kBoolean, "TRUE"},
      {"records.xls", "Numbers", 29, 0, kError, "#DIV/0!"},
      {"records.xls", "Dates", 0, 1, kDate, "15/03/2004"},
      {"records.xls", "Dates", 0, 2, kDate, "18:00:00"},
      {"records.xls", "Dates", 25, 0, kDate, "31/12/9999"},
      {"records.xls", "Formulas", 3, 0, kText, "ABCD"},
      {"records.xls", "Formulas", 9, 0, kBlank, ""},
      {"records.xls", "Formulas", 10, 0, kText, "shared"},
      {"dates-1904.xls", "Asset", 1, 1, kDate, "15/03/2004"},
      {"text.xls", "Asset", 8, 0, kText, " leading and trailing "},
      {"text.xls", "Asset", 9, 0, kText, "'quoted"},
      {"layout.xls", "Asset", 5, 2, kText, "hidden column"},
  };
  for (const TextCase& expected : cases) {
    const auto sheet = open(expected.file, expected.sheet);
    EXPECT_EQ(sheet->text(expected.row, expected.column), expected.text) << expected.file << " " << expected.row;
    EXPECT_EQ(sheet->kind(expected.row, expected.column), expected.kind) << expected.file << " " << expected.row;
  }
}

TEST(SheetTest, SheetsAreFoundTrimmedAndWithoutRegardToCase) {
  const std::pair<std::string, std::string> cases[] = {
      {"Asset", "AssetID"},
      {"asset", "AssetID"},
      {" ASSET", "AssetID"},
      {"ASSET ", open("layout.xls", "ASSET ")->text(0, 0)},
  };
  for (const auto& [name, firstCell] : cases) EXPECT_EQ(open("layout.xls", name)->text(0, 0), firstCell) << name;
  EXPECT_NE(cases[3].second, "AssetID");
  EXPECT_NO_THROW(open("layout.xls", "hidden"));
  EXPECT_NO_THROW(open("layout.xls", "मास्टर"));
}

TEST(SheetTest, TheHeaderRowNamesTheColumns) {
  const auto plain = open("layout.xls", "Asset");
  const auto headed = open("layout.xls", "Asset", HeaderRow::kYes);
  EXPECT_EQ(plain->columnName(0), "F1");
  EXPECT_EQ(headed->columnName(0), "AssetID");
  EXPECT_EQ(headed->columnName(2), "F3") << "a column without heading";
  EXPECT_EQ(headed->columnName(300), "F301");
  EXPECT_EQ(headed->rowCount(), plain->rowCount() - 1);
  EXPECT_EQ(headed->text(0, 0), "merged");
  EXPECT_EQ(headed->text(-1, 0), "") << "the header is no row";
}

TEST(SheetTest, OnlyFilledCellsCount) {
  const std::tuple<std::string, int, int> cases[] = {{"Asset", 65536, 256}, {"Big 3", 1, 1}};
  for (const auto& [sheet, rows, columns] : cases) {
    EXPECT_EQ(open("declared-size.xls", sheet)->rowCount(), rows) << sheet;
    EXPECT_EQ(open("declared-size.xls", sheet)->columnCount(), columns) << sheet;
  }
  const TemporaryFolder folder;
  const std::string path = folder.file("blanks.xls");
  XlsWorkbooks().write(path, "Asset",
                       {{{CellKind::kText, "Name"}, {}}, {}, {{CellKind::kText, " "}, {CellKind::kText, " "}}});
  const auto sheet = XlsWorkbooks().openSheet(path, "Asset", HeaderRow::kYes);
  EXPECT_EQ(sheet->rowCount(), 0);
  EXPECT_EQ(sheet->columnCount(), 1);
}

TEST(SheetTest, PathsWithBackslashesInAnotherCase) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.file("Data"));
  folder.write("Data/Assets.XLS", fixtureText("xls/text.xls"));
  EXPECT_EQ(XlsWorkbooks().openSheet(folder.file("data\\ASSETS.xls"), "Asset", HeaderRow::kNo)->text(0, 0), "plain");
}

}  // namespace
}  // namespace orva::xls
