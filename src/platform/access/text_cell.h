#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/access/bytes.h"

namespace orva::access {

/// UTF-16 to UTF-8 and back. Halves of a surrogate pair that stand alone keep
/// their value both ways; bytes that are no UTF-8 become U+FFFD.
std::string toUtf8(std::u16string_view text);
std::u16string toUtf16(std::string_view text);
/// Little-endian UTF-16 bytes; a last odd byte is left out.
std::u16string utf16Of(ByteView bytes);
Bytes bytesOf(std::u16string_view text);

/// A text cell in either stored form: plain, or the compressed form that
/// starts with FF FE and holds one byte a character, 00 toggling to two.
std::u16string decodeText(ByteView cell);
/// The text of a cell that holds it as it is in UTF-8, too.
std::optional<std::string_view> plainTextOf(ByteView cell);
/// The text of any cell as UTF-8.
std::string textOf(ByteView cell);
/// The form that the database engine would store: compressed when allowed,
/// worthwhile and possible.
Bytes encodeText(std::u16string_view text, bool mayCompress);
/// Appends that form of a UTF-8 text.
void appendEncodedText(Bytes& bytes, std::string_view text, bool mayCompress);

}  // namespace orva::access
