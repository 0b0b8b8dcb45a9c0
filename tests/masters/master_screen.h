#pragma once

#include <string>
#include <vector>

#include "masters/frmMasterImport.h"
#include "masters/real_company.h"

namespace orva {

using Sheet2D = std::vector<std::vector<std::string>>;

/// The master wizard on a company that has one entry of every master.
class MasterScreen : public RealCompany {
 public:
  explicit MasterScreen(SqlDialect dialect = SqlDialect::kAccess);

  /// Chooses a master, reads a workbook and validates it. Of a miscellaneous master the name is chosen first.
  void read(MasterKindId kind, const Sheet2D& rows, const std::string& miscellaneous = {});
  /// The same; what stands in the three finding columns of each row, joined with "|", empty without a finding.
  std::vector<std::string> findings(MasterKindId kind, const Sheet2D& rows, const std::string& miscellaneous = {});
  /// Reads a workbook without errors and presses the buttons up to "Finish".
  void import(MasterKindId kind, const Sheet2D& rows, const std::string& miscellaneous = {});
  void finish();

  frmMasterImport screen{fakes.services, company};
};

}  // namespace orva
