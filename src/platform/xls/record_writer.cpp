#include "platform/xls/record_writer.h"

#include <algorithm>

namespace orva::xls {
namespace {

bool needsTwoBytes(std::u16string_view characters) {
  return std::any_of(characters.begin(), characters.end(), [](char16_t unit) { return unit > 0xFF; });
}

struct Decoded {
  char32_t code = 0xFFFD;
  std::size_t size = 1;
};

/// The character at the start of the text; a byte that begins none stands for itself.
Decoded decode(std::string_view text) {
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return {first, 1};
  const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < size) return {};
  char32_t code = first & (0x7F >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return {};
    code = code << 6 | (next & 0x3F);
  }
  if (code < kSmallest[size] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return {};
  return {code, size};
}

}  // namespace

std::u16string toUtf16(std::string_view text) {
  std::u16string units;
  units.reserve(text.size());
  while (!text.empty()) {
    const auto [code, size] = decode(text);
    if (code < 0x10000) {
      units.push_back(static_cast<char16_t>(code));
    } else {
      units.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    }
    text.remove_prefix(size);
  }
  return units;
}

RecordWriter& RecordWriter::begin(RecordType type) {
  body_ = bytes_.size() + 4;
  bytes_.push_back(static_cast<std::uint8_t>(type));
  bytes_.push_back(static_cast<std::uint8_t>(type >> 8));
  bytes_.insert(bytes_.end(), 2, 0);
  return *this;
}

RecordWriter& RecordWriter::u8(unsigned value) {
  if (room() == 0) begin(kContinue);
  bytes_.push_back(static_cast<std::uint8_t>(value));
  const std::size_t length = bytes_.size() - body_;
  bytes_[body_ - 2] = static_cast<std::uint8_t>(length);
  bytes_[body_ - 1] = static_cast<std::uint8_t>(length >> 8);
  return *this;
}

RecordWriter& RecordWriter::number(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  return u32(static_cast<std::uint32_t>(bits)).u32(static_cast<std::uint32_t>(bits >> 32));
}

void RecordWriter::characters(std::u16string_view characters, bool wide) {
  for (const char16_t unit : characters) {
    if (room() < (wide ? 2U : 1U)) begin(kContinue).u8(wide ? 1 : 0);
    wide ? u16(unit) : u8(unit);
  }
}

RecordWriter& RecordWriter::text(std::u16string_view text) {
  const bool wide = needsTwoBytes(text);
  // The count and the flags stay together with the first character.
  if (room() < 5) begin(kContinue);
  u16(static_cast<unsigned>(text.size())).u8(wide ? 1 : 0);
  characters(text, wide);
  return *this;
}

RecordWriter& RecordWriter::name(std::u16string_view text) {
  const bool wide = needsTwoBytes(text);
  u8(static_cast<unsigned>(text.size())).u8(wide ? 1 : 0);
  characters(text, wide);
  return *this;
}

void RecordWriter::patch(std::size_t at, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) bytes_[at++] = static_cast<std::uint8_t>(value >> shift);
}

}  // namespace orva::xls
