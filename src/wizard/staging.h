#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/values/text_table.h"
#include "platform/workbook.h"
#include "wizard/catalogue/field_row.h"
#include "wizard/progress.h"

namespace orva {

/// Why a path cannot be an Excel workbook of the importer; empty when it can.
std::string_view workbookPathFault(std::string_view path);

/// Where a workbook keeps its rows.
struct WorkbookSheet {
  std::string_view name = {};
  /// Without a header row the column names are the first row.
  HeaderRow header = HeaderRow::kNo;
  /// What the user is told of a workbook that lacks the sheet.
  std::string_view missing = {};
};

inline constexpr WorkbookSheet kAssetSheet{
    .name = "Asset",
    .header = HeaderRow::kNo,
    .missing = "The excel file you selected must have a sheet named 'Asset' for importing Asset details"};

/// Opens a sheet. Throws `WorkbookError`; `sheetFaultText` words it.
std::unique_ptr<Sheet> openSheet(Workbooks& workbooks, const std::string& path, const WorkbookSheet& sheet);
std::string sheetFaultText(const WorkbookError& error, const WorkbookSheet& sheet = kAssetSheet);
inline std::unique_ptr<Sheet> openAssetSheet(Workbooks& workbooks, const std::string& path) {
  return openSheet(workbooks, path, kAssetSheet);
}

/// Number of rows from `first` to the last that is not wholly blank.
int filledRows(const Sheet& sheet, int first);

/// What is copied from the sheet.
struct StagingOrder {
  const Catalogue& catalogue;
  /// Headings of empty columns to add after the workbook's columns.
  std::span<const std::string_view> ownColumns = {};
  /// Headings to copy when the sheet has them, whatever the catalogue says.
  std::span<const std::string_view> sheetColumns = {};
  /// Add up the "Qty" column: as many assets will be made.
  bool countsUnits = false;
  /// How the sheet was opened.
  HeaderRow header = HeaderRow::kNo;
};

/// A cell that has no value (an error cell), with the column's Excel name and the number of its row (1 is the first
/// after the header).
struct ConversionFailure {
  std::string column;
  int row = 0;
};
std::string conversionFailureText(const ConversionFailure& failure);

/// The staged rows: headings in row 0 (the Excel names of the ticked lines, in the workbook's order, then the own
/// columns), then one row for every workbook row up to the last that is not wholly blank.
struct Staged {
  TextTable table;
  int records = 0;
  /// Sum of the units when they are counted; a row without quantity is one unit.
  std::int64_t units = 0;
  /// Set when copying stopped; the table is then of no use.
  std::optional<ConversionFailure> failure = {};
  /// The user closed the window.
  bool stopped = false;
};

/// Copies the ticked columns. Amounts get two decimals and quantities lose their fraction; text that is no number,
/// and an amount of more than two decimals, is copied as it stands so that validation can report it.
Staged DumpExlData(const Sheet& sheet, const StagingOrder& order, RunProgress& progress);

/// The cell as it is staged under an Excel name.
std::string normalisedCell(std::string_view excelName, const std::string& text);

}  // namespace orva
