#include "platform/qt/flex_grid_model.h"

#include <QBrush>
#include <algorithm>

#include "platform/qt/text.h"

namespace orva::qt {

FlexGridModel::Change FlexGridModel::refresh() {
  std::vector<int> rows = visibleRows();
  const bool extends = rows.size() >= rows_.size() && std::equal(rows_.begin(), rows_.end(), rows.begin());
  if (!extends || !sameHeadings()) {
    exchange(std::move(rows));
    return Change::kEverything;
  }
  const int before = static_cast<int>(rows_.size());
  const int after = static_cast<int>(rows.size());
  if (before > 0 && columnCount() > 0) Q_EMIT dataChanged(index(0, 0), index(before - 1, columnCount() - 1));
  if (after == before) return Change::kCells;
  beginInsertRows({}, before, after - 1);
  rows_ = std::move(rows);
  endInsertRows();
  return Change::kRowsAdded;
}

bool FlexGridModel::sameHeadings() const {
  if (static_cast<int>(headings_.size()) != grid_.columnCount()) return false;
  for (int column = 0; column < grid_.columnCount(); ++column) {
    if (grid_.text(0, column) != headings_[column]) return false;
  }
  return true;
}

std::vector<int> FlexGridModel::visibleRows() const {
  std::vector<int> rows;
  rows.reserve(static_cast<std::size_t>(std::max(0, grid_.rowCount() - 1)));
  for (int row = 1; row < grid_.rowCount(); ++row) {
    if (grid_.rowVisible(row)) rows.push_back(row);
  }
  return rows;
}

void FlexGridModel::exchange(std::vector<int> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  headings_.clear();
  numeric_.clear();
  for (int column = 0; column < grid_.columnCount(); ++column) {
    headings_.emplace_back(grid_.text(0, column));
    numeric_.push_back(display_.isNumeric && display_.isNumeric(headings_.back()));
  }
  endResetModel();
}

int FlexGridModel::gridRow(int viewRow) const {
  return viewRow >= 0 && viewRow < rowCount() ? rows_[static_cast<std::size_t>(viewRow)] : -1;
}

int FlexGridModel::viewRow(int gridRow) const {
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), gridRow);
  return found != rows_.end() && *found == gridRow ? static_cast<int>(found - rows_.begin()) : -1;
}

int FlexGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int FlexGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant FlexGridModel::data(const QModelIndex& index, int role) const {
  const int row = gridRow(index.row());
  if (row < 0) return {};
  switch (role) {
    case Qt::DisplayRole:
      return toQt(grid_.text(row, index.column()));
    case Qt::BackgroundRole: {
      const Colour colour = grid_.cellColour(row, index.column());
      return colour == colours::kWhite ? QVariant() : QBrush(toQt(colour));
    }
    case Qt::TextAlignmentRole:
      return alignment(index.column());
    case Qt::ToolTipRole:
      return display_.cellToolTip ? toQt(display_.cellToolTip(row, index.column())) : QString();
    default:
      return {};
  }
}

QVariant FlexGridModel::alignment(int column) const {
  const bool isNumeric = static_cast<std::size_t>(column) < numeric_.size() && numeric_[column];
  return QVariant::fromValue(Qt::AlignVCenter | (isNumeric ? Qt::AlignRight : Qt::AlignLeft));
}

QVariant FlexGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role == Qt::TextAlignmentRole && orientation == Qt::Horizontal) return alignment(section);
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return gridRow(section);
  return static_cast<std::size_t>(section) < headings_.size() ? toQt(headings_[section]) : QString();
}

}  // namespace orva::qt
