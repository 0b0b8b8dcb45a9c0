#include "wizard/header_check.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva {
namespace {

HeaderMark markOf(const FieldRow& field, bool isPresent) {
  if (isPresent) return HeaderMark::kPresent;
  if (field.requirement == Requirement::kMandatory) return HeaderMark::kMandatoryMissing;
  return field.ticked ? HeaderMark::kTickedMissing : HeaderMark::kNotWanted;
}

}  // namespace

std::vector<std::string> headerNames(const Sheet& sheet, HeaderRow header) {
  std::vector<std::string> names;
  const bool isNamed = header == HeaderRow::kYes;
  if (!isNamed && sheet.rowCount() == 0) return names;
  for (int column = 0; column < sheet.columnCount(); ++column) {
    names.push_back(isNamed ? sheet.columnName(column) : sheet.text(0, column));
  }
  return names;
}

int headerColumn(const std::vector<std::string>& header, std::string_view excelName) {
  const auto found = std::find_if(header.begin(), header.end(), [&](const std::string& name) {
    return equalsNoCase(trimSpace(name), trimSpace(excelName));
  });
  return found == header.end() ? -1 : static_cast<int>(found - header.begin());
}

std::vector<HeaderMark> CheckFieldNames(const Catalogue& catalogue, const std::vector<std::string>& header) {
  std::vector<HeaderMark> marks;
  for (const FieldRow& field : catalogue) marks.push_back(markOf(field, headerColumn(header, field.excelName) >= 0));
  return marks;
}

bool hasMissingFields(const std::vector<HeaderMark>& marks) {
  return std::any_of(marks.begin(), marks.end(), [](HeaderMark mark) {
    return mark == HeaderMark::kMandatoryMissing || mark == HeaderMark::kTickedMissing;
  });
}

void showHeaderMarks(const std::vector<HeaderMark>& marks, ListView& fields) {
  const UpdateBatch batch(fields);
  for (std::size_t line = 0; line < marks.size(); ++line) {
    const int index = static_cast<int>(line);
    switch (marks[line]) {
      case HeaderMark::kMandatoryMissing:
        fields.setLook(index, true, colours::kBlue);
        break;
      case HeaderMark::kTickedMissing:
        fields.setLook(index, true, colours::kRed);
        break;
      case HeaderMark::kPresent:
      case HeaderMark::kNotWanted:
        fields.setLook(index, false, colours::kBlack);
        break;
    }
  }
}

}  // namespace orva
