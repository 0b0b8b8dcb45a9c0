#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orva {

enum class FindingClass { kError, kWarning, kBackdated };

/// One fault of one cell, as data; its text is made when it is shown.
struct Finding {
  /// Row of the results grid; 1 is the first workbook row after the header.
  int row = 0;
  /// Column of the results grid whose cell is coloured; -1 when the finding
  /// concerns no column of the sheet.
  int column = -1;
  FindingClass findingClass = FindingClass::kError;
  /// Column name to report in place of the heading (a rate, a generated
  /// identifier); empty for a finding on a cell.
  std::string_view otherColumn = {};
  /// Text with placeholders in braces, from a rule table. Empty: the cell is coloured, nothing is reported.
  std::string_view text = {};
  /// Values of the placeholders in the order in which they stand in the text.
  std::vector<std::string> arguments = {};
};

/// The text of a finding with its arguments in place.
std::string findingText(const Finding& finding);

/// The findings of one validation run in the order in which they were found,
/// with the counts that the summary shows. A row counts once as an error when it has
/// one, else once as a warning; a backdated row counts as such whatever else it has.
class Findings {
 public:
  void clear();
  void add(Finding finding);

  const std::vector<Finding>& all() const { return findings_; }
  /// Half-open range of positions in `all()` that belong to a row. Rows are
  /// validated in ascending order, so a row's findings stand together (after
  /// `settle` when a check of the whole sheet added some).
  struct Range {
    std::size_t first = 0;
    std::size_t last = 0;
  };
  Range ofRow(int row) const;
  bool rowHas(int row, FindingClass findingClass) const;

  int errorRows() const { return errorRows_; }
  int warningRows() const { return warningRows_; }
  int backdatedRows() const { return backdatedRows_; }
  /// Some finding of the class exists, in a row of whatever count.
  bool has(FindingClass findingClass) const;
  /// Called when a row is done: counts it by its findings.
  void countRow(int row);
  /// Findings on rows that are done already (sums over the whole sheet), in any order; rows are counted afresh.
  void addToEarlierRows(std::vector<Finding> late);
  /// Brings findings that were added to earlier rows after the walk into their place and counts
  /// every row anew. Nothing happens when all came in order.
  void settle();

 private:
  std::vector<Finding> findings_;
  bool isOrdered_ = true;
  int errorRows_ = 0;
  int warningRows_ = 0;
  int backdatedRows_ = 0;
};

}  // namespace orva
