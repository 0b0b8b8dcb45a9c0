#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/workbook.h"

namespace orva {

/// A sheet in memory. Blank rows at the end are the test's own affair.
class FakeSheet : public Sheet {
 public:
  using Rows = std::vector<std::vector<OutputCell>>;

  FakeSheet(Rows rows, HeaderRow header);

  int rowCount() const override { return static_cast<int>(rows_.size()); }
  int columnCount() const override { return columns_; }
  std::string columnName(int column) const override;
  CellKind kind(int row, int column) const override { return cell(row, column).kind; }
  std::string text(int row, int column) const override { return cell(row, column).text; }

 private:
  const OutputCell& cell(int row, int column) const;

  Rows rows_;
  std::vector<OutputCell> header_;
  int columns_ = 0;
};

/// Workbooks in memory, one sheet each.
class FakeWorkbooks : public Workbooks {
 public:
  std::unique_ptr<Sheet> openSheet(const std::string& path, std::string_view sheetName, HeaderRow header) override;
  void write(const std::string& path, std::string_view sheetName,
             const std::vector<std::vector<OutputCell>>& rows) override;

  void put(const std::string& path, std::string_view sheetName, FakeSheet::Rows rows);
  /// The same with text cells only; an empty text is a blank cell.
  void putTexts(const std::string& path, std::string_view sheetName, const std::vector<std::vector<std::string>>& rows);
  /// Rows of a workbook that was put or written.
  const FakeSheet::Rows& rows(const std::string& path) const { return books_.at(path).rows; }
  /// Every later `openSheet` and `write` fails like this, until `heal`.
  void failWith(WorkbookFault fault, const std::string& text) { fault_ = WorkbookError(fault, text); }
  void heal() { fault_.reset(); }

  int opened = 0;

 private:
  struct Book {
    std::string sheetName;
    FakeSheet::Rows rows;
  };

  std::map<std::string, Book> books_;
  std::optional<WorkbookError> fault_;
};

/// Short cells for tables in tests.
inline OutputCell textCell(std::string text) { return {CellKind::kText, std::move(text)}; }
inline OutputCell numberCell(std::string text) { return {CellKind::kNumber, std::move(text)}; }
inline OutputCell dateCell(std::string text) { return {CellKind::kDate, std::move(text)}; }
inline OutputCell errorCell(std::string text = "#DIV/0!") { return {CellKind::kError, std::move(text)}; }
inline OutputCell blankCell() { return {}; }

}  // namespace orva
