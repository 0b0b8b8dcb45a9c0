#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/workbook.h"
#include "platform/xls/formats_and_dates.h"
#include "platform/xls/texts.h"

namespace orva::xls {

/// One filled cell in twelve bytes.
class Cell {
 public:
  static Cell number(double value) { return Cell(CellKind::kNumber, std::bit_cast<std::uint64_t>(value)); }
  static Cell date(double serial) { return Cell(CellKind::kDate, std::bit_cast<std::uint64_t>(serial)); }
  static Cell text(TextNumber number) { return Cell(CellKind::kText, number); }
  static Cell boolean(bool value) { return Cell(CellKind::kBoolean, value); }
  static Cell error(std::uint8_t code) { return Cell(CellKind::kError, code); }

  void place(std::uint16_t row, std::uint8_t column) { row_ = row, column_ = column; }
  int row() const { return row_; }
  int column() const { return column_; }
  /// Order of the cells in a sheet: by row, then by column.
  std::uint32_t key() const { return std::uint32_t{row_} << 8 | column_; }

  CellKind kind() const { return static_cast<CellKind>(kind_); }
  double asDouble() const { return std::bit_cast<double>(std::uint64_t{high_} << 32 | low_); }
  TextNumber asText() const { return low_; }
  bool asBoolean() const { return low_ != 0; }
  std::uint8_t asErrorCode() const { return static_cast<std::uint8_t>(low_); }

 private:
  Cell(CellKind kind, std::uint64_t bits)
      : low_(static_cast<std::uint32_t>(bits)),
        high_(static_cast<std::uint32_t>(bits >> 32)),
        kind_(static_cast<std::uint8_t>(kind)) {}

  std::uint32_t low_, high_;
  std::uint16_t row_ = 0;
  std::uint8_t column_ = 0;
  std::uint8_t kind_;
};

/// The filled cells of one sheet, whatever size the sheet claims to have.
class CellTable {
 public:
  CellTable(std::shared_ptr<const TextTable> texts, DateSystem dates) : texts_(std::move(texts)), dates_(dates) {}

  /// Room for so many cells, to be filled with `add`.
  void reserve(std::size_t cells) { cells_.reserve(cells); }
  void add(std::uint16_t row, std::uint8_t column, Cell cell);
  /// Puts the cells in order once all are added. Of cells at one place the last counts.
  void finish();

  const std::vector<Cell>& cells() const { return cells_; }
  /// Null for a blank cell, also for one outside the sheet.
  const Cell* find(int row, int column) const;
  /// Rows and columns up to the last filled cell. A text of blanks alone fills no cell.
  int rowCount() const { return rowCount_; }
  int columnCount() const { return columnCount_; }

  std::string_view textOf(const Cell& cell) const { return (*texts_)[cell.asText()]; }
  DateSystem dateSystem() const { return dates_; }

 private:
  void sort();
  void measure();

  std::shared_ptr<const TextTable> texts_;
  DateSystem dates_;
  std::vector<Cell> cells_;
  std::vector<std::uint32_t> rowStarts_;  ///< first cell of each row, one more at the end
  int rowCount_ = 0;
  int columnCount_ = 0;
};

}  // namespace orva::xls
