#include "wizard/results.h"

#include <algorithm>

namespace orva {
namespace {

constexpr std::string_view kErrorMark = "E";

/// Strength of a class when several findings share a cell.
int strength(FindingClass findingClass) {
  switch (findingClass) {
    case FindingClass::kWarning:
      return 0;
    case FindingClass::kError:
      return 1;
    case FindingClass::kBackdated:
      return 2;
  }
  return 0;
}

void appendJoined(std::string& list, std::string_view separator, std::string_view text) {
  if (!list.empty()) list += separator;
  list += text;
}

/// What one row shows in the three columns.
struct RowReport {
  const FindingSeparators& separators;
  bool isError = false;
  std::string columns;
  std::string texts;

  void add(const Finding& finding, std::string_view heading) {
    isError = isError || finding.findingClass == FindingClass::kError;
    if (finding.text.empty() && finding.findingClass != FindingClass::kError) return;
    const std::string_view column = finding.otherColumn.empty() ? heading : finding.otherColumn;
    if (!column.empty()) appendJoined(columns, separators.columns, column);
    if (!finding.text.empty()) appendJoined(texts, separators.texts, findingText(finding));
  }
};

/// Position of the first of the three columns, which are added when they are not there.
int reportColumns(FlexGrid& grid) {
  const int columns = grid.columnCount();
  if (columns >= 3 && grid.text(0, columns - 3) == kErrorHeading) return columns - 3;
  grid.addColumns(3);
  grid.setText(0, columns, kErrorHeading);
  grid.setText(0, columns + 1, kErrorColumnHeading);
  grid.setText(0, columns + 2, kErrorDescriptionHeading);
  return columns;
}

void writeReport(FlexGrid& grid, int row, int firstColumn, const RowReport& report) {
  grid.setText(row, firstColumn, report.isError ? kErrorMark : std::string_view());
  grid.setText(row, firstColumn + 1, report.columns);
  grid.setText(row, firstColumn + 2, report.texts);
}

}  // namespace

std::vector<CellMark> cellMarks(const Findings& findings, bool backdatedRefused) {
  std::vector<CellMark> marks;
  for (const Finding& finding : findings.all()) {
    const bool isRefused = backdatedRefused && finding.findingClass == FindingClass::kBackdated;
    const FindingClass shown = isRefused ? FindingClass::kError : finding.findingClass;
    if (finding.column >= 0) marks.push_back({finding.row, finding.column, shown});
  }
  std::stable_sort(marks.begin(), marks.end(), [](const CellMark& a, const CellMark& b) {
    if (a.row != b.row) return a.row < b.row;
    if (a.column != b.column) return a.column < b.column;
    return strength(a.findingClass) > strength(b.findingClass);
  });
  const auto sameCell = [](const CellMark& a, const CellMark& b) { return a.row == b.row && a.column == b.column; };
  marks.erase(std::unique(marks.begin(), marks.end(), sameCell), marks.end());
  return marks;
}

Colour colourOf(FindingClass findingClass) {
  switch (findingClass) {
    case FindingClass::kError:
      return colours::kPink;
    case FindingClass::kWarning:
      return colours::kLightYellow;
    case FindingClass::kBackdated:
      return colours::kLightBlue;
  }
  return colours::kWhite;
}

void showFindings(const Findings& findings, FlexGrid& grid, const FindingSeparators& separators) {
  const std::vector<Finding>& all = findings.all();
  if (all.empty()) return;
  const UpdateBatch batch(grid);
  const int firstColumn = reportColumns(grid);
  for (std::size_t index = 0; index < all.size();) {
    const int row = all[index].row;
    RowReport report{.separators = separators, .columns = {}, .texts = {}};
    for (; index < all.size() && all[index].row == row; ++index)
      report.add(all[index], grid.text(0, all[index].column));
    writeReport(grid, row, firstColumn, report);
  }
  for (const CellMark& mark : cellMarks(findings)) {
    grid.setCellColour(mark.row, mark.column, colourOf(mark.findingClass));
  }
}

void markRefusedRows(const Findings& findings, FlexGrid& grid) {
  const UpdateBatch batch(grid);
  const int errorColumn = grid.findColumn(kErrorHeading);
  for (const Finding& finding : findings.all()) {
    if (finding.findingClass != FindingClass::kBackdated) continue;
    grid.setText(finding.row, errorColumn, kErrorMark);
    grid.setCellColour(finding.row, finding.column, colourOf(FindingClass::kError));
  }
}

std::string findingTextAt(const Findings& findings, int row, int column, const FindingSeparators& separators) {
  std::string texts;
  const Findings::Range range = findings.ofRow(row);
  for (std::size_t index = range.first; index < range.last; ++index) {
    const Finding& finding = findings.all()[index];
    if (finding.column == column && !finding.text.empty()) appendJoined(texts, separators.texts, findingText(finding));
  }
  return texts;
}

bool isErrorRow(const FlexGrid& grid, int row) { return grid.text(row, grid.findColumn(kErrorHeading)) == kErrorMark; }

void showOnlyErrorRows(FlexGrid& grid, bool onlyErrors) {
  const UpdateBatch batch(grid);
  const int errorColumn = grid.findColumn(kErrorHeading);
  for (int row = 1; row < grid.rowCount(); ++row) {
    grid.setRowVisible(row, !onlyErrors || grid.text(row, errorColumn) == kErrorMark);
  }
}

}  // namespace orva
