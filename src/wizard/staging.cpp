#include "wizard/staging.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"
#include "wizard/header_check.h"

namespace orva {
namespace {

/// An amount with a rule of its own for more than two decimals keeps them, so that the rule can report it.
enum class Normalising { kNone, kAmount, kCheckedAmount, kQuantity };

struct StagedColumn {
  int source = 0;
  std::string heading;
  Normalising normalising = Normalising::kNone;
};

Normalising normalisingOf(std::string_view excelName) {
  constexpr std::pair<std::string_view, Normalising> kColumns[] = {
      {"QTY", Normalising::kQuantity},   {"COST", Normalising::kCheckedAmount}, {"ACCDEP", Normalising::kCheckedAmount},
      {"ACCDEP1", Normalising::kAmount}, {"ACCDEP2", Normalising::kAmount},     {"SALVAGEVALUE", Normalising::kAmount}};
  for (const auto& [name, normalising] : kColumns) {
    if (equalsNoCase(excelName, name)) return normalising;
  }
  return Normalising::kNone;
}

std::string normalised(Normalising normalising, const std::string& text) {
  if (normalising == Normalising::kQuantity) return text.substr(0, text.find('.'));
  const bool isFormatted = normalising == Normalising::kAmount ||
                           (normalising == Normalising::kCheckedAmount && !hasMoreThanTwoDecimals(trim(text)));
  return isFormatted ? formatTwoDecimals(text) : text;
}

/// The ticked columns that the sheet has and the kind's columns of the sheet, in the sheet's order.
std::vector<StagedColumn> stagedColumns(const StagingOrder& order, const std::vector<std::string>& header) {
  std::vector<StagedColumn> columns;
  for (const FieldRow& field : order.catalogue) {
    const bool isStaged = field.ticked && findField(order.catalogue, field.excelName) == &field;
    const int source = isStaged ? headerColumn(header, field.excelName) : -1;
    if (source >= 0) columns.push_back({source, field.excelName, normalisingOf(trim(field.excelName))});
  }
  for (const std::string_view heading : order.sheetColumns) {
    const int source = findField(order.catalogue, heading) ? -1 : headerColumn(header, heading);
    if (source >= 0) columns.push_back({source, std::string(heading), normalisingOf(heading)});
  }
  std::stable_sort(columns.begin(), columns.end(),
                   [](const StagedColumn& a, const StagedColumn& b) { return a.source < b.source; });
  return columns;
}

bool isBlankRow(const Sheet& sheet, int row) {
  for (int column = 0; column < sheet.columnCount(); ++column) {
    if (sheet.kind(row, column) != CellKind::kBlank && !trimSpace(sheet.text(row, column)).empty()) return false;
  }
  return true;
}

std::int64_t unitsIn(const std::string& quantity) {
  const std::string_view whole = trim(quantity);
  std::int64_t units = 0;
  if (whole.empty()) return 1;
  std::from_chars(whole.data(), whole.data() + whole.size(), units);
  return units;
}

class Copier {
 public:
  Copier(const Sheet& sheet, const StagingOrder& order, RunProgress& progress)
      : sheet_(sheet),
        progress_(progress),
        columns_(stagedColumns(order, headerNames(sheet, order.header))),
        quantityColumn_(headerColumn(headerNames(sheet, order.header), "QTY")),
        firstRow_(order.header == HeaderRow::kNo ? 1 : 0),
        countsUnits_(order.countsUnits) {
    staged_.table.reset(static_cast<int>(columns_.size() + order.ownColumns.size()));
    staged_.table.addRow();
    int position = 0;
    for (const StagedColumn& column : columns_) staged_.table.setCell(0, position++, column.heading);
    for (const std::string_view heading : order.ownColumns) staged_.table.setCell(0, position++, heading);
  }

  Staged copyAll() {
    const int last = filledRows(sheet_, firstRow_);
    progress_.begin("Dumping Data from Excel. Please Wait ......", last);
    for (int row = 1; row <= last && !staged_.failure && !staged_.stopped; ++row) {
      copyRow(row);
      progress_.rowDone(row);
      staged_.stopped = progress_.stopRequested();
    }
    return std::move(staged_);
  }

 private:
  /// `row` counts from 1, the first row after the header.
  void copyRow(int row) {
    const int source = row - 1 + firstRow_;
    const int target = staged_.table.addRow();
    const bool showsProgress = progress_.repaintDue();
    for (std::size_t position = 0; position < columns_.size(); ++position) {
      const StagedColumn& column = columns_[position];
      if (showsProgress) progress_.cell("Dumping Row : ", row, column.heading);
      if (sheet_.kind(source, column.source) == CellKind::kError) {
        staged_.failure = ConversionFailure{column.heading, row};
        return;
      }
      staged_.table.setCell(target, static_cast<int>(position),
                            normalised(column.normalising, sheet_.text(source, column.source)));
    }
    ++staged_.records;
    if (countsUnits_) staged_.units += quantityColumn_ < 0 ? 1 : unitsIn(sheet_.text(source, quantityColumn_));
  }

  const Sheet& sheet_;
  RunProgress& progress_;
  std::vector<StagedColumn> columns_;
  int quantityColumn_;
  int firstRow_;
  bool countsUnits_;
  Staged staged_;
};

}  // namespace

std::string_view workbookPathFault(std::string_view path) {
  if (trim(path).empty()) return "Please select an excel file";
  return endsWithNoCase(trim(path), "xls") ? std::string_view() : "Please select only an Excel file";
}

int filledRows(const Sheet& sheet, int first) {
  int row = sheet.rowCount() - 1;
  while (row >= first && isBlankRow(sheet, row)) --row;
  return std::max(row - first + 1, 0);
}

std::unique_ptr<Sheet> openSheet(Workbooks& workbooks, const std::string& path, const WorkbookSheet& sheet) {
  return workbooks.openSheet(path, sheet.name, sheet.header);
}

std::string sheetFaultText(const WorkbookError& error, const WorkbookSheet& sheet) {
  return error.fault() == WorkbookFault::kNoSuchSheet ? std::string(sheet.missing) : error.what();
}

std::string conversionFailureText(const ConversionFailure& failure) {
  return "Data type not matching in Column " + failure.column + " Row no. " + std::to_string(failure.row) +
         "\n\nPlease Check if the Data type is same throughout the column";
}

Staged DumpExlData(const Sheet& sheet, const StagingOrder& order, RunProgress& progress) {
  return Copier(sheet, order, progress).copyAll();
}

std::string normalisedCell(std::string_view excelName, const std::string& text) {
  return normalised(normalisingOf(excelName), text);
}

}  // namespace orva
