#include "platform/qt/list_view_model.h"

#include <QBrush>
#include <QFont>

#include "platform/qt/text.h"

namespace orva::qt {

bool ListViewModel::refresh() {
  const int lines = list_.count();
  const int columns = static_cast<int>(list_.columns().size());
  if (lines == shownLines_ && columns == shownColumns_) {
    if (lines > 0 && columns > 0) Q_EMIT dataChanged(index(0, 0), index(lines - 1, columns - 1));
    return false;
  }
  beginResetModel();
  shownLines_ = lines;
  shownColumns_ = columns;
  endResetModel();
  return true;
}

int ListViewModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shownLines_; }

int ListViewModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shownColumns_; }

QVariant ListViewModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= list_.count()) return {};
  const ListView::Line& line = list_.line(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return static_cast<std::size_t>(index.column()) < line.cells.size() ? toQt(line.cells[index.column()])
                                                                          : QString();
    case Qt::CheckStateRole:
      return index.column() == 0 ? QVariant(line.ticked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::ForegroundRole:
      return line.foreColour == colours::kBlack ? QVariant() : QBrush(toQt(line.foreColour));
    case Qt::FontRole: {
      QFont font;
      font.setBold(line.bold);
      return font;
    }
    default:
      return {};
  }
}

QVariant ListViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || static_cast<std::size_t>(section) >= list_.columns().size()) return {};
  if (role == Qt::DisplayRole) return toQt(list_.columns()[section].heading);
  if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags ListViewModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return index.column() == 0 ? plain | Qt::ItemIsUserCheckable : plain;
}

bool ListViewModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid() || index.row() >= list_.count()) return false;
  if (tickWanted_) tickWanted_(index.row(), value.toInt() == Qt::Checked);
  // Shows the old tick again when the screen kept it.
  Q_EMIT dataChanged(index, index);
  return true;
}

}  // namespace orva::qt
