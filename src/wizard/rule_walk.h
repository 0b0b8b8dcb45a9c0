#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/values/text.h"
#include "wizard/import_run.h"
#include "wizard/query.h"

namespace orva {

/// One cell as a rule sees it.
struct Cell {
  std::string_view value = {};
  std::string_view heading = {};
  /// Null for a column that the catalogue does not name.
  const FieldRow* field = nullptr;
  int column = -1;

  bool isBlank() const { return trim(value).empty(); }
};

/// In which modes of the asset import a rule applies.
enum class AppliesIn { kAllModes, kAdd, kModify, kModifyByAssetId, kModifyByPhysicalId, kNotByPhysicalId };
/// In which flavour.
enum class Flavour { kBoth, kAcquisition, kClosing };

/// What follows a failed rule: the next rule of the cell, the next cell, or
/// the next row.
enum class AfterFailure { kNextRule, kNextCell, kNextRow };

/// One check of one column. `Row` is the import's view of the current row; it
/// derives from `RowView`. Rules stand in tables in the order in which they run.
template <class Row>
struct Rule {
  /// Upper-cased heading of the column; several, separated by blanks, where one rule serves them all.
  std::string_view column;
  /// True when the cell fails. May keep facts of the row in `Row`.
  bool (*fails)(Row& row, const Cell& cell, const Rule& rule);
  /// Placeholders in braces: {value}, {column}, {size}, {row}, {column number}, and what the row knows.
  /// Empty for a warning that only colours its cell.
  std::string_view text = {};
  FindingClass findingClass = FindingClass::kError;
  Query lookup = {};
  AppliesIn mode = AppliesIn::kAllModes;
  Flavour flavour = Flavour::kBoth;
  /// Tested on a blank cell of an optional line too.
  bool namesBlank = false;
  AfterFailure afterFailure = AfterFailure::kNextRule;
  /// Heading of the cell to mark when it is not the tested one.
  std::string_view marks = {};
};

/// The current row of a run: its cells by position and by heading, and the
/// values that rule texts and queries ask for by name.
class RowView : public QueryArguments {
 public:
  explicit RowView(ImportRun& run);

  ImportRun& run() const { return run_; }
  int row() const { return row_; }
  int columnCount() const { return static_cast<int>(cells_.size()); }
  /// The cell at a position of the grid, with its catalogue line.
  const Cell& cellAt(int column);
  /// Text of the cell under a heading (upper-cased); empty when the sheet has no such column.
  std::string_view cell(std::string_view heading) const;
  bool hasColumn(std::string_view heading) const { return columnOf(heading) >= 0; }
  /// -1 when the sheet has no such column.
  int columnOf(std::string_view heading) const;

  /// Moves to a row; derived rows reset their facts.
  virtual void begin(int row);

  /// {value}, {trimmed}, {column}, {size}, {row}, {column number} of the current cell and {HEADING} of any
  /// cell of the row; derived rows add their facts.
  std::string textArgument(std::string_view name) const override;
  /// The date in the cell under the heading `name`.
  std::optional<Date> dateArgument(std::string_view name) const override;

  /// Opens a look-up with the row's values in place. Throws `ProviderError`.
  std::unique_ptr<Recordset> open(const Query& query) const;
  bool finds(const Query& query) const { return !open(query)->eof(); }

  /// Records a finding on the current row; `column` -1 and `otherColumn` for one that
  /// concerns no cell.
  void record(int column, FindingClass findingClass, std::string_view text, std::string_view otherColumn = {});

 protected:
  /// Gives a column the name by which rules know it, where the company chose its heading.
  void nameColumn(int column, std::string_view name) { upperHeadings_[static_cast<std::size_t>(column)] = name; }
  /// The name by which rules know the current column; empty outside a cell.
  std::string_view currentName() const {
    return current_ < 0 ? std::string_view() : std::string_view(upperHeadings_[static_cast<std::size_t>(current_)]);
  }

 private:
  ImportRun& run_;
  std::vector<Cell> cells_;
  std::vector<std::string> upperHeadings_;
  int row_ = 0;
  int current_ = -1;
};

bool appliesTo(AppliesIn mode, Flavour flavour, const Selection& selection);

/// Rules sorted to the columns of one sheet, so that a row is walked without
/// comparing a heading.
template <class Row>
class BoundRules {
 public:
  BoundRules(std::span<const Rule<Row>> rules, const RowView& row, const Selection& selection)
      : ofColumn_(static_cast<std::size_t>(row.columnCount())) {
    for (const Rule<Row>& rule : rules) {
      if (appliesTo(rule.mode, rule.flavour, selection)) bind(rule, row);
    }
  }
  const std::vector<const Rule<Row>*>& of(int column) const { return ofColumn_[static_cast<std::size_t>(column)]; }

 private:
  void bind(const Rule<Row>& rule, const RowView& row) {
    std::string_view rest = rule.column;
    while (!rest.empty()) {
      const std::size_t blank = rest.find(' ');
      const int column = row.columnOf(rest.substr(0, blank));
      if (column >= 0) ofColumn_[static_cast<std::size_t>(column)].push_back(&rule);
      rest.remove_prefix(blank == std::string_view::npos ? rest.size() : blank + 1);
    }
  }

  std::vector<std::vector<const Rule<Row>*>> ofColumn_;
};

/// A blank cell of an optional line passes every rule but those that name the
/// blank.
template <class Row>
bool isExempt(const Rule<Row>& rule, const Cell& cell) {
  const bool isOptional = cell.field && cell.field->requirement == Requirement::kOptional;
  return isOptional && cell.isBlank() && !rule.namesBlank;
}

/// Whether a row goes on after a failure, or carries at most one error.
enum class WalkPolicy { kAllRules, kFirstErrorEndsRow };

/// Runs the rules of one cell. Returns what follows.
template <class Row>
AfterFailure walkCell(Row& row, const BoundRules<Row>& rules, int column, WalkPolicy policy) {
  const Cell& cell = row.cellAt(column);
  for (const Rule<Row>* rule : rules.of(column)) {
    if (isExempt(*rule, cell) || !rule->fails(row, cell, *rule)) continue;
    const int marked = rule->marks.empty() ? column : row.columnOf(rule->marks);
    row.record(marked, rule->findingClass, rule->text);
    const bool isError = rule->findingClass == FindingClass::kError;
    if (isError && policy == WalkPolicy::kFirstErrorEndsRow) return AfterFailure::kNextRow;
    if (rule->afterFailure != AfterFailure::kNextRule) return rule->afterFailure;
  }
  return AfterFailure::kNextRule;
}

/// Walks every row of the sheet: columns in the workbook's order, the rules of
/// each, then `endRow(row)` (also after a row that ended early); counts the row
/// and yields. Stops early when the progress says so. The walk only reads: its look-ups may
/// share their answers.
template <class Row, class EndRow>
void walkRows(Row& row, std::span<const Rule<Row>> rules, WalkPolicy policy, EndRow endRow) {
  ImportRun& run = row.run();
  const BoundRules<Row> bound(rules, row, run.selection);
  const LookupScope lookups(run.connection());
  run.progress.begin("Validating data from Excel. Please Wait ......", run.rowCount());
  for (int index = 1; index <= run.rowCount() && !run.progress.stopRequested(); ++index) {
    row.begin(index);
    for (int column = 0; column < row.columnCount(); ++column) {
      run.progress.cell("Validating Row : ", index, run.grid.text(0, column));
      if (walkCell(row, bound, column, policy) == AfterFailure::kNextRow) break;
    }
    endRow(row);
    run.findings.countRow(index);
    run.progress.rowDone(index);
  }
  run.progress.finish("Finished validating data");
}

}  // namespace orva
