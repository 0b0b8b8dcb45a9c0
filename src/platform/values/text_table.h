#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// A rectangular table of text cells kept in few large blocks: sixteen bytes
/// a cell beside the text itself, so that a full workbook sheet stays small.
/// Copies are cheap (they share the cells until one of them is written to).
class TextTable {
 public:
  TextTable();

  int rowCount() const;
  int columnCount() const;

  /// Empties the table and sets the number of columns.
  void reset(int columns);
  /// Adds empty columns at the right end.
  void addColumns(int count);
  /// Adds one row of empty cells and returns its index.
  int addRow();

  /// A view that stays valid until the table is next written to.
  std::string_view cell(int row, int column) const;
  void setCell(int row, int column, std::string_view text);

 private:
  struct Slot {
    const char* text = nullptr;
    std::uint32_t length = 0;
  };
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t used = 0;
    std::size_t size = 0;
  };
  /// Slots point into blocks, and blocks only grow, so a copy of `Cells` may
  /// share its blocks with the original for as long as one of them lives.
  struct Cells {
    int columns = 0;
    int rows = 0;
    std::vector<Slot> slots;
    std::vector<std::shared_ptr<Block>> blocks;
  };

  Cells& own();
  static Slot store(Cells& cells, std::string_view text);

  std::shared_ptr<Cells> cells_;
};

}  // namespace orva
