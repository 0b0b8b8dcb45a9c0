#include "platform/access/row.h"

#include <algorithm>
#include <utility>

namespace orva::access {
namespace {

constexpr std::size_t kColumnCount = 2;

std::size_t fixedRoom(const TableDefinition& definition) {
  // A row of nothing but yes/no is stretched so that a pointer fits into its slot.
  std::size_t room = definition.variableEver == 0 ? 1 : 0;
  for (const Column& column : definition.columns) {
    if (column.isFixed()) room = std::max(room, column.fixedOffset + column.fixedSize());
  }
  return room;
}

std::size_t trailerSize(const TableDefinition& definition) {
  const std::size_t offsets = definition.variableEver == 0 ? 0 : 4 + 2 * std::size_t{definition.variableEver};
  return offsets + (definition.columnsEver + 7u) / 8;
}

}  // namespace

StoredRow::StoredRow(ByteView bytes, const TableDefinition& definition) : bytes_(bytes) {
  require(bytes.size() >= kColumnCount, "a row is shorter than its parts");
  columns_ = u16At(bytes, 0);
  const std::size_t maskSize = (columns_ + 7) / 8;
  require(columns_ <= definition.columnsEver && bytes.size() >= kColumnCount + maskSize,
          "a row has more columns than its table");
  mask_ = bytes.size() - maskSize;
  if (definition.variableEver == 0) return;
  require(mask_ >= kColumnCount + 4, "a row is shorter than its parts");
  variables_ = u16At(bytes, mask_ - 2);
  require(mask_ >= kColumnCount + 4 + 2 * variables_, "a row has more variable columns than room");
}

bool StoredRow::maskBit(std::size_t number) const {
  return number < columns_ && (bytes_[mask_ + number / 8] >> (number % 8) & 1) != 0;
}

std::size_t StoredRow::variableOffset(std::size_t position) const { return u16At(bytes_, mask_ - 4 - 2 * position); }

std::optional<ByteView> StoredRow::bytes(const Column& column) const {
  if (!maskBit(column.number)) return std::nullopt;
  if (column.type == ColumnType::kBoolean) return ByteView();
  if (column.isFixed()) {
    const std::size_t start = kColumnCount + column.fixedOffset;
    require(start + column.length <= mask_, "a fixed column lies outside of its row");
    return bytes_.subspan(start, column.length);
  }
  if (column.variablePosition >= variables_) return std::nullopt;
  const std::size_t start = variableOffset(column.variablePosition);
  const std::size_t end = variableOffset(column.variablePosition + 1u);
  require(start >= kColumnCount && start <= end && end <= mask_, "a variable column lies outside of its row");
  return bytes_.subspan(start, end - start);
}

std::size_t encodedRowSize(const TableDefinition& definition, const StoredCells& cells) {
  std::size_t size = kColumnCount + fixedRoom(definition) + trailerSize(definition);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!definition.columns[i].isFixed() && cells.has(i)) size += cells[i].size();
  }
  return size;
}

namespace {

void putFixed(Bytes& row, const Column& column, ByteView cell) {
  std::copy_n(cell.begin(), std::min(cell.size(), column.fixedSize()),
              row.begin() + static_cast<std::ptrdiff_t>(kColumnCount + column.fixedOffset));
}

/// The variable columns in the order of their positions, then where each starts, the last one first.
void appendVariable(Bytes& row, const TableDefinition& definition, const StoredCells& cells) {
  if (definition.variableEver == 0) return;
  std::vector<std::size_t> places(definition.variableEver, cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const Column& column = definition.columns[i];
    if (!column.isFixed() && cells.has(i)) places[column.variablePosition] = i;
  }
  for (std::size_t& place : places) {
    const std::size_t column = std::exchange(place, row.size());
    if (column < cells.size()) append(row, cells[column]);
  }
  appendUnsigned(row, row.size(), 2);
  for (auto offset = places.rbegin(); offset != places.rend(); ++offset) appendUnsigned(row, *offset, 2);
  appendUnsigned(row, places.size(), 2);
}

}  // namespace

Bytes encodeRow(const TableDefinition& definition, const StoredCells& cells) {
  Bytes row;
  row.reserve(encodedRowSize(definition, cells));
  row.resize(kColumnCount + fixedRoom(definition));
  putU16(row, 0, definition.columnsEver);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (definition.columns[i].isFixed() && cells.has(i)) putFixed(row, definition.columns[i], cells[i]);
  }
  appendVariable(row, definition, cells);
  const std::size_t mask = row.size();
  row.resize(mask + (definition.columnsEver + 7u) / 8);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t number = definition.columns[i].number;
    if (cells.has(i)) row[mask + number / 8] |= static_cast<Byte>(1u << number % 8);
  }
  return row;
}

}  // namespace orva::access
