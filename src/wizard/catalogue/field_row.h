#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// "M", "O" and "MFOE" (mandatory in the company, optional in the workbook).
enum class Requirement { kMandatory, kOptional, kMandatoryWithDefault };

std::string_view requirementText(Requirement requirement);

/// One line of a field catalogue: a workbook column that an import can read.
struct FieldRow {
  std::string label;
  /// Column name that the header row must carry.
  std::string excelName;
  /// "Text", "Date", "Currency" or "NUMBER".
  std::string type;
  /// Largest number of characters of a text, "DD/MM/YYYY" for a date, else empty.
  std::string size;
  Requirement requirement = Requirement::kOptional;
  bool ticked = false;
  /// Number of the value column that holds a user-defined field; 0 of the asset that has the fields; else empty.
  std::string position;
  /// Stands for a miscellaneous master, which the company names as it likes.
  bool isMiscellaneous = false;

  bool operator==(const FieldRow&) const = default;
};

using Catalogue = std::vector<FieldRow>;

/// Largest number of characters that a line allows; nothing checked when 0.
int maximumLength(const FieldRow& field);

/// The line of an Excel name (compared trimmed, without regard to case); null when the catalogue has none. A
/// miscellaneous master may bear the name of a fixed column: of several lines the first one that is ticked, else the
/// first.
const FieldRow* findField(const Catalogue& catalogue, std::string_view excelName);

}  // namespace orva
