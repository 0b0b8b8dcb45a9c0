#include "platform/access/text_walk.h"

#include <algorithm>

#include "platform/access/text_cell.h"

namespace orva::access {

TextWalk::TextWalk(PageFile& file, const TableDefinition& definition, const RowReader& rows,
                   std::vector<std::size_t> columns)
    : file_(file),
      definition_(definition),
      rows_(rows),
      columns_(std::move(columns)),
      cells_(columns_.size()),
      decoded_(columns_.size()) {}

void TextWalk::run(const UsageMap& pages, const TextVisitor& visit) {
  for (auto page = pages.next(0); page; page = pages.next(*page + 1)) {
    visitPage(*page, visit);
    file_.trim();
  }
}

void TextWalk::visitPage(PageNumber number, const TextVisitor& visit) {
  const Page& bytes = file_.page(number);
  if (bytes[0] != static_cast<Byte>(PageType::kData)) return;
  file_.at(number, [&] {
    const DataPage page(bytes);
    if (page.owner() != definition_.page) return;
    const std::size_t slots = std::min(page.slotCount(), kMaximumSlots);
    for (std::size_t slot = 0; slot < slots; ++slot) {
      const Slot place = page.slot(slot);
      if (!place.isFirst()) continue;
      const bool isMoved = place.isPointer();
      readCells(isMoved ? rows_.bytes(rowIdOf({number, static_cast<Byte>(slot)})) : page.bytes(place));
      visit(cells_);
    }
  });
}

void TextWalk::readCells(ByteView row) {
  const StoredRow stored(row, definition_);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const auto bytes = stored.bytes(definition_.columns[columns_[i]]);
    cells_[i] = bytes ? plainTextOf(*bytes) : std::nullopt;
    if (bytes && !cells_[i]) cells_[i] = decoded_[i] = textOf(*bytes);
  }
}

}  // namespace orva::access
