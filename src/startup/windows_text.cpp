#include "startup/windows_text.h"

#include <array>
#include <cstdint>
#include <optional>

namespace orva {
namespace {

/// Code points of the bytes 0x80 to 0x9F in the Western Windows code page.
constexpr std::array<std::uint16_t, 32> kWindowsLetters = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

/// Length of the UTF-8 character at the start of `text`; 0 when its bytes are none.
std::size_t utf8Length(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

void appendUtf8(std::string& text, std::uint16_t code) {
  if (code >= 0x800) {
    text += static_cast<char>(0xE0 | code >> 12);
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
  } else {
    text += static_cast<char>(0xC0 | code >> 6);
  }
  text += static_cast<char>(0x80 | (code & 0x3F));
}

}  // namespace

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string asUtf8(const std::string& bytes) {
  if (isUtf8(bytes)) return bytes;
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x80) {
      text += byte;
    } else {
      appendUtf8(text, code < 0xA0 ? kWindowsLetters[code - 0x80U] : code);
    }
  }
  return text;
}

namespace {

/// The byte that stands for a UTF-8 character in the Windows code page or, unassigned there,
/// has its number.
std::optional<char> windowsByte(std::string_view character) {
  for (unsigned code = 0x80; code < 0x100; ++code) {
    const char byte = static_cast<char>(code);
    std::string sameNumber;
    appendUtf8(sameNumber, static_cast<std::uint16_t>(code));
    if (character == sameNumber || character == asUtf8(std::string(1, byte))) return byte;
  }
  return std::nullopt;
}

}  // namespace

std::string asWindowsBytes(const std::string& line) {
  if (!isUtf8(line)) return line;
  std::string bytes;
  for (std::string_view rest = line; !rest.empty();) {
    const std::string_view character = rest.substr(0, utf8Length(rest));
    rest.remove_prefix(character.size());
    if (character.size() == 1) {
      bytes += character[0];
    } else if (const auto byte = windowsByte(character)) {
      bytes += *byte;
    } else {
      return line;
    }
  }
  return bytes;
}

}  // namespace orva
