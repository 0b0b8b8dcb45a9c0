#pragma once

#include "platform/access/cell.h"
#include "platform/access/page_file.h"

namespace orva::access {

/// Writes the smallest database that the engine knows into an empty file: the
/// header, the free map and the four system tables with their first rows.
void writeNewDatabase(PageFile& file, DateTime now);

}  // namespace orva::access
