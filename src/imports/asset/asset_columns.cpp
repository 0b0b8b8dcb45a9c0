#include "imports/asset/asset_columns.h"

#include "platform/values/text.h"

namespace orva {

std::vector<MiscellaneousColumn> miscellaneousColumns(const ImportRun& run) {
  static constexpr std::string_view kNames[] = {"M1", "M2", "M3", "M4", "M5"};
  std::vector<MiscellaneousColumn> columns;
  const auto masters = run.connection().open("Select MName from MisMaster");
  for (std::string_view name : kNames) {
    if (masters->eof()) break;
    const std::string heading = nullToText(masters->get("MName"));
    masters->moveNext();
    const FieldRow* field = findField(run.catalogue, heading);
    // A master that bears the name of a fixed column does not take that column away.
    const int column = field && field->isMiscellaneous ? run.grid.findColumn(heading) : -1;
    if (column >= 0) columns.push_back({column, name});
  }
  return columns;
}

}  // namespace orva
