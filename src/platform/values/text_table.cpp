#include "platform/values/text_table.h"

#include <algorithm>
#include <cstring>

namespace orva {
namespace {

constexpr std::size_t kBlockSize = 262'144;

}  // namespace

TextTable::TextTable() : cells_(std::make_shared<Cells>()) {}

int TextTable::rowCount() const { return cells_->rows; }
int TextTable::columnCount() const { return cells_->columns; }

void TextTable::reset(int columns) {
  cells_ = std::make_shared<Cells>();
  cells_->columns = columns;
}

void TextTable::addColumns(int count) {
  Cells& cells = own();
  const int wider = cells.columns + count;
  std::vector<Slot> slots(static_cast<std::size_t>(wider) * cells.rows);
  for (int row = 0; row < cells.rows; ++row) {
    std::copy_n(cells.slots.begin() + static_cast<std::ptrdiff_t>(row) * cells.columns, cells.columns,
                slots.begin() + static_cast<std::ptrdiff_t>(row) * wider);
  }
  cells.slots = std::move(slots);
  cells.columns = wider;
}

int TextTable::addRow() {
  Cells& cells = own();
  cells.slots.resize(cells.slots.size() + cells.columns);
  return cells.rows++;
}

std::string_view TextTable::cell(int row, int column) const {
  if (row < 0 || column < 0 || row >= cells_->rows || column >= cells_->columns) return {};
  const Slot& slot = cells_->slots[static_cast<std::size_t>(row) * cells_->columns + column];
  return {slot.text, slot.length};
}

void TextTable::setCell(int row, int column, std::string_view text) {
  Cells& cells = own();
  if (row < 0 || column < 0 || row >= cells.rows || column >= cells.columns) return;
  cells.slots[static_cast<std::size_t>(row) * cells.columns + column] = store(cells, text);
}

TextTable::Cells& TextTable::own() {
  if (cells_.use_count() > 1) {
    // The copy starts a block of its own: two tables must not append to one.
    cells_ = std::make_shared<Cells>(*cells_);
    cells_->blocks.push_back(std::make_shared<Block>());
  }
  return *cells_;
}

TextTable::Slot TextTable::store(Cells& cells, std::string_view text) {
  if (text.empty()) return {};
  if (cells.blocks.empty() || cells.blocks.back()->size - cells.blocks.back()->used < text.size()) {
    auto block = std::make_shared<Block>();
    block->size = std::max(kBlockSize, text.size());
    block->bytes = std::make_unique_for_overwrite<char[]>(block->size);
    cells.blocks.push_back(std::move(block));
  }
  Block& block = *cells.blocks.back();
  char* target = block.bytes.get() + block.used;
  std::memcpy(target, text.data(), text.size());
  block.used += text.size();
  return {target, static_cast<std::uint32_t>(text.size())};
}

}  // namespace orva
