#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "masters/master_import.h"
#include "platform/services.h"
#include "platform/workbook.h"
#include "startup/company_context.h"
#include "wizard/import_kinds.h"
#include "wizard/unknown_masters.h"

namespace orva {

/// A name that the company lacks, with the names of the same master that are spelled like it, nearest first.
struct MissingMaster {
  UnknownMaster unknown;
  std::vector<std::string> nearest = {};
  /// The company has the name: only the blanks around it in the workbook keep it from being found.
  bool isKnown = false;
};

/// Looks through an asset workbook for the masters that a company lacks, and makes of them a workbook for the master
/// import.
class MastersFrom {
 public:
  /// `assets` validates asset rows. All arguments must outlive the search; the company is open.
  MastersFrom(const Services& services, CompanyContext& company, const ImportProcedures& assets)
      : services_(services), company_(company), assets_(assets) {}

  /// The missing masters of the sheet "Asset", of which only the columns that name masters are read. Throws
  /// `WorkbookError`, `ProviderError`, and `std::runtime_error` for a sheet without such columns or with an error cell.
  std::vector<MissingMaster> search(const std::string& workbook) const;

  /// Rows of a sheet "Master" of one kind: the heading row of its catalogue, then the names that are not known, with
  /// the codes that the import of the assets would give them. Two columns that the import does not read follow: in how
  /// many rows a name stands, and the nearest names. `miscellaneousMaster` is the name of the master to be written,
  /// else empty.
  std::vector<std::vector<OutputCell>> masterSheet(const std::vector<MissingMaster>& missing, MasterKindId kind,
                                                   std::string_view miscellaneousMaster) const;

 private:
  std::vector<UnknownMaster> unknownIn(const std::string& workbook) const;
  std::vector<std::string> knownNames(const UnknownMaster& like) const;

  const Services& services_;
  CompanyContext& company_;
  const ImportProcedures& assets_;
};

}  // namespace orva
