#include "platform/odbc/server/tds_bytes.h"

#include <cstring>

#include "platform/odbc/utf16.h"

namespace orva::tds {

void Writer::counted(std::string_view text, int width) {
  const std::string wide = wideBytes(text);
  number(wide.size() / 2, width);
  raw(wide);
}

std::string Reader::text(std::size_t characters) { return fromWideBytes(raw(characters * 2)); }

std::string wideBytes(std::string_view text) {
  const std::u16string wide = odbc::toUtf16(text);
  return {reinterpret_cast<const char*>(wide.data()), wide.size() * 2};
}

std::string fromWideBytes(std::string_view bytes) {
  std::u16string wide(bytes.size() / 2, u'\0');
  std::memcpy(wide.data(), bytes.data(), wide.size() * 2);
  return odbc::toUtf8(wide);
}

}  // namespace orva::tds
