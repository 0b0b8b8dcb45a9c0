#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// The workbook service: Excel 97-2003 files, one sheet at a time, as rows of
/// text cells.

/// Why a workbook or sheet could not be opened.
enum class WorkbookFault {
  kCannotOpen,   ///< missing, no permission, held by another program
  kNotWorkbook,  ///< not an Excel 97-2003 file: the text says what it looks like
  kOldFormat,    ///< Excel 5/95 or older
  kEncrypted,    ///< needs a password to open
  kDamaged,      ///< cut off or inconsistent
  kNoSuchSheet,  ///< the text tells the sheets that are there
};

/// The one error of the service. `what()` is a whole sentence that names the
/// file and what is wrong with it.
class WorkbookError : public std::runtime_error {
 public:
  WorkbookError(WorkbookFault fault, const std::string& text) : std::runtime_error(text), fault_(fault) {}
  WorkbookFault fault() const { return fault_; }

 private:
  WorkbookFault fault_;
};

enum class CellKind { kBlank, kText, kNumber, kDate, kBoolean, kError };

/// Whether the first row gives the column names or is data like any other.
enum class HeaderRow { kNo, kYes };

/// One sheet, read whole. Rows and columns count from 0; with `HeaderRow::kYes`
/// row 0 is the row after the header. Rows and columns after the last filled
/// cell do not count. Memory follows the file's size, not declared sizes.
class Sheet {
 public:
  Sheet() = default;
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;
  virtual ~Sheet() = default;

  virtual int rowCount() const = 0;
  virtual int columnCount() const = 0;
  /// Name of a column: the header cell's text with `HeaderRow::kYes`, else "F1", "F2", ...
  virtual std::string columnName(int column) const = 0;
  virtual CellKind kind(int row, int column) const = 0;
  /// Text as stored; numbers with up to 15 significant digits, no exponent, no
  /// trailing zeros; dates dd/mm/yyyy (a time is dropped); TRUE or FALSE; the
  /// error text ("#DIV/0!") for an error cell; empty for a blank cell.
  virtual std::string text(int row, int column) const = 0;
};

/// A cell to be written: text, number (with its decimals as text), or date in
/// day/month/year.
struct OutputCell {
  CellKind kind = CellKind::kBlank;
  std::string text;
};

class Workbooks {
 public:
  Workbooks() = default;
  Workbooks(const Workbooks&) = delete;
  Workbooks& operator=(const Workbooks&) = delete;
  virtual ~Workbooks() = default;

  /// Reads one sheet; names compare trimmed and without regard to case. Throws
  /// `WorkbookError`. The file is closed again when the call returns.
  virtual std::unique_ptr<Sheet> openSheet(const std::string& path, std::string_view sheetName, HeaderRow header) = 0;
  /// Writes a new workbook with one sheet, replacing an existing file only
  /// when everything was written. Throws `WorkbookError` (kCannotOpen).
  virtual void write(const std::string& path, std::string_view sheetName,
                     const std::vector<std::vector<OutputCell>>& rows) = 0;
};

}  // namespace orva
