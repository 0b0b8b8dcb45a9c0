#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/access/format.h"

namespace orva::access {

/// What page 0 says about the file.
struct FileHeader {
  SlotAddress freeMap = {kGlobalMapPage, 0};
  std::uint32_t scramblingKey = 0;
  std::uint32_t build = 0;
  std::uint16_t sortOrder = kGeneralSortOrder;
  double creationDate = 0;
  /// As UTF-8; empty when the file has none.
  std::string password = {};

  /// Throws `Damage` for anything but an Access 2000-2003 file, with a text
  /// that says what it is where that is known.
  static FileHeader read(ByteView page);
};

/// True when the first bytes are those of any Access file.
bool looksLikeAccessFile(ByteView firstBytes);

/// Writes page 0 of a new file.
void writeNewHeader(ByteSpan page, ByteView creationDate);

/// Replaces the password (UTF-8, at most 20 characters) in page 0; an empty one removes it.
void writePassword(ByteSpan page, std::string_view password);

}  // namespace orva::access
