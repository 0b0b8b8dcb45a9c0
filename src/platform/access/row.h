#pragma once

#include <optional>
#include <vector>

#include "platform/access/table_definition.h"

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
using StoredCells = std::vector<std::optional<Bytes>>;

/// Builds the bytes of a row.
Bytes encodeRow(const TableDefinition& definition, const StoredCells& cells);
/// Length that `encodeRow` would return.
std::size_t encodedRowSize(const TableDefinition& definition, const StoredCells& cells);

}  // namespace orva::access
