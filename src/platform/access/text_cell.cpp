#include "platform/access/text_cell.h"

#include <algorithm>

namespace orva::access {
namespace {

constexpr Byte kCompressedMark[] = {0xFF, 0xFE};
constexpr std::size_t kShortestCompressed = 3;
constexpr char16_t kByteOrderMark = 0xFEFF;
constexpr char32_t kReplacement = 0xFFFD;

bool isHigh(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void appendUtf8(std::string& text, char32_t c) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

/// Reads one character and moves `at` past it.
char32_t nextUtf8(std::string_view text, std::size_t& at) {
  static constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto lead = static_cast<Byte>(text[at++]);
  if (lead < 0x80) return lead;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || at + length - 1 > text.size()) return kReplacement;
  char32_t c = lead & (0x7Fu >> length);
  for (std::size_t i = 0; i + 1 < length; ++i) {
    const auto next = static_cast<Byte>(text[at + i]);
    if ((next & 0xC0) != 0x80) return kReplacement;
    c = c << 6 | (next & 0x3F);
  }
  if (c < kSmallest[length] || c > 0x10FFFF) return kReplacement;
  at += length - 1;
  return c;
}

bool isCompressible(std::u16string_view text) {
  return text.size() >= kShortestCompressed &&
         std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= 0x01 && c <= 0xFF; });
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (isHigh(c) && i + 1 < text.size() && isLow(text[i + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
    }
    appendUtf8(result, c);
  }
  return result;
}

std::u16string toUtf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = nextUtf8(text, at);
    if (c >= 0x10000) {
      result.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      result.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else {
      result.push_back(static_cast<char16_t>(c));
    }
  }
  return result;
}

std::u16string utf16Of(ByteView bytes) {
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char16_t>(u16At(bytes, 2 * i));
  return text;
}

Bytes bytesOf(std::u16string_view text) {
  Bytes bytes;
  bytes.reserve(2 * text.size());
  for (const char16_t c : text) appendUnsigned(bytes, c, 2);
  return bytes;
}

std::u16string decodeText(ByteView cell) {
  if (cell.size() < 2 || cell[0] != kCompressedMark[0] || cell[1] != kCompressedMark[1]) return utf16Of(cell);
  std::u16string text;
  text.reserve(cell.size());
  bool wide = false;
  for (std::size_t at = 2; at < cell.size();) {
    if (cell[at] == 0) {
      wide = !wide;
      ++at;
    } else if (!wide) {
      text.push_back(cell[at++]);
    } else {
      if (at + 2 > cell.size()) break;
      text.push_back(static_cast<char16_t>(u16At(cell, at)));
      at += 2;
    }
  }
  return text;
}

std::optional<std::string_view> plainTextOf(ByteView cell) {
  if (cell.size() < 2 || cell[0] != kCompressedMark[0] || cell[1] != kCompressedMark[1]) return std::nullopt;
  cell = cell.subspan(2);
  if (!std::all_of(cell.begin(), cell.end(), [](Byte byte) { return byte != 0 && byte < 0x80; })) return std::nullopt;
  return std::string_view(static_cast<const char*>(static_cast<const void*>(cell.data())), cell.size());
}

std::string textOf(ByteView cell) {
  const auto plain = plainTextOf(cell);
  if (plain) return std::string(*plain);
  // Texts that are too short to be compressed are two-byte ASCII.
  std::string text(cell.size() / 2, '\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto unit = u16At(cell, 2 * i);
    if (unit >= 0x80) return toUtf8(decodeText(cell));
    text[i] = static_cast<char>(unit);
  }
  return text;
}

void appendEncodedText(Bytes& bytes, std::string_view text, bool mayCompress) {
  const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<Byte>(c);
    return byte != 0 && byte < 0x80;
  });
  if (!isPlain) return append(bytes, encodeText(toUtf16(text), mayCompress));
  if (mayCompress && text.size() >= kShortestCompressed) {
    append(bytes, kCompressedMark);
    bytes.insert(bytes.end(), text.begin(), text.end());
    return;
  }
  for (const char c : text) {
    bytes.push_back(static_cast<Byte>(c));
    bytes.push_back(0);
  }
}

Bytes encodeText(std::u16string_view text, bool mayCompress) {
  // Two-byte text must not start with the mark of the compressed form.
  while (text.starts_with(kByteOrderMark)) text.remove_prefix(1);
  if (!mayCompress || !isCompressible(text)) return bytesOf(text);
  Bytes cell(std::begin(kCompressedMark), std::end(kCompressedMark));
  cell.reserve(text.size() + 2);
  for (const char16_t c : text) cell.push_back(static_cast<Byte>(c));
  return cell;
}

}  // namespace orva::access
