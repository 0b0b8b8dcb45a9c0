#pragma once

#include <bit>
#include <string>
#include <string_view>

#include "platform/xls/bytes.h"
#include "platform/xls/record_stream.h"

namespace orva::xls {

/// Appends records to a stream. Fields go into the record begun last; its
/// length is kept right as it grows.
class RecordWriter {
 public:
  RecordWriter& begin(RecordType type);
  RecordWriter& u8(unsigned value);
  RecordWriter& u16(unsigned value) { return u8(value).u8(value >> 8); }
  RecordWriter& u32(std::uint32_t value) { return u16(value & 0xFFFF).u16(value >> 16); }
  RecordWriter& number(double value);
  /// A text with a u16 count, which goes on in CONTINUE records when need be.
  RecordWriter& text(std::u16string_view characters);
  /// A text that must fit into the record, with a count of one byte.
  RecordWriter& name(std::u16string_view characters);

  std::size_t size() const { return bytes_.size(); }
  /// Puts a number where one was left open.
  void patch(std::size_t at, std::uint32_t value);
  Bytes take() { return std::move(bytes_); }

 private:
  std::size_t room() const { return kMaxRecordBody - (bytes_.size() - body_); }
  void characters(std::u16string_view characters, bool wide);

  Bytes bytes_;
  std::size_t body_ = 0;  ///< where the body of the record at hand begins
};

/// UTF-8 as UTF-16; what is no UTF-8 becomes U+FFFD.
std::u16string toUtf16(std::string_view text);

}  // namespace orva::xls
