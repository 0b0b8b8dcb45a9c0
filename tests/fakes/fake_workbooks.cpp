#include "fakes/fake_workbooks.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva {

FakeSheet::FakeSheet(Rows rows, HeaderRow header) : rows_(std::move(rows)) {
  for (const auto& row : rows_) columns_ = std::max(columns_, static_cast<int>(row.size()));
  if (header == HeaderRow::kYes && !rows_.empty()) {
    header_ = rows_.front();
    rows_.erase(rows_.begin());
  }
}

std::string FakeSheet::columnName(int column) const {
  if (column < static_cast<int>(header_.size())) return header_[static_cast<std::size_t>(column)].text;
  return "F" + std::to_string(column + 1);
}

const OutputCell& FakeSheet::cell(int row, int column) const {
  static const OutputCell kBlank;
  const auto& cells = rows_.at(static_cast<std::size_t>(row));
  return column >= 0 && column < static_cast<int>(cells.size()) ? cells[static_cast<std::size_t>(column)] : kBlank;
}

std::unique_ptr<Sheet> FakeWorkbooks::openSheet(const std::string& path, std::string_view sheetName, HeaderRow header) {
  ++opened;
  if (fault_) throw *fault_;
  const auto found = books_.find(path);
  if (found == books_.end()) throw WorkbookError(WorkbookFault::kCannotOpen, path + " cannot be opened.");
  if (!equalsNoCase(trim(sheetName), trim(found->second.sheetName))) {
    throw WorkbookError(WorkbookFault::kNoSuchSheet, path + " has no sheet '" + std::string(sheetName) + "', only '" +
                                                         found->second.sheetName + "'.");
  }
  return std::make_unique<FakeSheet>(found->second.rows, header);
}

void FakeWorkbooks::write(const std::string& path, std::string_view sheetName,
                          const std::vector<std::vector<OutputCell>>& rows) {
  if (fault_) throw *fault_;
  put(path, sheetName, rows);
}

void FakeWorkbooks::put(const std::string& path, std::string_view sheetName, FakeSheet::Rows rows) {
  books_[path] = {.sheetName = std::string(sheetName), .rows = std::move(rows)};
}

void FakeWorkbooks::putTexts(const std::string& path, std::string_view sheetName,
                             const std::vector<std::vector<std::string>>& rows) {
  FakeSheet::Rows cells;
  for (const auto& row : rows) {
    auto& target = cells.emplace_back();
    for (const std::string& text : row) target.push_back(text.empty() ? blankCell() : textCell(text));
  }
  put(path, sheetName, std::move(cells));
}

}  // namespace orva
