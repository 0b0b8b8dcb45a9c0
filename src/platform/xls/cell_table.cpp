#include "platform/xls/cell_table.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva::xls {

void CellTable::add(std::uint16_t row, std::uint8_t column, Cell cell) {
  cell.place(row, column);
  cells_.push_back(cell);
}

void CellTable::finish() {
  sort();
  measure();
}

/// Writers store cells in order, so that as a rule nothing is to be done.
void CellTable::sort() {
  auto inOrder = [](const Cell& left, const Cell& right) { return left.key() < right.key(); };
  auto notInOrder = [](const Cell& left, const Cell& right) { return left.key() >= right.key(); };
  if (std::adjacent_find(cells_.begin(), cells_.end(), notInOrder) == cells_.end()) return;
  std::stable_sort(cells_.begin(), cells_.end(), inOrder);
  auto samePlace = [](const Cell& left, const Cell& right) { return left.key() == right.key(); };
  const auto kept = std::unique(cells_.rbegin(), cells_.rend(), samePlace);
  cells_.erase(cells_.begin(), kept.base());
}

void CellTable::measure() {
  for (const Cell& cell : cells_) {
    if (cell.kind() == CellKind::kText && trimSpace(textOf(cell)).empty()) continue;
    rowCount_ = std::max(rowCount_, cell.row() + 1);
    columnCount_ = std::max(columnCount_, cell.column() + 1);
  }
  const int rows = cells_.empty() ? 0 : cells_.back().row() + 1;
  rowStarts_.reserve(static_cast<std::size_t>(rows) + 1);
  std::uint32_t at = 0;
  for (int row = 0; row < rows; ++row) {
    rowStarts_.push_back(at);
    while (at < cells_.size() && cells_[at].row() == row) ++at;
  }
  rowStarts_.push_back(at);
}

const Cell* CellTable::find(int row, int column) const {
  if (row < 0 || column < 0 || static_cast<std::size_t>(row) + 1 >= rowStarts_.size()) return nullptr;
  const auto first = cells_.begin() + rowStarts_[static_cast<std::size_t>(row)];
  const auto last = cells_.begin() + rowStarts_[static_cast<std::size_t>(row) + 1];
  if (first == last) return nullptr;
  // Rows without gaps are the rule: then the column leads straight to the cell.
  const int guess = column - first->column();
  if (guess >= 0 && guess < last - first && (first + guess)->column() == column) return &*(first + guess);
  const auto found =
      std::lower_bound(first, last, column, [](const Cell& cell, int wanted) { return cell.column() < wanted; });
  return found != last && found->column() == column ? &*found : nullptr;
}

}  // namespace orva::xls
