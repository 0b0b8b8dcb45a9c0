#include "app/wiring.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "imports/asset/asset_import.h"
#include "imports/transactions/amc_insurance.h"
#include "imports/transactions/change_category.h"
#include "imports/transactions/child_assets.h"
#include "imports/transactions/cost_breakup.h"
#include "imports/transactions/sale.h"
#include "imports/transactions/user_defined_fields.h"
#include "platform/embedded/embedded_adapter.h"
#include "platform/local/path_lookup.h"
#include "platform/odbc/odbc_adapter.h"

namespace orva {

Wiring::Wiring() {
  databases_.add("Microsoft.Jet.OLEDB.4.0", std::make_shared<EmbeddedAdapter>(SqlDialect::kAccess));
  addServerProviders(databases_);
  importKinds_ = {
      acquiredAssetProcedures(), closingBalanceProcedures(),
      childAssetsProcedures(),   childAssetsForeignExchangeProcedures(),
      costBreakupProcedures(),   userDefinedFieldsProcedures(),
      saleProcedures(),          amcProcedures(),
      insuranceProcedures(),     changeCategoryProcedures(),
  };
}

Services Wiring::with(Dialogs& dialogs, Shell& shell, EventLoop& eventLoop) {
  return {databases_, workbooks_, files_, dialogs, shell, eventLoop};
}

std::string ownProgramFolder(const std::string& programName) {
  namespace fs = std::filesystem;
  std::error_code fault;
  // Where the system tells the program's own file; otherwise the name it was called by.
  fs::path program = fs::read_symlink("/proc/self/exe", fault);
  if (fault) program = fs::absolute(findPath(programName), fault);
  return pathText(program.parent_path());
}

}  // namespace orva
