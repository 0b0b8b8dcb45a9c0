#pragma once

#include <string>
#include <string_view>

namespace orva::embedded {

/// SHA-256 of `text` in hexadecimal digits.
std::string sha256(std::string_view text);

/// What a file keeps of a password: a random salt and the digest of both.
std::string passwordMark(std::string_view password);
bool passwordFits(std::string_view password, std::string_view mark);

}  // namespace orva::embedded
