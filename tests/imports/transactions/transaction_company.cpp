#include "imports/transactions/transaction_company.h"

#include <gtest/gtest.h>

#include "imports/transactions/amc_insurance.h"
#include "imports/transactions/change_category.h"
#include "imports/transactions/child_assets.h"
#include "imports/transactions/cost_breakup.h"
#include "imports/transactions/sale.h"
#include "imports/transactions/user_defined_fields.h"

namespace orva {
namespace {

std::string asset(const std::string& id, const std::string& physicalId, const std::string& acquiredAs = "Purchased",
                  const std::string& useDate = "#05/10/2005#") {
  return "insert into Asset (Cocd, Assetid, srno, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, Cost, "
         "Docdt, "
         "UseDate, Facode, FACode1, FACode2, Vendorcode, Batch) values ('K1', '" +
         id + "', '7', '" + physicalId + "', '" + acquiredAs +
         "', '2005-06', '2005-06', 'PM', 'PM-01', 1000, #05/01/2005#, " + useDate + ", 'F1', 'A1', 'B1', '0003', 'B7')";
}

Lines books() {
  return {asset("P1", "T-1"),
          asset("O''N", "T-2"),
          asset("SOLD", "T-3"),
          asset("OUT", "T-4"),
          asset("MOVED", "T-5"),
          asset("NEW", "T-6", "Purchased", "null"),
          asset("OPEN", "T-7", "O"),
          "insert into AssetOut (AssetId, Docdt, SrNo) values ('SOLD', #08/01/2005#, 'S-9')",
          "insert into AssetOut (AssetId, Docdt, SrNo) values ('GONE', #08/01/2005#, 'S-8')",
          "insert into Shift (assetid, docdt, tfrout, sameloc) values ('OUT', #07/01/2005#, true, false)",
          "insert into Shift (assetid, docdt, tfrout, sameloc) values ('MOVED', #07/01/2005#, true, true)"};
}

ImportProcedures proceduresOf(ImportKindId kind) {
  for (const auto& procedures :
       {saleProcedures(), amcProcedures(), insuranceProcedures(), changeCategoryProcedures(), childAssetsProcedures(),
        childAssetsForeignExchangeProcedures(), costBreakupProcedures(), userDefinedFieldsProcedures()}) {
    if (procedures.kind == kind) return procedures;
  }
  return acquiredAssetProcedures();
}

}  // namespace

TransactionCompany::TransactionCompany(ImportKindId kind, SqlDialect dialect) : AssetCompany(dialect) {
  selection.kind = kind;
  procedures = proceduresOf(kind);
  prepare(books());
}

void checkRules(const Selection& selection, const SheetRow& good, const std::vector<RuleCase>& cases) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    const bool isServer = dialect == SqlDialect::kSqlServer;
    TransactionCompany unchanged(selection.kind, dialect);
    for (const RuleCase& one : cases) {
      std::optional<TransactionCompany> changed;
      if (!one.books.empty()) changed.emplace(selection.kind, dialect).prepare(one.books);
      TransactionCompany& company = changed ? *changed : unchanged;
      company.selection = selection;
      company.stage({replaced(good, one.cells)});
      std::string what = isServer ? "server: " : "access: ";
      for (const auto& [heading, text] : one.cells) what += heading + "=" + text + " ";
      for (const std::string& statement : one.books) what += "\n" + statement;
      EXPECT_EQ(company.validate(), isServer && one.onServer ? *one.onServer : one.findings) << what;
    }
  }
}

}  // namespace orva
