#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "fakes/case_file.h"
#include "platform/xls/cell_text.h"
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

/// The sheet is named between the place of a cell and its value.
struct ExpectedCell {
  explicit ExpectedCell(const std::string& line)
      : type(line.at(0)), row(std::stoi(line.substr(2))), column(std::stoi(line.substr(line.find(',') + 1))) {
    const std::size_t name = line.find(' ', 2) + 1;
    const std::size_t end = line.find(" |", name);
    sheet = line.substr(name, end - name);
    value = line.substr(std::min(end + 3, line.size()));
  }
  char type;
  int row;
  int column;
  std::string sheet;
  std::string value;
};

TEST(ExpectedCells, EveryCellHasItsTypeAndValue) {
  for (const ListedCase& one : listedCases("xls/expected.txt")) {
    const std::vector<std::string> named = splitAt(one.head, ": ");
    SCOPED_TRACE(named[0]);
    const std::string content = fixtureText("xls/" + named[0]);
    const Bytes file(content.begin(), content.end());
    WorkbookReader workbook(file);
    std::map<std::string, CellTable> sheets;
    std::map<std::string, std::size_t> counts;
    std::vector<std::string> names;
    for (const SheetEntry& sheet : workbook.sheets()) names.push_back(sheet.name);
    EXPECT_EQ(names, splitAt(named.at(1), " | "));
    for (const std::string& name : names) sheets.emplace(name, workbook.read(workbook.find(name)));
    for (const std::string& line : one.lines) {
      const ExpectedCell expected(line);
      ++counts[expected.sheet];
      const CellTable& table = sheets.at(expected.sheet);
      const Cell* found = table.find(expected.row, expected.column);
      ASSERT_NE(found, nullptr) << line << " is blank";
      EXPECT_EQ(described(table, *found).substr(0, 1), std::string(1, expected.type)) << line;
      if (expected.type == 'n') {
        EXPECT_EQ(found->asDouble(), std::strtod(expected.value.c_str(), nullptr)) << line;
      } else {
        EXPECT_EQ(described(table, *found).substr(2), expected.value) << line;
      }
    }
    for (const auto& [name, table] : sheets) EXPECT_EQ(table.cells().size(), counts[name]) << name;
  }
}

}  // namespace
}  // namespace orva::xls
