#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/access/cell.h"

namespace orva::access {

/// The bytes of one row, read by column. Throws `Damage` where its parts
/// contradict each other.
class StoredRow {
 public:
  StoredRow(ByteView bytes, const TableDefinition& definition);

  /// Stored bytes of a column; nothing when it is null. For yes/no the answer
  /// is the value: bytes (none) for yes, nothing for no.
  std::optional<ByteView> bytes(const Column& column) const;

 private:
  bool maskBit(std::size_t number) const;
  std::size_t variableOffset(std::size_t position) const;

  ByteView bytes_;
  std::size_t columns_ = 0;
  std::size_t variables_ = 0;
  std::size_t mask_ = 0;  // where the null mask starts
};

/// What a row is made of, in the order of the table's columns: bytes, or nothing for null and "no".
class StoredCells {
 public:
  explicit StoredCells(std::size_t columns = 0) { clear(columns); }
  /// Makes all cells nothing; the memory serves the next row.
  void clear(std::size_t columns) {
    bytes_.clear();
    parts_.assign(columns, kNothing);
  }

  std::size_t size() const { return parts_.size(); }
  bool has(std::size_t column) const { return parts_[column].offset != kNothing.offset; }
  ByteView operator[](std::size_t column) const {
    return ByteView(bytes_).subspan(parts_[column].offset, parts_[column].size);
  }
  void reset(std::size_t column) { parts_[column] = kNothing; }
  void set(std::size_t column, ByteView bytes) {
    fill(column, [bytes](Bytes& all) { append(all, bytes); });
  }
  /// Gives a cell what `write` appends.
  template <typename Write>
  void fill(std::size_t column, Write write) {
    const std::size_t offset = bytes_.size();
    write(bytes_);
    parts_[column] = {offset, bytes_.size() - offset};
  }
  /// Keeps the beginning of a cell.
  void shorten(std::size_t column, std::size_t size) { parts_[column].size = std::min(parts_[column].size, size); }

 private:
  struct Part {
    std::size_t offset;
    std::size_t size;
  };
  static constexpr Part kNothing{std::size_t(-1), 0};

  Bytes bytes_;
  std::vector<Part> parts_;
};

/// Builds the bytes of a row over what a buffer holds.
void encodeRow(Bytes& row, const TableDefinition& definition, const StoredCells& cells);
/// The same from values that `convertFor` returned, none of them a long value.
void encodeRow(Bytes& row, const TableDefinition& definition, const Row& cells);
/// Gives a column of an encoded row, whose bytes keep their places, another value from `convertFor`. False, with
/// nothing changed, when the row must be built anew for that.
bool replaceNumber(ByteSpan row, const TableDefinition& definition, const Column& column, const Cell& cell);
/// Length that `encodeRow` would return.
std::size_t encodedRowSize(const TableDefinition& definition, const StoredCells& cells);

}  // namespace orva::access
