#pragma once

#include <compare>
#include <string>
#include <string_view>

namespace orva {

/// Without the blanks (U+0020) at both ends.
std::string_view trim(std::string_view text);
/// Without blanks, tabs and line breaks at both ends (headings, file lines).
std::string_view trimSpace(std::string_view text);

/// Upper and lower case of UTF-8 text: Latin, Greek and Cyrillic letters one
/// to one; everything else stays. Invalid bytes pass unchanged.
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);

/// Order of two texts without regard to case, code point by code point after
/// upper-casing. The engine compares text columns with the same order.
std::strong_ordering compareNoCase(std::string_view left, std::string_view right);
bool equalsNoCase(std::string_view left, std::string_view right);
bool endsWithNoCase(std::string_view text, std::string_view ending);

/// Number of characters (code points) of UTF-8 text. Field sizes count these.
std::size_t characterCount(std::string_view text);

/// `text` with every occurrence of `from` replaced by `to`.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

/// `text` as a quoted SQL literal: quotes around it, inner quotes doubled.
/// The one way by which a value reaches SQL text.
std::string sqlQuote(std::string_view text);
/// The inside of a quoted literal (no surrounding quotes), for queries whose
/// fixed text already carries them.
std::string sqlEscape(std::string_view text);

}  // namespace orva
