#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/temporary_folder.h"
#include "platform/embedded/embedded_adapter.h"
#include "startup/company_context.h"

namespace orva {

inline constexpr SqlDialect kBothDialects[] = {SqlDialect::kAccess, SqlDialect::kSqlServer};

/// An empty company "K1" in a database file, opened as the screens open it, in either dialect.
class RealCompany {
 public:
  explicit RealCompany(SqlDialect dialect = SqlDialect::kAccess);

  /// Runs statements that both dialects know.
  void prepare(const std::vector<std::string>& statements) const;
  /// Rows of a query in the company's dialect, cells joined with "|".
  std::vector<std::string> rows(const std::string& query) const;
  /// Lines of the error file; empty when none was written.
  std::vector<std::string> errorFile() const;

  TemporaryFolder folder;
  FakeServices fakes;
  std::shared_ptr<FaultyAdapter> adapter;
  CompanyContext company;
};

}  // namespace orva
