#pragma once

#include "platform/access/data_page.h"
#include "platform/access/usage_map.h"

namespace orva::access {

/// The data pages of a table, or the long-value pages of a column: which
/// belong to it, and which have room.
class RowPages {
 public:
  RowPages(PageFile& file, PageAllocator& allocator, std::uint32_t owner, SlotAddress owned, SlotAddress room)
      : file_(file), allocator_(allocator), owner_(owner), owned_(file, owned), room_(file, room) {}

  const UsageMap& owned() const { return owned_; }
  /// Writes a row on a page with room, or on a new page.
  SlotAddress add(ByteView row, std::uint16_t flags = 0);
  /// Writes a row behind all others: its address is the highest, so that a scan
  /// meets rows in the order in which they were added.
  SlotAddress append(ByteView row);
  /// Removes a row that nothing refers to any more.
  void remove(SlotAddress address);
  /// The same, and gives the page back when it was the last live row on it.
  void removeAndFree(SlotAddress address);
  void freeAll();

 private:
  PageNumber pageFor(std::size_t rowSize);
  PageNumber pageAtEnd(std::size_t rowSize);
  PageNumber lastPageInUse() const;
  PageNumber takePage(PageNumber lowest);
  bool takes(PageNumber page, std::size_t rowSize);
  SlotAddress insertInto(PageNumber page, ByteView row, std::uint16_t flags);

  PageFile& file_;
  PageAllocator& allocator_;
  std::uint32_t owner_;
  UsageMap owned_;
  UsageMap room_;
  PageNumber last_ = 0;
  PageNumber end_ = 0;  ///< no row lies behind this page; 0: not known
  PageNumber nextCandidate_ = 0;
};

}  // namespace orva::access
