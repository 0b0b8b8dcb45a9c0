#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/xls/record_stream.h"

namespace orva::xls {

/// Number of a text in a `TextTable`.
using TextNumber = std::uint32_t;

/// Texts in UTF-8, one after the other in one block.
class TextTable {
 public:
  std::size_t size() const { return ends_.size(); }
  std::string_view operator[](TextNumber number) const;

  /// Adds the texts of an SST record. Fewer texts than it announces are
  /// accepted when the record ends between two of them.
  void addShared(RecordStream& records, ByteView body);
  /// Adds a text with a u16 character count that begins at `body` and may go on
  /// in CONTINUE records (LABEL, RSTRING, STRING).
  TextNumber add(RecordStream& records, ByteView body);

 private:
  void append(ContinuedBody& body);

  std::string block_;
  std::vector<std::uint32_t> ends_;
};

/// A text within one record, its character count already read (sheet names,
/// number formats): `body` begins with the width flag.
std::string readName(ByteView body, std::size_t characters);

}  // namespace orva::xls
