#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orva::tds {

/// Writes the tokens of a message: numbers little-endian, texts in UTF-16.
class Writer {
 public:
  void u8(unsigned value) { bytes_ += static_cast<char>(value); }
  void u16(unsigned value) { number(value, 2); }
  void u32(std::uint32_t value) { number(value, 4); }
  void u64(std::uint64_t value) { number(value, 8); }
  void number(std::uint64_t value, int width) {
    for (int i = 0; i < width; ++i) u8(static_cast<unsigned>(value >> (8 * i) & 0xFF));
  }
  void raw(std::string_view bytes) { bytes_ += bytes; }
  /// A text with the number of its characters in front, in one or two bytes.
  void shortText(std::string_view text) { counted(text, 1); }
  void longText(std::string_view text) { counted(text, 2); }
  const std::string& bytes() const { return bytes_; }
  std::string take() { return std::move(bytes_); }

 private:
  void counted(std::string_view text, int width);

  std::string bytes_;
};

/// Reads a message; throws at its end.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  bool atEnd() const { return rest_.empty(); }
  unsigned u8() { return static_cast<unsigned>(number(1)); }
  unsigned u16() { return static_cast<unsigned>(number(2)); }
  std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }
  std::uint64_t number(std::size_t width) {
    const std::string_view bytes = raw(width);
    std::uint64_t value = 0;
    for (std::size_t i = width; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
  }
  std::string_view raw(std::size_t length) {
    if (length > rest_.size()) throw std::runtime_error("the message ends too early");
    const std::string_view bytes = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return bytes;
  }
  /// A text of so many characters.
  std::string text(std::size_t characters);
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

/// UTF-16 bytes of a text, and back.
std::string wideBytes(std::string_view text);
std::string fromWideBytes(std::string_view bytes);

}  // namespace orva::tds
