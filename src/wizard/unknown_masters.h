#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "wizard/catalogue/field_row.h"
#include "wizard/findings.h"

namespace orva {

/// The masters that the rows of an asset sheet refer to by name.
enum class NamedMaster { kDepartment, kVendor, kUser, kCostCentre, kLocation, kMiscellaneous };

/// A name in a workbook that no master of the company bears.
struct UnknownMaster {
  NamedMaster kind = NamedMaster::kDepartment;
  /// "Department", "Vendor", "User", "Cost Centre", "Location", or the name of a miscellaneous master.
  std::string master = {};
  /// As the workbook first spells it: one text, or the three levels of a location.
  std::vector<std::string> names = {};
  int rows = 0;
  /// How many of the rows have blanks around the name. Look-ups of asset rows do not overlook them.
  int rowsWithBlanks = 0;

  /// The levels of a location are joined with " / ".
  std::string name() const;
  bool operator==(const UnknownMaster&) const = default;
};

/// True for a column that names a master, which is all that such a search has to read.
bool namesMaster(std::string_view heading, const Catalogue& catalogue);

/// The distinct unknown masters of a validated sheet, by master in the order above, then by name. Names compare
/// trimmed and without regard to case. A name is unknown where validation warned of its cell; one that is in error as
/// well ("ALL", too long, a location without all levels) can be no master.
std::vector<UnknownMaster> unknownMastersIn(const Findings& findings, const FlexGrid& grid, const Catalogue& catalogue);

/// One line of a list: master, name, how many rows bear it, and how many of them with blanks around it.
std::string unknownMasterText(const UnknownMaster& unknown);

}  // namespace orva
