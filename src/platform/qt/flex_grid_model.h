#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"

namespace orva::qt {

/// The cells of a `FlexGrid` for a view of the toolkit. Reads the control itself and keeps
/// no cell; of each row that is not hidden it keeps the number, so that a filter over a full
/// sheet costs one pass. The grid's row 0 is the heading.
class FlexGridModel : public QAbstractTableModel {
 public:
  struct Display {
    std::function<std::string(int row, int column)> cellToolTip = {};
    std::function<bool(std::string_view heading)> isNumeric = {};
  };

  FlexGridModel(const FlexGrid& grid, Display display, QObject* parent)
      : QAbstractTableModel(parent), grid_(grid), display_(std::move(display)) {}

  enum class Change { kCells, kRowsAdded, kEverything };
  /// Tells the views what changed in the control since the last call.
  Change refresh();

  /// The grid's row behind a row of the view, and back; -1 when it is hidden or absent.
  int gridRow(int viewRow) const;
  int viewRow(int gridRow) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool sameHeadings() const;
  std::vector<int> visibleRows() const;
  void exchange(std::vector<int> rows);
  QVariant alignment(int column) const;

  const FlexGrid& grid_;
  Display display_;
  /// Numbers of the grid's rows in the view's order, ascending.
  std::vector<int> rows_;
  std::vector<std::string> headings_;
  std::vector<bool> numeric_;
};

}  // namespace orva::qt
