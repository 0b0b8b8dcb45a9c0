#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "wizard/catalogue/field_row.h"
#include "wizard/findings.h"

namespace orva {

/// A name in a workbook that no master of the company bears.
struct UnknownMaster {
  /// "Department", "Vendor", "User", "Cost Centre", "Location", or the name of a miscellaneous master.
  std::string master = {};
  /// As the workbook first spells it; the three levels of a location are joined with " / ".
  std::string name = {};
  int rows = 0;

  bool operator==(const UnknownMaster&) const = default;
};

/// The distinct unknown masters of a validated sheet, by master in the order above, then by name. Names compare
/// trimmed and without regard to case. A name is unknown where validation warned of its cell.
std::vector<UnknownMaster> unknownMastersIn(const Findings& findings, const FlexGrid& grid, const Catalogue& catalogue);

/// One line of a list: master, name, and how many rows bear it.
std::string unknownMasterText(const UnknownMaster& unknown);

}  // namespace orva
