#pragma once

#include <string>

#include "platform/xls/bytes.h"

namespace orva::xls {

/// The bytes of a workbook file, read at once; the file is closed again. Of a
/// file without a container's signature only the beginning is read, enough to
/// tell what it is. Throws `WorkbookError` (kCannotOpen) when it is missing, is
/// no file, may not be read or is locked by another program.
Bytes readWorkbookFile(const std::string& path);

/// Writes a file under a temporary name beside its place and then puts it there,
/// so that an existing file is replaced whole or not at all. Throws
/// `WorkbookError` (kCannotOpen).
void writeWorkbookFile(const std::string& path, const Bytes& bytes);

}  // namespace orva::xls
