#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/xls/cell_table.h"
#include "platform/xls/compound_file.h"
#include "platform/xls/refusal.h"

namespace orva::xls {

/// A worksheet as the workbook lists it; charts and macro sheets are left out.
struct SheetEntry {
  std::string name;
  std::uint32_t offset = 0;
};

/// A workbook of which sheets can be read one by one. All members throw
/// `Refusal` for files that cannot be read.
class WorkbookReader {
 public:
  /// Reads what stands before the sheets. `file` must stay alive with this object.
  explicit WorkbookReader(ByteView file);

  /// All worksheets in order, the hidden ones too.
  const std::vector<SheetEntry>& sheets() const { return sheets_; }
  /// The sheet of exactly that name; else the first whose name is equal when
  /// trimmed and compared without regard to case; else refused.
  const SheetEntry& find(std::string_view name) const;
  /// The cells of a sheet. They share the workbook's texts, but not the file.
  CellTable read(const SheetEntry& sheet);

 private:
  void readGlobals();
  void readGlobal(RecordStream& records, const Record& record);
  void readSheetEntry(ByteView body);
  Refusal noSuchSheet(std::string_view name) const;

  StreamBytes stream_;
  std::vector<SheetEntry> sheets_;
  DateSystem dates_ = DateSystem::k1900;
  CellFormats formats_;
  std::shared_ptr<TextTable> texts_ = std::make_shared<TextTable>();
};

}  // namespace orva::xls
