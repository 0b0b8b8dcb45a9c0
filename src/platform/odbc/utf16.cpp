#include "platform/odbc/utf16.h"

#include <cstdint>

namespace orva::odbc {
namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

constexpr std::uint32_t kReplacement = 0xFFFD;

/// Takes one character off the front of `text`.
std::uint32_t takeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0x80                   ? 1
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  std::uint32_t code = length == 1 ? lead : length == 0 ? 0 : lead & (0x7FU >> length);
  std::size_t taken = 1;
  for (; taken < length && taken < text.size(); ++taken) {
    const auto next = static_cast<unsigned char>(text[taken]);
    if ((next & 0xC0U) != 0x80) break;
    code = code << 6 | (next & 0x3FU);
  }
  text.remove_prefix(taken);
  const bool tooShortForm = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool isSurrogate = code >= 0xD800 && code < 0xE000;
  return length == 0 || taken < length || tooShortForm || isSurrogate || code > 0x10FFFF ? kReplacement : code;
}

void appendUtf8(std::string& text, std::uint32_t code) {
  const auto tail = [&](unsigned shift) { text += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | code >> 6);
    tail(0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | code >> 12);
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0 | code >> 18);
    tail(12);
    tail(6);
    tail(0);
  }
}

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::u16string toUtf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::uint32_t code = takeCharacter(text);
    if (code < 0x10000) {
      result += static_cast<char16_t>(code);
    } else {
      result += static_cast<char16_t>(0xD7C0 + (code >> 10));
      result += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    }
  }
  return result;
}

std::string toUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool paired = isHigh(text[i]) && i + 1 < text.size() && isLow(text[i + 1]);
    if (paired) {
      appendUtf8(result, 0x10000 + ((text[i] - 0xD800U) << 10) + (text[i + 1] - 0xDC00U));
      ++i;
    } else {
      appendUtf8(result, isHigh(text[i]) || isLow(text[i]) ? kReplacement : text[i]);
    }
  }
  return result;
}

}  // namespace orva::odbc
