#include "platform/xls/xls_workbooks.h"

#include <algorithm>

#include "platform/xls/cell_text.h"
#include "platform/xls/file_bytes.h"
#include "platform/xls/refusal.h"
#include "platform/xls/workbook_reader.h"
#include "platform/xls/xls_writer.h"

namespace orva {
namespace {

class XlsSheet : public Sheet {
 public:
  XlsSheet(xls::CellTable cells, HeaderRow header)
      : cells_(std::move(cells)), firstRow_(header == HeaderRow::kYes ? 1 : 0) {}

  int rowCount() const override { return std::max(0, cells_.rowCount() - firstRow_); }
  int columnCount() const override { return cells_.columnCount(); }
  std::string columnName(int column) const override {
    const std::string name = firstRow_ == 1 ? textAt(0, column) : std::string();
    // A column without heading is named as if there were no header row.
    return name.empty() ? "F" + std::to_string(column + 1) : name;
  }
  CellKind kind(int row, int column) const override {
    const xls::Cell* cell = row < 0 ? nullptr : cells_.find(row + firstRow_, column);
    return cell == nullptr ? CellKind::kBlank : cell->kind();
  }
  std::string text(int row, int column) const override {
    return row < 0 ? std::string() : textAt(row + firstRow_, column);
  }

 private:
  std::string textAt(int row, int column) const {
    const xls::Cell* cell = cells_.find(row, column);
    return cell == nullptr ? std::string() : xls::cellText(cells_, *cell);
  }

  xls::CellTable cells_;
  int firstRow_;
};

}  // namespace

std::unique_ptr<Sheet> XlsWorkbooks::openSheet(const std::string& path, std::string_view sheetName, HeaderRow header) {
  const xls::Bytes file = xls::readWorkbookFile(path);
  try {
    xls::WorkbookReader workbook(file);
    return std::make_unique<XlsSheet>(workbook.read(workbook.find(sheetName)), header);
  } catch (const xls::Refusal& refusal) {
    throw WorkbookError(refusal.fault(), "The file \"" + path + "\" " + refusal.reason());
  }
}

void XlsWorkbooks::write(const std::string& path, std::string_view sheetName,
                         const std::vector<std::vector<OutputCell>>& rows) {
  try {
    xls::writeWorkbookFile(path, xls::workbookBytes(sheetName, rows));
  } catch (const xls::Refusal& refusal) {
    throw WorkbookError(refusal.fault(), "The file \"" + path + "\" " + refusal.reason());
  }
}

}  // namespace orva
