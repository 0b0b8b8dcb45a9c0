#pragma once

#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/workbook.h"
#include "wizard/catalogue/field_row.h"

namespace orva {

/// What the header row of a workbook says about one line of the catalogue.
enum class HeaderMark {
  kPresent,
  kMandatoryMissing,
  kTickedMissing,
  /// Missing, but neither mandatory nor ticked.
  kNotWanted
};

/// The column names of a sheet, which was opened with or without a header row.
std::vector<std::string> headerNames(const Sheet& sheet, HeaderRow header = HeaderRow::kNo);

/// Position of a column in the header row: trimmed, without regard to case, the first of a doubled
/// name; -1 when there is none.
int headerColumn(const std::vector<std::string>& header, std::string_view excelName);

/// One mark a line. Procedure name of the screens: the check of the field names.
std::vector<HeaderMark> CheckFieldNames(const Catalogue& catalogue, const std::vector<std::string>& header);

/// True when a line is missing that must be there or is to be imported.
bool hasMissingFields(const std::vector<HeaderMark>& marks);

/// Bold blue for missing mandatory lines, bold red for missing ticked ones, normal for all others.
void showHeaderMarks(const std::vector<HeaderMark>& marks, ListView& fields);

}  // namespace orva
