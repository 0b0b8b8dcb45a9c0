#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "wizard/findings.h"

namespace orva {

/// Headings of the three columns that findings add at the end of the results grid.
inline constexpr std::string_view kErrorHeading = "ERROR";
inline constexpr std::string_view kErrorColumnHeading = "ERROR Column";
inline constexpr std::string_view kErrorDescriptionHeading = "ERROR Description";

/// A coloured cell of the results grid.
struct CellMark {
  int row = 0;
  int column = 0;
  FindingClass findingClass = FindingClass::kError;
};

/// Counts of one validation as the summary shows them.
struct RunTotals {
  int records = 0;
  int errors = 0;
  int warnings = 0;
  int backdated = 0;
  /// Sum of the quantities when one asset a unit is to be made, else 0.
  std::int64_t units = 0;
  bool backdatedAccepted = false;
};

/// The coloured cells in ascending order of row and column. A backdated date keeps its colour
/// whatever else is wrong with it; an error outweighs a warning. Backdated dates that were refused are errors.
std::vector<CellMark> cellMarks(const Findings& findings, bool backdatedRefused = false);
Colour colourOf(FindingClass findingClass);

/// What stands between the findings of one row.
struct FindingSeparators {
  std::string_view columns = " , ";
  std::string_view texts = ",";
};

/// Adds the three columns (only when there is a finding), writes "E", the failing columns and
/// the messages of every row, and colours the cells. The window is told once.
void showFindings(const Findings& findings, FlexGrid& grid, const FindingSeparators& separators = {});

/// Puts "E" on the rows whose backdated entries were refused, so that the filter and the error file show them, and the
/// colour of errors on their dates.
void markRefusedRows(const Findings& findings, FlexGrid& grid);

/// Messages of one cell in the order in which they were found.
std::string findingTextAt(const Findings& findings, int row, int column, const FindingSeparators& separators = {});

/// Whether a row of the grid is in error ("E" under "ERROR").
bool isErrorRow(const FlexGrid& grid, int row);
/// Hides every row that is not in error, or shows all rows again.
void showOnlyErrorRows(FlexGrid& grid, bool onlyErrors);

}  // namespace orva
