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

bool replaceNumber(ByteSpan row, const TableDefinition& definition, const Column& column, const Cell& cell) {
  const std::size_t size = column.fixedSize();
  // Rows from before the table had all its columns may lack the room.
  if (!column.isFixed() || size == 0 || u16At(row, 0) != definition.columnsEver) return false;
  const std::size_t mask = row.size() - (definition.columnsEver + 7u) / 8;
  const std::size_t end = definition.variableEver == 0 ? mask : u16At(row, mask - 4);
  const std::size_t start = kColumnCount + column.fixedOffset;
  if (end > mask || start + size > end) return false;
  const ByteSpan room = row.subspan(start, size);
  const auto bit = static_cast<Byte>(1u << column.number % 8);
  Byte& nulls = row[mask + column.number / 8];
  if (isNull(cell)) {
    std::fill(room.begin(), room.end(), Byte{0});
    nulls = static_cast<Byte>(nulls & ~bit);
    return true;
  }
  if (!putNumberCell(room, column, cell)) return false;
  nulls |= bit;
  return true;
}

std::size_t encodedRowSize(const TableDefinition& definition, const StoredCells& cells) {
  std::size_t size = kColumnCount + fixedRoom(definition) + trailerSize(definition);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!definition.columns[i].isFixed() && cells.has(i)) size += cells[i].size();
  }
  return size;
}

namespace {

/// The parts of a row as they are stored.
class StoredSource {
 public:
  explicit StoredSource(const StoredCells& cells) : cells_(cells) {}
  std::size_t size() const { return cells_.size(); }
  bool has(std::size_t column) const { return cells_.has(column); }
  void append(Bytes& row, const Column&, std::size_t column) const { access::append(row, cells_[column]); }
  void put(ByteSpan room, const Column&, std::size_t column) const {
    const ByteView cell = cells_[column];
    std::copy_n(cell.begin(), std::min(cell.size(), room.size()), room.begin());
  }

 private:
  const StoredCells& cells_;
};

/// The parts of a row as values.
class ValueSource {
 public:
  explicit ValueSource(const Row& cells) : cells_(cells) {}
  std::size_t size() const { return cells_.size(); }
  bool has(std::size_t column) const {
    const auto* yes = std::get_if<bool>(&cells_[column]);
    return yes ? *yes : !isNull(cells_[column]);
  }
  void append(Bytes& row, const Column& definition, std::size_t column) const {
    appendCell(row, definition, cells_[column]);
  }
  void put(ByteSpan room, const Column& definition, std::size_t column) const {
    if (putNumberCell(room, definition, cells_[column])) return;
    Bytes cell;
    append(cell, definition, column);
    std::copy_n(cell.begin(), std::min(cell.size(), room.size()), room.begin());
  }

 private:
  const Row& cells_;
};

/// The variable columns in the order of their positions, then where each starts, the last one first. `places` names
/// the column at each position.
template <typename Source>
void appendVariable(Bytes& row, const TableDefinition& definition, const Source& cells,
                    std::vector<std::size_t>& places) {
  for (std::size_t& place : places) {
    const std::size_t column = std::exchange(place, row.size());
    if (column < cells.size()) cells.append(row, definition.columns[column], column);
  }
  const std::size_t at = row.size();
  row.resize(at + 2 * places.size() + 4);
  putU16(row, at, at);
  std::size_t next = at + 2;
  for (auto offset = places.rbegin(); offset != places.rend(); ++offset, next += 2) putU16(row, next, *offset);
  putU16(row, next, places.size());
}

template <typename Source>
void encode(Bytes& row, const TableDefinition& definition, const Source& cells) {
  row.assign(kColumnCount + fixedRoom(definition), 0);
  putU16(row, 0, definition.columnsEver);
  Bytes mask((definition.columnsEver + 7u) / 8, 0);
  std::vector<std::size_t> places(definition.variableEver, cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!cells.has(i)) continue;
    const Column& column = definition.columns[i];
    mask[column.number / 8] |= static_cast<Byte>(1u << column.number % 8);
    if (column.isFixed()) {
      cells.put(ByteSpan(row).subspan(kColumnCount + column.fixedOffset, column.fixedSize()), column, i);
    } else {
      places[column.variablePosition] = i;
    }
  }
  if (definition.variableEver != 0) appendVariable(row, definition, cells, places);
  append(row, mask);
}

}  // namespace

void encodeRow(Bytes& row, const TableDefinition& definition, const StoredCells& cells) {
  encode(row, definition, StoredSource(cells));
}

void encodeRow(Bytes& row, const TableDefinition& definition, const Row& cells) {
  encode(row, definition, ValueSource(cells));
}

}  // namespace orva::access
