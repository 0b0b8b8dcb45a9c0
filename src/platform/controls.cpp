#include "platform/controls.h"

#include <algorithm>
#include <limits>

#include "platform/values/text.h"

namespace orva {

void ListBox::add(std::string item) {
  items_.push_back(std::move(item));
  changed();
}

void ListBox::clear() {
  items_.clear();
  selected_ = -1;
  changed();
}

void ListBox::select(int index) {
  const bool isItem = index >= 0 && index < count();
  change(selected_, isItem ? index : -1);
}

std::string ListBox::text() const { return selected_ < 0 ? std::string() : item(selected_); }

void ListBox::setText(std::string_view text) {
  for (int index = 0; index < count(); ++index) {
    if (equalsNoCase(item(index), text)) return select(index);
  }
  select(-1);
}

void ListView::setColumns(std::vector<Column> columns) {
  columns_ = std::move(columns);
  changed();
}

void ListView::clear() {
  columns_.clear();
  lines_.clear();
  changed();
}

void ListView::add(Line line) {
  lines_.push_back(std::move(line));
  changed();
}

void ListView::setTicked(int index, bool ticked) { change(lines_.at(static_cast<std::size_t>(index)).ticked, ticked); }

void ListView::setLook(int index, bool bold, Colour foreColour) {
  Line& line = lines_.at(static_cast<std::size_t>(index));
  if (line.bold == bold && line.foreColour == foreColour) return;
  line.bold = bold;
  line.foreColour = foreColour;
  changed();
}

void FlexGrid::setText(int row, int column, std::string_view text) {
  cells_.setCell(row, column, text);
  changed();
}

Colour FlexGrid::cellColour(int row, int column) const {
  if (!isCell(row, column) || cellIndex(row, column) >= cellColours_.size()) return colours::kWhite;
  return palette_[cellColours_[cellIndex(row, column)]];
}

void FlexGrid::setCellColour(int row, int column, Colour colour) {
  if (!isCell(row, column)) return;
  const std::size_t index = cellIndex(row, column);
  if (index >= cellColours_.size()) cellColours_.resize(cellIndex(row + 1, 0), 0);
  cellColours_[index] = paletteIndex(colour);
  changed();
}

std::uint8_t FlexGrid::paletteIndex(Colour colour) {
  const auto found = std::find(palette_.begin(), palette_.end(), colour);
  const auto index = static_cast<std::size_t>(found - palette_.begin());
  if (found == palette_.end() && palette_.size() <= std::numeric_limits<std::uint8_t>::max()) {
    palette_.push_back(colour);
  }
  return index < palette_.size() ? static_cast<std::uint8_t>(index) : 0;
}

bool FlexGrid::rowVisible(int row) const {
  const auto index = static_cast<std::size_t>(row);
  return index >= hidden_.size() || !hidden_[index];
}

void FlexGrid::setRowVisible(int row, bool visible) {
  const auto index = static_cast<std::size_t>(row);
  if (index >= hidden_.size()) hidden_.resize(index + 1, false);
  hidden_[index] = !visible;
  changed();
}

void FlexGrid::clear() { setTable(TextTable()); }

void FlexGrid::setTable(const TextTable& table) {
  cells_ = table;
  cellColours_.clear();
  hidden_.clear();
  shownRow_ = 0;
  changed();
}

void FlexGrid::addColumns(int count) {
  const auto narrow = static_cast<std::size_t>(columnCount());
  const std::size_t wide = narrow + static_cast<std::size_t>(count);
  cells_.addColumns(count);
  if (!cellColours_.empty()) {
    const std::size_t rows = cellColours_.size() / narrow;
    std::vector<std::uint8_t> moved(rows * wide, 0);
    for (std::size_t row = 0; row < rows; ++row) {
      std::copy_n(cellColours_.data() + row * narrow, narrow, moved.data() + row * wide);
    }
    cellColours_ = std::move(moved);
  }
  changed();
}

void FlexGrid::showRow(int row) {
  shownRow_ = row;
  changed();
}

int FlexGrid::findColumn(std::string_view heading) const {
  for (int column = 0; column < columnCount(); ++column) {
    if (equalsNoCase(trim(text(0, column)), trim(heading))) return column;
  }
  return -1;
}

}  // namespace orva
