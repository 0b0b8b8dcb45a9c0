#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QStackedWidget>
#include <QTableView>
#include <QTreeView>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/qt/screen_refresh.h"

namespace orva::qt {

/// A handler of the screen; an empty one is not called.
using Handler = std::function<void()>;

/// What every widget shows of its control: enabled and visible state, tool tip.
void showState(const Control& control, QWidget* widget);

/// Caption, tool tip, colours, enabled and visible state.
void bind(ScreenRefresh& refresh, Label& label, QLabel* widget);
/// Caption as the title where `widget` has one; the whole group is enabled and shown as one.
void bind(ScreenRefresh& refresh, Frame& frame, QWidget* widget);
/// Each frame is a page of `pages`, in the same order; the one whose frame is visible is
/// seen. When it comes up, the focus goes to the page's focus proxy.
void bindPages(ScreenRefresh& refresh, const std::vector<Frame*>& frames, QStackedWidget* pages);
void bind(ScreenRefresh& refresh, Button& button, QAbstractButton* widget, Handler clicked);
/// The control carries the new value before `clicked` runs.
void bind(ScreenRefresh& refresh, TickControl& tick, QAbstractButton* widget, Handler clicked);
/// The control carries the typed text before `changed` runs.
void bind(ScreenRefresh& refresh, TextBox& box, QLineEdit* widget, Handler changed = {});
/// A text box that only shows.
void bind(ScreenRefresh& refresh, TextBox& box, QLabel* widget);

struct ListBoxHandlers {
  /// After the selection moved, by mouse or arrow keys.
  Handler clicked = {};
  /// Enter or a double click on an item.
  Handler entered = {};
  /// Shown while the list has no item.
  QWidget* emptyHint = nullptr;
};
void bind(ScreenRefresh& refresh, ListBox& list, QListWidget* widget, ListBoxHandlers handlers);
/// The list as a drop-down; `chosen` runs after the user chose an item.
void bind(ScreenRefresh& refresh, ListBox& list, QComboBox* widget, Handler chosen);
void bind(ScreenRefresh& refresh, ProgressBar& bar, QProgressBar* widget);

/// `tickWanted` runs when the user wants a line ticked or not; the screen sets the tick.
void bind(ScreenRefresh& refresh, ListView& list, QTreeView* widget,
          std::function<void(int line, bool ticked)> tickWanted);

struct FlexGridHandlers {
  /// The cell under the mouse, or the one that the arrow keys reached; -1, -1 outside the cells.
  std::function<void(int row, int column)> pointed = {};
  /// Text shown beside the mouse on a cell; empty for none.
  std::function<std::string(int row, int column)> cellToolTip = {};
  /// Whether the column of a heading holds numbers, which stand at the right.
  std::function<bool(std::string_view heading)> isNumeric = {};
};
void bind(ScreenRefresh& refresh, FlexGrid& grid, QTableView* widget, FlexGridHandlers handlers = {});

}  // namespace orva::qt
