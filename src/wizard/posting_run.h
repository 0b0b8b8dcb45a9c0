#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "wizard/import_run.h"
#include "wizard/rule_walk.h"

namespace orva {

/// The current row of a posting run with the record that it becomes. A kind derives from it
/// to keep record sets and facts of its own.
class PostingRow : public RowView {
 public:
  using RowView::RowView;

  /// The record set that the run writes to. Valid while the run lasts.
  Recordset& record() const { return *record_; }
  bool isOpen() const { return record_ != nullptr; }
  void openRecord(std::string_view query);
  /// Sets a field of the current record.
  void set(std::string_view field, const Value& value) const { record_->set(field, value); }

 private:
  std::unique_ptr<Recordset> record_;
};

/// One posted column. Columns are stored in the order of their table.
template <class Row>
struct PostedColumn {
  /// Upper-cased heading of the workbook column. Empty: stored for every row. A heading that
  /// the sheet lacks leaves the target unset.
  std::string_view heading = {};
  /// Column of the target table.
  std::string_view target = {};
  /// Stores something else than the cell as it stands (a code, a company, two columns); also called for a
  /// blank cell. Null: the cell is copied, and a blank cell leaves the target as it is.
  void (*store)(Row& row, const Cell& cell, std::string_view target) = nullptr;
};

/// What a kind writes. Hooks may be null.
template <class Row>
struct PostingPlan {
  /// Query of the target record set (keyset cursor, pessimistic lock).
  std::string_view query;
  std::span<const PostedColumn<Row>> columns;
  /// Finds the record to change or starts a new one; false leaves the row out. Null: every
  /// row is a new record.
  bool (*start)(Row& row) = nullptr;
  /// After the columns, before the record is stored.
  void (*beforeSave)(Row& row) = nullptr;
  /// After the record is stored: what else the row brings about.
  void (*afterSave)(Row& row) = nullptr;
};

/// How the loop over the rows ended.
struct PostingEnd {
  /// Rows whose record is stored. They stay stored whatever follows.
  int rowsPosted = 0;
  /// The user closed the window: the rows after the current one were not posted.
  bool stopped = false;
  /// The failure that ended the run; its pending record is dropped.
  std::optional<ProviderError> failure = {};

  bool finished() const { return !stopped && !failure; }
};

/// The result that the wizard shows: "Imported successfully", the failure's description, or no text for a stopped run.
PostResult postResult(const PostingEnd& end);

/// Progress, scrolling and failure handling of a posting run, for any kind.
class PostingLoop {
 public:
  explicit PostingLoop(PostingRow& row);

  /// Opens the target. When that fails, `run` writes nothing and tells the failure.
  void open(std::string_view query) {
    attempt([&] { row_.openRecord(query); });
  }
  /// Calls `write(*this)` for each row until one throws `ProviderError` or the user closes the window.
  template <class Write>
  PostingEnd run(Write write) {
    const int rows = row_.run().rowCount();
    for (int index = 1; index <= rows && !end_.failure && !end_.stopped; ++index) {
      row_.begin(index);
      attempt([&] {
        // The next row must see what others have stored meanwhile.
        const LookupScope lookups(row_.run().connection());
        together_.emplace(row_.run().connection());
        write(*this);
      });
      together_.reset();
      rowDone(index);
    }
    return finish();
  }
  /// To be called by `write` once the row's record is stored, before what may still fail.
  void countStored() {
    together_->end();
    ++end_.rowsPosted;
  }

 private:
  template <class Step>
  void attempt(Step step) {
    try {
      step();
    } catch (const ProviderError& error) {
      fail(error);
    }
  }
  void rowDone(int row);
  void fail(const ProviderError& error);
  PostingEnd finish();

  PostingRow& row_;
  PostingEnd end_;
  std::optional<StoredTogether> together_;  ///< what the current row brings about
};

/// The posted columns of one sheet, with their positions.
template <class Row>
class BoundColumns {
 public:
  BoundColumns(std::span<const PostedColumn<Row>> columns, const RowView& row) {
    for (const PostedColumn<Row>& column : columns) {
      const int position = column.heading.empty() ? -1 : row.columnOf(column.heading);
      if (column.heading.empty() || position >= 0) bound_.push_back({&column, position});
    }
  }

  void store(Row& row) const {
    for (const Bound& bound : bound_) {
      const Cell cell = bound.position < 0 ? Cell{} : row.cellAt(bound.position);
      if (bound.column->store) {
        bound.column->store(row, cell, bound.column->target);
      } else if (!cell.isBlank()) {
        row.set(bound.column->target, Value(cell.value));
      }
    }
  }

 private:
  struct Bound {
    const PostedColumn<Row>* column;
    int position;
  };
  std::vector<Bound> bound_;
};

/// Writes one record a row. Rows that were stored before a failure or a stop stay stored.
template <class Row>
PostingEnd runPosting(Row& row, const PostingPlan<Row>& plan) {
  const BoundColumns<Row> columns(plan.columns, row);
  PostingLoop loop(row);
  loop.open(plan.query);
  return loop.run([&](PostingLoop& current) {
    if (plan.start && !plan.start(row)) return;
    if (!plan.start) row.record().addNew();
    columns.store(row);
    if (plan.beforeSave) plan.beforeSave(row);
    row.record().update();
    current.countStored();
    if (plan.afterSave) plan.afterSave(row);
  });
}

}  // namespace orva
