#pragma once

#include <array>
#include <optional>

#include "platform/access/format.h"

namespace orva::access {

/// One slot of a data page: where its bytes are and what it is.
struct Slot {
  std::uint16_t start = 0;
  std::uint16_t end = 0;
  std::uint16_t flags = 0;

  bool isDeleted() const { return flags == kSlotDeleted; }
  /// A row that a scan meets: not deleted, not the target of a pointer.
  bool isFirst() const { return (flags & kSlotHidden) == 0; }
  bool isPointer() const { return flags == kSlotMoved; }
  std::size_t size() const { return std::size_t{end} - start; }
};

/// A page of rows, long values or usage maps, read-only. Every access checks
/// the page's own numbers and throws `Damage` where they contradict.
class DataPage {
 public:
  explicit DataPage(ByteView page);

  std::uint32_t owner() const { return u32At(page_, data_at::kOwner); }
  std::size_t slotCount() const { return slotCount_; }
  std::size_t freeSpace() const { return u16At(page_, data_at::kFree); }
  Slot slot(std::size_t row) const;
  ByteView bytes(const Slot& slot) const { return page_.subspan(slot.start, slot.size()); }
  /// The bytes of an existing slot that is not deleted.
  ByteView row(std::size_t row) const;
  bool hasLiveRows() const;
  /// Start of the lowest row.
  std::size_t lowest() const;
  /// True when the page has room for a row with another size in the place of one.
  bool canReplace(std::size_t row, std::size_t newSize) const;

 private:
  ByteView page_;
  std::size_t slotCount_;
};

/// Changes one data page. The free-space field stays exact.
class DataPageEditor {
 public:
  explicit DataPageEditor(ByteSpan page) : page_(page) {}

  static void format(ByteSpan page, std::uint32_t owner);
  /// Longest row that `insert` can take.
  std::size_t roomForRow() const;
  /// The parts of a page that `insert` changes, and that `replace` changes.
  static std::array<ByteRange, 2> partsOfInsert(const DataPage& page, std::size_t rowSize);
  static std::array<ByteRange, 2> partsOfReplace(const DataPage& page, std::size_t row, std::size_t newSize);
  /// Adds a row in a new slot and returns its number. The caller has checked the room.
  Byte insert(ByteView row, std::uint16_t flags = 0);
  /// Gives the slot other bytes and flags; the rows below move.
  void replace(std::size_t row, ByteView bytes, std::uint16_t flags);
  /// Squeezes the row out; its slot stays, empty and marked.
  void remove(std::size_t row);

 private:
  void resize(std::size_t row, std::size_t newSize);

  ByteSpan page_;
};

}  // namespace orva::access
