#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "platform/xls/cell_text.h"
#include "platform/xls/expected_workbooks.h"
#include "platform/xls/refusal.h"
#include "platform/xls/workbook_reader.h"

namespace orva::xls {
namespace {

std::string momentText(const DateTime& moment) {
  char date[32] = "", time[32] = "";
  if (!moment.isTimeAlone) std::snprintf(date, sizeof date, "%04d-%02d-%02d", moment.year, moment.month, moment.day);
  if (moment.isTimeAlone || moment.secondOfDay != 0) {
    const int second = moment.secondOfDay;
    std::snprintf(time, sizeof time, "%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60);
  }
  return std::string(date) + (*date != 0 && *time != 0 ? " " : "") + time;
}

/// Type and value as the list of expected cells writes them; a number as the
/// double that the expected text stands for.
std::string described(const CellTable& table, const Cell& cell) {
  switch (cell.kind()) {
    case CellKind::kText:
      return "s " + std::string(table.textOf(cell));
    case CellKind::kDate:
      return "d " + momentText(dateTimeOf(cell.asDouble(), table.dateSystem()).value());
    case CellKind::kBoolean:
      return cell.asBoolean() ? "b 1" : "b 0";
    case CellKind::kError:
      return "e " + std::string(errorText(cell.asErrorCode()));
    default:
      return "n";
  }
}

void expectCell(const CellTable& table, const Cell& cell, const ExpectedCell& expected) {
  const std::string place = expected.sheet + " " + std::to_string(expected.row) + "," + std::to_string(expected.column);
  if (expected.type == 'n') {
    ASSERT_EQ(cell.kind(), CellKind::kNumber) << place;
    EXPECT_EQ(cell.asDouble(), std::strtod(expected.value.c_str(), nullptr)) << place;
  } else {
    EXPECT_EQ(described(table, cell), std::string(1, expected.type) + " " + expected.value) << place;
  }
}

class ExpectedCellsTest : public testing::TestWithParam<ExpectedWorkbook> {};

TEST_P(ExpectedCellsTest, EveryCellHasItsTypeAndValue) {
  const ExpectedWorkbook& expected = GetParam();
  const std::string content = contentOf(fixture(expected.file));
  const Bytes file(content.begin(), content.end());
  if (!expected.refused.empty() || expected.file == "biff5.xls") {
    EXPECT_THROW(WorkbookReader{file}, Refusal);
    return;
  }
  WorkbookReader workbook(file);
  std::vector<std::string> names;
  std::map<std::string, std::size_t> counts;
  for (const SheetEntry& sheet : workbook.sheets()) names.push_back(sheet.name);
  EXPECT_EQ(names, expected.sheets);
  for (const ExpectedCell& cell : expected.cells) counts[cell.sheet] += cell.type != 's' || !cell.value.empty();
  for (const std::string& name : names) {
    const CellTable table = workbook.read(workbook.find(name));
    EXPECT_EQ(table.cells().size(), counts[name]) << name << ": cells that nobody expects, or fewer";
    for (const ExpectedCell& cell : expected.cells) {
      if (cell.sheet != name || (cell.type == 's' && cell.value.empty())) continue;
      const Cell* found = table.find(cell.row, cell.column);
      ASSERT_NE(found, nullptr) << name << " " << cell.row << "," << cell.column << " is blank";
      expectCell(table, *found, cell);
    }
  }
}

std::string nameOf(const testing::TestParamInfo<ExpectedWorkbook>& workbook) {
  std::string name = workbook.param.file;
  for (char& letter : name) letter = std::isalnum(static_cast<unsigned char>(letter)) != 0 ? letter : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Fixtures, ExpectedCellsTest, testing::ValuesIn(expectedWorkbooks()), nameOf);

}  // namespace
}  // namespace orva::xls
