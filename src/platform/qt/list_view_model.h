#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "platform/controls.h"

namespace orva::qt {

/// The lines of a `ListView` for a view of the toolkit. Reads the control itself, keeps no copy.
class ListViewModel : public QAbstractTableModel {
 public:
  ListViewModel(ListView& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

  /// Runs when the user wants a line ticked or not; what becomes of it is the screen's to decide.
  void onTick(std::function<void(int line, bool ticked)> handler) { tickWanted_ = std::move(handler); }
  /// Tells the views what changed in the control since the last call. True when lines or
  /// columns were exchanged and not only their looks.
  bool refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  ListView& list_;
  std::function<void(int line, bool ticked)> tickWanted_;
  int shownLines_ = 0;
  int shownColumns_ = 0;
};

}  // namespace orva::qt
