#pragma once

#include "platform/access/row_pages.h"
#include "platform/access/table_definition.h"

namespace orva::access {

/// The values of memo and OLE columns. The cell in the row holds the length
/// and either the value itself or the place of its first piece.
class LongValues {
 public:
  LongValues(PageFile& file, PageAllocator& allocator) : file_(file), allocator_(allocator) {}

  /// The whole value of a cell. Throws `Damage` or `AccessFileError`.
  Bytes read(ByteView cell) const;
  /// Stores a value and returns its cell. A short value stays in the cell when `mayStayInRow`.
  Bytes store(const Column& column, ByteView value, bool mayStayInRow);
  /// Frees what a cell refers to.
  void remove(const Column& column, ByteView cell);
  /// After a change of structure or a rollback the maps may be others.
  void forgetPages() { pages_.clear(); }
  static bool isInRow(ByteView cell) { return (u32At(cell, 0) & long_value::kInline) != 0; }

 private:
  RowPages& pagesOf(const Column& column);
  SlotAddress storeChain(RowPages& pages, ByteView value);

  PageFile& file_;
  PageAllocator& allocator_;
  std::vector<std::pair<std::uint16_t, RowPages>> pages_;
};

}  // namespace orva::access
