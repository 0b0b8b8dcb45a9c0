#include "platform/values/text.h"

#include <cstddef>
#include <cstdint>

namespace orva {
namespace {

/// One decoded character; invalid bytes decode to themselves above the range
/// of Unicode so that they survive and never equal a letter.
struct Decoded {
  char32_t codePoint;
  std::size_t length;
};

constexpr char32_t kInvalidBase = 0x200000;

Decoded decodeMultiByte(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = lead >= 0xF0 && lead < 0xF8 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (length == 0 || lead >= 0xF8 || at + length > text.size()) return {kInvalidBase + lead, 1};
  char32_t codePoint = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[at + i]);
    if ((next & 0xC0u) != 0x80u) return {kInvalidBase + lead, 1};
    codePoint = codePoint << 6 | (next & 0x3Fu);
  }
  return {codePoint, length};
}

Decoded decode(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead < 0x80) return {lead, 1};
  return decodeMultiByte(text, at);
}

void append(std::string& text, char32_t codePoint) {
  if (codePoint >= kInvalidBase) {
    text.push_back(static_cast<char>(codePoint - kInvalidBase));
  } else if (codePoint < 0x80) {
    text.push_back(static_cast<char>(codePoint));
  } else if (codePoint < 0x800) {
    text.push_back(static_cast<char>(0xC0 | codePoint >> 6));
    text.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
  } else if (codePoint < 0x10000) {
    text.push_back(static_cast<char>(0xE0 | codePoint >> 12));
    text.push_back(static_cast<char>(0x80 | (codePoint >> 6 & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
  } else {
    text.push_back(static_cast<char>(0xF0 | codePoint >> 18));
    text.push_back(static_cast<char>(0x80 | (codePoint >> 12 & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (codePoint >> 6 & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
  }
}

/// A run of lower-case letters and the distance to their capitals; `step` 2
/// stands for alternating pairs, where only every second one is lower case.
struct CaseRange {
  char32_t first;
  char32_t last;
  std::int32_t toCapital;
  int step;
};

constexpr CaseRange kLowerCase[] = {
    {0x61, 0x7A, -32, 1},   {0xE0, 0xF6, -32, 1},   {0xF8, 0xFE, -32, 1},    {0xFF, 0xFF, 121, 1},
    {0x101, 0x12F, -1, 2},  {0x133, 0x137, -1, 2},  {0x13A, 0x148, -1, 2},   {0x14B, 0x177, -1, 2},
    {0x17A, 0x17E, -1, 2},  {0x3AC, 0x3AC, -38, 1}, {0x3AD, 0x3AF, -37, 1},  {0x3B1, 0x3C1, -32, 1},
    {0x3C3, 0x3CB, -32, 1}, {0x3CC, 0x3CC, -64, 1}, {0x3CD, 0x3CE, -63, 1},  {0x430, 0x44F, -32, 1},
    {0x450, 0x45F, -80, 1}, {0x461, 0x481, -1, 2},  {0x48B, 0x4BF, -1, 2},   {0x4C2, 0x4CE, -1, 2},
    {0x4D1, 0x52F, -1, 2},  {0x561, 0x586, -48, 1}, {0x1E01, 0x1E95, -1, 2}, {0x1EA1, 0x1EFF, -1, 2},
};

char32_t upperOf(char32_t c) {
  if (c < 0x80) return c >= 'a' && c <= 'z' ? c - 32 : c;
  for (const CaseRange& range : kLowerCase) {
    if (c < range.first) return c;
    if (c <= range.last) {
      const bool isLower = (c - range.first) % static_cast<char32_t>(range.step) == 0;
      return isLower ? static_cast<char32_t>(static_cast<std::int32_t>(c) + range.toCapital) : c;
    }
  }
  return c;
}

char32_t lowerOf(char32_t c) {
  if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 32 : c;
  for (const CaseRange& range : kLowerCase) {
    const auto lower = static_cast<char32_t>(static_cast<std::int32_t>(c) - range.toCapital);
    const bool inRange = lower >= range.first && lower <= range.last;
    if (inRange && (lower - range.first) % static_cast<char32_t>(range.step) == 0) return lower;
  }
  return c;
}

template <typename Change>
std::string mapped(std::string_view text, Change change) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const Decoded c = decode(text, at);
    append(result, c.codePoint >= kInvalidBase ? c.codePoint : change(c.codePoint));
    at += c.length;
  }
  return result;
}

std::string_view trimmedOf(std::string_view text, std::string_view blanks) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

std::string_view trim(std::string_view text) { return trimmedOf(text, " "); }
std::string_view trimSpace(std::string_view text) { return trimmedOf(text, " \t\r\n"); }

std::string toUpper(std::string_view text) { return mapped(text, upperOf); }
std::string toLower(std::string_view text) { return mapped(text, lowerOf); }

std::strong_ordering compareNoCase(std::string_view left, std::string_view right) {
  std::size_t l = 0;
  std::size_t r = 0;
  while (l < left.size() && r < right.size()) {
    const Decoded a = decode(left, l);
    const Decoded b = decode(right, r);
    if (a.codePoint != b.codePoint) {
      const char32_t upperA = upperOf(a.codePoint);
      const char32_t upperB = upperOf(b.codePoint);
      if (upperA != upperB) return upperA <=> upperB;
    }
    l += a.length;
    r += b.length;
  }
  return (left.size() - l) <=> (right.size() - r);
}

bool equalsNoCase(std::string_view left, std::string_view right) { return compareNoCase(left, right) == 0; }

bool endsWithNoCase(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && equalsNoCase(text.substr(text.size() - ending.size()), ending);
}

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); at += decode(text, at).length) ++count;
  return count;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  if (from.empty()) return std::string(text);
  std::size_t start = 0;
  for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, start)) {
    result += text.substr(start, at - start);
    result += to;
    start = at + from.size();
  }
  result += text.substr(start);
  return result;
}

std::string sqlEscape(std::string_view text) {
  std::string result;
  result.reserve(text.size() + 2);
  for (char c : text) {
    if (c == '\'') result.push_back('\'');
    result.push_back(c);
  }
  return result;
}

std::string sqlQuote(std::string_view text) { return "'" + sqlEscape(text) + "'"; }

}  // namespace orva
