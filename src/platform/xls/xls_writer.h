#pragma once

#include <string_view>
#include <vector>

#include "platform/workbook.h"
#include "platform/xls/bytes.h"

namespace orva::xls {

/// A workbook with one sheet, as the bytes of its file. Numbers and dates whose
/// text cannot be read as such are written as texts. Throws `Refusal`
/// (kCannotOpen) when the rows are more than a sheet can hold.
Bytes workbookBytes(std::string_view sheetName, const std::vector<std::vector<OutputCell>>& rows);

}  // namespace orva::xls
