#include "wizard/catalogue/generated_lines.h"

#include <algorithm>
#include <memory>
#include <string>

#include "platform/values/text.h"
#include "wizard/catalogue/lines.h"

namespace orva {
namespace {

/// The digits at the end of a column's name ("UDV11" is "11").
std::string numberOf(std::string_view column) {
  const std::size_t last = column.find_last_not_of("0123456789");
  return std::string(column.substr(last == std::string_view::npos ? 0 : last + 1));
}

std::string typeText(FieldType type) {
  if (type == FieldType::kVarChar) return "Text";
  return type == FieldType::kDate || type == FieldType::kTimestamp ? "Date" : "";
}

std::string sizeText(const FieldInfo& column) {
  if (column.type == FieldType::kVarChar) return std::to_string(column.size);
  return typeText(column.type).empty() ? std::string() : std::string(kDateFormat);
}

/// The company's name for a value column; empty when the field is not used.
std::string captionOf(Recordset& names, const std::vector<FieldInfo>& nameColumns, const std::string& number) {
  const std::string nameColumn = "UDF" + number;
  const bool exists = std::any_of(nameColumns.begin(), nameColumns.end(),
                                  [&](const FieldInfo& field) { return equalsNoCase(field.name, nameColumn); });
  return exists ? nullToText(names.get(nameColumn)) : std::string();
}

}  // namespace

Catalogue userDefinedLines(Connection& connection) {
  const std::unique_ptr<Recordset> names = connection.open("Select * from UDfields");
  const std::unique_ptr<Recordset> values = connection.open("select * from UDValues");
  Catalogue lines;
  if (names->eof()) return lines;
  const std::vector<FieldInfo> nameColumns = names->fields();
  for (const FieldInfo& column : values->fields()) {
    if (equalsNoCase(column.name, "Assetid")) continue;
    const std::string number = numberOf(column.name);
    std::string caption = captionOf(*names, nameColumns, number);
    if (trim(caption).empty()) continue;
    lines.push_back({.label = std::move(caption),
                     .excelName = column.name,
                     .type = typeText(column.type),
                     .size = sizeText(column),
                     .position = number});
  }
  return lines;
}

bool hasUserDefinedFields(Connection& connection) { return !userDefinedLines(connection).empty(); }

Catalogue miscellaneousMasterLines(Connection& connection) {
  Catalogue lines;
  const std::unique_ptr<Recordset> masters = connection.open("Select MName from MisMaster");
  for (; !masters->eof(); masters->moveNext()) {
    const std::string name = nullToText(masters->get("MName"));
    if (trim(name).empty()) continue;
    lines.push_back(
        {.label = name, .excelName = name, .type = "Text", .size = "255", .position = {}, .isMiscellaneous = true});
  }
  return lines;
}

}  // namespace orva
