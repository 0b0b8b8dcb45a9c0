#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/query_rows.h"
#include "fakes/temporary_folder.h"
#include "startup/company_context.h"
#include "startup/schema/upgrade_table.h"

namespace orva {

/// A company as the main system of old made it: only the base tables, with the columns that
/// newer releases dropped. The connection can be made to fail.
class OldCompany {
 public:
  explicit OldCompany(SchemaDialect dialect);

  /// Opens the way Open does and upgrades; gives the boxes that were shown.
  std::vector<std::string> upgrade();
  void run(const std::string& sql) { context.connection->execute(sql); }
  /// Rows of a query: values joined by "|", rows by "/".
  std::string rows(const std::string& sql) { return rowsOf(*context.connection, sql); }
  FaultPlan& faults() { return adapter_->plan(); }
  bool isServer() const { return context.isSqlServer; }

  CompanyContext context;
  FakeServices all;

 private:
  TemporaryFolder folder_;
  std::shared_ptr<FaultyAdapter> adapter_;
};

inline std::string dialectName(SchemaDialect dialect) {
  return dialect == SchemaDialect::kServer ? "Server" : "Access";
}

}  // namespace orva
