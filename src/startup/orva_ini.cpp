#include "startup/orva_ini.h"

#include <array>
#include <cstdint>
#include <vector>

namespace orva {
namespace {

constexpr unsigned kShift = 30;

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

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
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

/// The main system writes its files in the Windows code page, editors of today write UTF-8.
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

std::string withoutByteOrderMark(const std::string& line) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return line.starts_with(kMark) ? line.substr(kMark.size()) : line;
}

/// Each byte moved by `shift`, last byte first.
std::string reversedShifted(std::string_view text, unsigned shift) {
  std::string result(text.rbegin(), text.rend());
  for (char& byte : result) byte = static_cast<char>(static_cast<unsigned char>(byte) + shift);
  return result;
}

/// The four first lines of a server's file are "NAME=value" in clear; a missing one is empty.
std::string valueOfLine(const std::vector<std::string>& lines, std::size_t index) {
  if (index >= lines.size()) return {};
  const std::string clear = asUtf8(unscramble(lines[index]));
  return clear.substr(clear.find('=') + 1);
}

bool describesServer(const std::vector<std::string>& lines) {
  return lines.size() > 1 && unscramble(lines[0]).find("SERVER=") != std::string::npos;
}

}  // namespace

std::string unscramble(std::string_view stored) { return reversedShifted(stored, 256 - kShift); }

std::string scramble(std::string_view clear) { return reversedShifted(clear, kShift); }

OrvaIni readOrvaIni(const Files& files, const std::string& path) {
  std::vector<std::string> lines = files.readLines(path);
  if (lines.empty()) throw FileError("The file " + path + " is empty: its first line must hold the data folder.");
  lines[0] = withoutByteOrderMark(lines[0]);
  if (!describesServer(lines)) return {.dataFolder = asUtf8(lines[0])};
  return {.isSqlServer = true,
          .dataFolder = {},
          .server = valueOfLine(lines, 0),
          .authenticationKind = valueOfLine(lines, 1),
          .userId = valueOfLine(lines, 2),
          .password = valueOfLine(lines, 3)};
}

std::string readProviderClause(const Files& files, const std::string& path) {
  const std::vector<std::string> lines = files.readLines(path);
  return lines.empty() ? std::string() : asUtf8(withoutByteOrderMark(lines[0]));
}

}  // namespace orva
