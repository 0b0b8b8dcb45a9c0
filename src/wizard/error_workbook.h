#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/services.h"
#include "wizard/catalogue/field_row.h"

namespace orva {

/// The heading row and every row in error, cells joined with tabs as they stand.
std::vector<std::string> errorLines(const FlexGrid& grid);
/// One line: the Excel names of a catalogue.
std::vector<std::string> headerLines(const Catalogue& catalogue);

/// Writes the lines as "ExportOrva.xls" in the program folder and opens it with the desktop. When the old
/// file cannot be replaced because it is open, a message says so and nothing changes. Throws `FileError` when the
/// new file cannot be written.
void writeAndOpenExport(const Services& services, std::string_view programFolder,
                        const std::vector<std::string>& lines);

}  // namespace orva
