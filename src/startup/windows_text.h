#pragma once

#include <string>
#include <string_view>

namespace orva {

/// The main system writes its files in the Western code page of Windows, editors of today write UTF-8.

bool isUtf8(std::string_view text);
/// UTF-8 stays; anything else is taken for the code page.
std::string asUtf8(const std::string& bytes);
/// The way back, for a scrambled line that an editor has written anew: its UTF-8 characters as the
/// bytes that they were. A line that is no such text stays (clear text in ASCII never scrambles to
/// bytes that read as UTF-8 letters).
std::string asWindowsBytes(const std::string& line);

}  // namespace orva
