#pragma once

#include <string>
#include <string_view>

#include "platform/odbc/driver_manager.h"

namespace orva::odbc {

/// Texts pass the driver manager as UTF-16, which alone means the same on every system.
/// What is no UTF-8 (or no UTF-16) becomes U+FFFD.
std::u16string toUtf16(std::string_view text);
std::string toUtf8(std::u16string_view text);

/// The driver manager's view of a text. It writes to none of those that it is given.
inline SQLWCHAR* wide(const std::u16string& text) {
  return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.data()));
}

}  // namespace orva::odbc
