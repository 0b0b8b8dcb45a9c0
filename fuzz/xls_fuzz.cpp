// Reads any bytes as a workbook: every sheet, every cell as text. Nothing but a
// refusal may come of it.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/xls/cell_text.h"
#include "platform/xls/refusal.h"
#include "platform/xls/workbook_reader.h"

namespace {

// Many entries may name the same sheet; a few are enough.
constexpr std::size_t kMostSheets = 8;

void readAll(orva::xls::ByteView file) {
  orva::xls::WorkbookReader workbook(file);
  std::size_t read = 0;
  for (const orva::xls::SheetEntry& sheet : workbook.sheets()) {
    if (++read > kMostSheets) return;
    try {
      const orva::xls::CellTable table = workbook.read(sheet);
      for (const orva::xls::Cell& cell : table.cells()) {
        // A cell that cannot be found again where it lies would be lost to the import.
        if (table.find(cell.row(), cell.column()) != &cell) std::abort();
        orva::xls::cellText(table, cell);
      }
    } catch (const orva::xls::Refusal&) {  // one bad sheet; the others are tried too
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    readAll({data, size});
  } catch (const orva::xls::Refusal&) {
  }
  return 0;
}
