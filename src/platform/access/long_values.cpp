#include "platform/access/long_values.h"

#include <algorithm>

namespace orva::access {
namespace {

Bytes cellOf(std::size_t length, std::uint32_t kind, SlotAddress first) {
  Bytes cell(long_value::kCell, 0);
  putU32(cell, 0, length | kind);
  putSlotAddress(cell, 4, first);
  return cell;
}

}  // namespace

Bytes LongValues::read(ByteView cell) const {
  require(cell.size() >= long_value::kCell, "the cell of a long value is too short");
  const std::uint32_t head = u32At(cell, 0);
  const std::size_t length = head & long_value::kLengthMask;
  if ((head & long_value::kInline) != 0) {
    require(length <= cell.size() - long_value::kCell, "a long value is longer than its cell");
    const ByteView value = cell.subspan(long_value::kCell, length);
    return Bytes(value.begin(), value.end());
  }
  require(length / kPageSize <= file_.pageCount(), "a long value is longer than the file");
  const bool isChain = (head & long_value::kSingle) == 0;
  Bytes value;
  for (SlotAddress at = slotAddressAt(cell, 4); value.size() < length;) {
    require(at.page != 0, "a long value ends before its length is reached");
    file_.at(at.page, [&] {
      const DataPage page(file_.page(at.page));
      require(page.owner() == kLongValueOwner, "this is not the page of long values that a cell refers to");
      const ByteView piece = page.row(at.row);
      const std::size_t skip = isChain ? 4 : 0;
      require(piece.size() > skip, "a piece of a long value is empty");
      append(value, piece.subspan(skip, std::min(piece.size() - skip, length - value.size())));
      at = isChain ? slotAddressAt(piece, 0) : SlotAddress{};
    });
  }
  return value;
}

RowPages& LongValues::pagesOf(const Column& column) {
  for (auto& [number, pages] : pages_) {
    if (number == column.number) return pages;
  }
  if (column.ownedMap.page == 0 || column.roomMap.page == 0) {
    throw AccessFileError(provider_number::kUnspecified,
                          "Column '" + column.name + "' has no map of pages; its long values cannot be changed.");
  }
  pages_.emplace_back(column.number, RowPages(file_, allocator_, kLongValueOwner, column.ownedMap, column.roomMap));
  return pages_.back().second;
}

Bytes LongValues::store(const Column& column, ByteView value, bool mayStayInRow) {
  if (value.size() <= long_value::kLargestInline && mayStayInRow) {
    Bytes cell = cellOf(value.size(), long_value::kInline, {});
    append(cell, value);
    return cell;
  }
  if (value.size() > long_value::kLengthMask) {
    throw AccessFileError(provider_number::kDataOverflow, "Column '" + column.name + "': the value is over 1 GB.");
  }
  RowPages& pages = pagesOf(column);
  if (value.size() <= long_value::kLargestSingle) {
    return cellOf(value.size(), long_value::kSingle, pages.add(value));
  }
  return cellOf(value.size(), 0, storeChain(pages, value));
}

/// From the last piece to the first, so that each can name the next.
SlotAddress LongValues::storeChain(RowPages& pages, ByteView value) {
  const std::size_t count = (value.size() + long_value::kChainPiece - 1) / long_value::kChainPiece;
  SlotAddress next;
  for (std::size_t i = count; i-- > 0;) {
    const std::size_t begin = i * long_value::kChainPiece;
    const ByteView data = value.subspan(begin, std::min(long_value::kChainPiece, value.size() - begin));
    Bytes piece(4);
    putSlotAddress(piece, 0, next);
    append(piece, data);
    next = pages.add(piece);
  }
  return next;
}

void LongValues::remove(const Column& column, ByteView cell) {
  require(cell.size() >= long_value::kCell, "the cell of a long value is too short");
  if (isInRow(cell)) return;
  const bool isChain = (u32At(cell, 0) & long_value::kSingle) == 0;
  RowPages& pages = pagesOf(column);
  for (SlotAddress at = slotAddressAt(cell, 4); at.page != 0;) {
    const SlotAddress piece = at;
    file_.at(piece.page, [&] {
      const ByteView bytes = DataPage(file_.page(piece.page)).row(piece.row);
      require(!isChain || bytes.size() >= 4, "a piece of a long value is empty");
      at = isChain ? slotAddressAt(bytes, 0) : SlotAddress{};
    });
    pages.removeAndFree(piece);
  }
}

}  // namespace orva::access
