#pragma once

#include <string>
#include <vector>

namespace orva::xls {

/// What `expected.json` says of one cell. Type: n number, d date, s text, b Boolean, e error.
struct ExpectedCell {
  std::string sheet;
  int row = 0, column = 0;
  char type = 's';
  std::string value;
};

struct ExpectedWorkbook {
  std::string file;
  std::string refused;
  std::vector<std::string> sheets;
  std::vector<ExpectedCell> cells;
};

/// The workbooks of the fixture folder with every cell that they hold.
std::vector<ExpectedWorkbook> expectedWorkbooks();

/// The place of a fixture.
std::string fixture(const std::string& name);
/// The bytes of a file as text.
std::string contentOf(const std::string& path);

}  // namespace orva::xls
