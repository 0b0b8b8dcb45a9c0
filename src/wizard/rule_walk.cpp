#include "wizard/rule_walk.h"

#include <utility>

namespace orva {

RowView::RowView(ImportRun& run) : run_(run) {
  const int columns = run.grid.columnCount();
  for (int column = 0; column < columns; ++column) {
    const std::string_view heading = run.grid.text(0, column);
    upperHeadings_.push_back(toUpper(trim(heading)));
    cells_.push_back({.heading = heading, .field = findField(run.catalogue, heading), .column = column});
  }
}

const Cell& RowView::cellAt(int column) {
  current_ = column;
  Cell& cell = cells_[static_cast<std::size_t>(column)];
  cell.value = run_.grid.text(row_, column);
  return cell;
}

std::string_view RowView::cell(std::string_view heading) const { return run_.grid.text(row_, columnOf(heading)); }

int RowView::columnOf(std::string_view heading) const {
  for (std::size_t column = 0; column < upperHeadings_.size(); ++column) {
    if (upperHeadings_[column] == heading) return static_cast<int>(column);
  }
  return -1;
}

void RowView::begin(int row) {
  row_ = row;
  current_ = -1;
}

std::string RowView::textArgument(std::string_view name) const {
  if (name == "row") return std::to_string(row_);
  if (name == "column number") return std::to_string(current_ + 1);
  if (current_ >= 0) {
    const Cell& current = cells_[static_cast<std::size_t>(current_)];
    if (name == "value") return std::string(current.value);
    if (name == "trimmed") return std::string(trim(current.value));
    if (name == "trimmed upper") return toUpper(trim(current.value));
    if (name == "column") return std::string(current.heading);
    if (name == "size") return current.field ? current.field->size : std::string();
  }
  return std::string(cell(name));
}

std::optional<Date> RowView::dateArgument(std::string_view name) const { return Date::parseDayMonthYear(cell(name)); }

std::unique_ptr<Recordset> RowView::open(const Query& query) const {
  return run_.connection().open(composeQuery(query, run_.dialect(), *this));
}

void RowView::record(int column, FindingClass findingClass, std::string_view text, std::string_view otherColumn) {
  Finding finding{.row = row_,
                  .column = column,
                  .findingClass = findingClass,
                  .otherColumn = otherColumn,
                  .text = text,
                  .arguments = {}};
  for (std::size_t open = text.find('{'); open != std::string_view::npos; open = text.find('{', open + 1)) {
    const std::size_t close = text.find('}', open);
    if (close == std::string_view::npos) break;
    finding.arguments.push_back(textArgument(text.substr(open + 1, close - open - 1)));
  }
  run_.findings.add(std::move(finding));
}

bool appliesTo(AppliesIn mode, Flavour flavour, const Selection& selection) {
  if (flavour == Flavour::kAcquisition && !selection.isAcquisition()) return false;
  if (flavour == Flavour::kClosing && !selection.isClosing()) return false;
  switch (mode) {
    case AppliesIn::kAllModes:
      return true;
    case AppliesIn::kAdd:
      return selection.isAdd();
    case AppliesIn::kModify:
      return selection.isModify();
    case AppliesIn::kModifyByAssetId:
      return selection.mode == AssetMode::kModifyByAssetId;
    case AppliesIn::kModifyByPhysicalId:
      return selection.mode == AssetMode::kModifyByPhysicalId;
    case AppliesIn::kNotByPhysicalId:
      return selection.mode != AssetMode::kModifyByPhysicalId;
  }
  return false;
}

}  // namespace orva
