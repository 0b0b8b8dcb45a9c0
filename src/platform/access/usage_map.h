#pragma once

#include <functional>
#include <optional>

#include "platform/access/page_file.h"

namespace orva::access {

class PageAllocator;

/// A set of page numbers, stored as bits in a row of a map page: either in the
/// row itself (a window of pages) or on pages of bits that the row refers to.
/// Reads follow the stored form; the maps that tables, indexes and columns own
/// are changed with `add` and `remove`.
class UsageMap {
 public:
  UsageMap(PageFile& file, SlotAddress address) : file_(file), address_(address) {}

  SlotAddress address() const { return address_; }
  bool contains(PageNumber page) const;
  /// Lowest member >= `from`.
  std::optional<PageNumber> next(PageNumber from) const;
  /// Highest member <= `from`.
  std::optional<PageNumber> previous(PageNumber from) const;
  void forEach(const std::function<void(PageNumber)>& action) const;
  /// The pages of bits that the map refers to.
  std::vector<PageNumber> bitPages() const;

  /// Adds a page; the window moves or the map changes its form when needed.
  void add(PageNumber page, PageAllocator& allocator);
  void remove(PageNumber page);

  /// An empty map of the usual length.
  static Bytes emptyRow() { return Bytes(kInlineMapRow, 0); }

 private:
  friend class PageAllocator;

  /// A run of bits: those of pages `first` .. `first + count - 1`, at a place of a page.
  struct Window {
    PageNumber first = 0;
    PageNumber count = 0;
    PageNumber page = 0;  // page that holds the bits
    std::size_t offset = 0;
  };

  ByteView row() const;
  std::size_t rowOffset() const;
  bool isInline() const { return row()[0] == 0; }
  PageNumber windowCount(ByteView row) const;
  std::optional<Window> window(ByteView row, PageNumber number) const;
  std::optional<Window> windowOf(PageNumber page) const;
  bool set(PageNumber page, bool value);
  bool moveWindow(PageNumber page);
  void convertToReference(PageAllocator& allocator);
  void addBitPage(PageNumber page, PageAllocator& allocator);

  PageFile& file_;
  SlotAddress address_;
};

/// Gives out and takes back pages by the global map of free pages.
class PageAllocator {
 public:
  PageAllocator(PageFile& file, SlotAddress freeMap) : file_(file), freeMap_(file, freeMap) {}

  /// A page of zeros that belongs to nobody, not below `lowest`: the first free one, or a new one at the end.
  PageNumber allocate(PageNumber lowest = 0);
  void free(PageNumber page);
  bool isFree(PageNumber page) const;
  /// The pages that hold the global map's bits.
  std::vector<PageNumber> bitPages() const { return freeMap_.bitPages(); }
  /// After a rollback free pages may be anywhere again.
  void forgetHint() { lowestFree_ = 0; }

 private:
  PageNumber extend();
  void coverNewPage(PageNumber page);
  bool lengthenRow(PageNumber page);
  void convertToReference(PageNumber page);
  void addFreeBits(PageNumber page, PageNumber reference);

  PageFile& file_;
  UsageMap freeMap_;
  PageNumber lowestFree_ = 0;
};

}  // namespace orva::access
