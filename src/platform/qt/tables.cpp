#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <numeric>
#include <vector>

#include "platform/qt/bind.h"
#include "platform/qt/flex_grid_model.h"
#include "platform/qt/list_view_model.h"
#include "platform/qt/text.h"

namespace orva::qt {
namespace {

/// Keeps the columns of a list view at least as wide as the control asks and as their texts need, and shares out
/// what the window has left in the same proportion.
class ColumnSharing : public QObject {
 public:
  ColumnSharing(const ListView& list, QTreeView* view) : QObject(view), list_(list), view_(view) {
    view->viewport()->installEventFilter(this);
  }

  /// To be called when the lines were exchanged.
  void measure() {
    // Before the first showing, the fonts and the height of a line would be those of no style.
    view_->ensurePolished();
    view_->header()->ensurePolished();
    wanted_.clear();
    const int count = std::min(static_cast<int>(list_.columns().size()), view_->header()->count());
    for (int column = 0; column < count; ++column) wanted_.push_back(widthOf(column));
    share();
  }

  void share() {
    const int wanted = std::accumulate(wanted_.begin(), wanted_.end(), 0);
    if (wanted == 0) return;
    const int room = std::max(view_->viewport()->width(), wanted);
    int used = 0;
    for (std::size_t column = 0; column < wanted_.size(); ++column) {
      const bool isLast = column + 1 == wanted_.size();
      const int width = isLast ? room - used : wanted_[column] * room / wanted;
      view_->header()->resizeSection(static_cast<int>(column), width);
      used += width;
    }
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) share();
    return QObject::eventFilter(watched, event);
  }

 private:
  /// Lines may turn bold, which must not cut them.
  int widthOf(int column) const {
    constexpr int kMargins = 16;
    QFont bold = view_->font();
    bold.setBold(true);
    const QFontMetrics cells(bold);
    const QFontMetrics heads(view_->header()->font());
    const ListView::Column& asked = list_.columns()[static_cast<std::size_t>(column)];
    int width = heads.horizontalAdvance(toQt(asked.heading));
    for (int line = 0; line < list_.count(); ++line) {
      const auto& texts = list_.line(line).cells;
      if (static_cast<std::size_t>(column) < texts.size()) {
        width = std::max(width, cells.horizontalAdvance(toQt(texts[static_cast<std::size_t>(column)])));
      }
    }
    const int tick = column == 0 ? view_->style()->pixelMetric(QStyle::PM_IndicatorWidth) : 0;
    return std::max(pixelsOfTwips(asked.width), width + tick + kMargins);
  }

  const ListView& list_;
  QTreeView* view_;
  std::vector<int> wanted_;
};

/// Space changes the tick of the line wherever the cursor stands in it.
class TickBySpace : public QObject {
 public:
  explicit TickBySpace(QTreeView* view) : QObject(view), view_(view) { view->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    const QModelIndex line = view_->currentIndex().siblingAtColumn(0);
    if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space || !line.isValid()) {
      return QObject::eventFilter(watched, event);
    }
    const bool ticked = line.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    view_->model()->setData(line, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    return true;
  }

 private:
  QTreeView* view_;
};

/// Marks the chosen cell by a frame, so that its colour, which says whether the value is
/// accepted, stays to be seen.
class FramedCell : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem plain(option);
    const bool chosen = (plain.state & QStyle::State_Selected) != 0;
    plain.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
    QStyledItemDelegate::paint(painter, plain, index);
    if (!chosen) return;
    painter->save();
    painter->setPen(QPen(option.palette.color(QPalette::Highlight), 2));
    painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    painter->restore();
  }
};

/// Tells when the mouse leaves the cells.
class LeaveWatch : public QObject {
 public:
  LeaveWatch(QWidget* watched, Handler left) : QObject(watched), left_(std::move(left)) {
    watched->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Leave) left_();
    return QObject::eventFilter(watched, event);
  }

 private:
  Handler left_;
};

constexpr int kMeasuredRows = 100;
constexpr int kNarrowest = 64;
constexpr int kWidest = 360;

/// Fits the columns to the headings and the first rows; measuring a full sheet would take seconds.
void fitColumns(QTableView* view, const FlexGridModel& model) {
  const QFontMetrics cellMetrics(view->font());
  const QFontMetrics headMetrics(view->horizontalHeader()->font());
  for (int column = 0; column < model.columnCount(); ++column) {
    int width = headMetrics.horizontalAdvance(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    for (int row = 0; row < std::min(kMeasuredRows, model.rowCount()); ++row) {
      const QString text = model.data(model.index(row, column), Qt::DisplayRole).toString();
      width = std::max(width, cellMetrics.horizontalAdvance(text));
    }
    view->setColumnWidth(column, std::clamp(width + 20, kNarrowest, kWidest));
  }
}

void prepareGrid(QTableView* view) {
  view->setItemDelegate(new FramedCell(view));
  view->setSelectionMode(QAbstractItemView::SingleSelection);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setTabKeyNavigation(false);
  view->setWordWrap(false);
  view->setMouseTracking(true);
  view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view->horizontalHeader()->setHighlightSections(false);
  view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  view->verticalHeader()->setHighlightSections(false);
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 8);
}

void connectPointing(QTableView* view, const FlexGridModel* model, const std::function<void(int, int)>& pointed) {
  if (!pointed) return;
  const auto point = [model, pointed](const QModelIndex& index) {
    pointed(model->gridRow(index.row()), index.isValid() ? index.column() : -1);
  };
  QObject::connect(view, &QTableView::entered, view, point);
  QObject::connect(view->selectionModel(), &QItemSelectionModel::currentChanged, view, point);
  QObject::connect(view, &QTableView::viewportEntered, view, [pointed] { pointed(-1, -1); });
  new LeaveWatch(view->viewport(), [view, point] { point(view->currentIndex()); });
}

}  // namespace

void bind(ScreenRefresh& refresh, ListView& list, QTreeView* widget,
          std::function<void(int line, bool ticked)> tickWanted) {
  auto* model = new ListViewModel(list, widget);
  model->onTick(std::move(tickWanted));
  widget->setModel(model);
  widget->setRootIsDecorated(false);
  widget->setUniformRowHeights(true);
  widget->setAllColumnsShowFocus(true);
  widget->header()->setSectionsMovable(false);
  widget->header()->setStretchLastSection(false);
  new TickBySpace(widget);
  auto* sharing = new ColumnSharing(list, widget);
  refresh.watch(list, widget, [&list, widget, model, sharing] {
    if (model->refresh()) sharing->measure();
    showState(list, widget);
  });
}

void bind(ScreenRefresh& refresh, FlexGrid& grid, QTableView* widget, FlexGridHandlers handlers) {
  auto* model = new FlexGridModel(grid, {std::move(handlers.cellToolTip), std::move(handlers.isNumeric)}, widget);
  widget->setModel(model);
  prepareGrid(widget);
  connectPointing(widget, model, handlers.pointed);
  refresh.watch(grid, widget, [&grid, widget, model, shown = 0]() mutable {
    const bool wasEmpty = model->rowCount() == 0;
    const int columnsBefore = model->columnCount();
    const auto change = model->refresh();
    if (wasEmpty || columnsBefore != model->columnCount()) fitColumns(widget, *model);
    if (change == FlexGridModel::Change::kEverything) shown = 0;
    if (grid.shownRow() != shown) {
      shown = grid.shownRow();
      widget->scrollTo(model->index(model->viewRow(shown), 0));
    }
    showState(grid, widget);
  });
}

}  // namespace orva::qt
