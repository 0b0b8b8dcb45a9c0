#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/temporary_folder.h"
#include "platform/embedded/embedded_adapter.h"
#include "startup/company_context.h"
#include "wizard/import_kinds.h"
#include "wizard/import_run.h"

namespace orva {

/// Cells of one sheet row by heading.
using SheetRow = std::vector<std::pair<std::string, std::string>>;

/// A purchase that has nothing wrong in the test company, with some cells replaced or added.
SheetRow purchase(const SheetRow& cells = {});
/// The same as an opening position: closing balances of the first year.
SheetRow takenOver(const SheetRow& cells = {});
/// A row with other cells under some of its headings, or with more of them.
SheetRow replaced(SheetRow row, const SheetRow& cells);

/// A small company in a real database: two open years (2004-05, 2005-06), category "Plant and Machinery"
/// with "Pumps" and "Centrifugal", all masters, no asset.
class AssetCompany {
 public:
  explicit AssetCompany(SqlDialect dialect = SqlDialect::kAccess);
  AssetCompany(SqlDialect dialect, const ImportProcedures& kind);
  AssetCompany(const AssetCompany&) = delete;
  AssetCompany& operator=(const AssetCompany&) = delete;
  /// Whatever was done, the file must be sound.
  ~AssetCompany();

  /// Statements in the Access dialect, which is what the books were set up with.
  void prepare(const std::vector<std::string>& statements);
  /// Puts the rows on the sheet; headings are those of the first row, in its order.
  void stage(const std::vector<SheetRow>& rows);
  /// Findings of the staged rows, one line each: "row COLUMN: text", "~" in front of a warning, "*" of a backdated
  /// date.
  std::vector<std::string> validate();
  PostResult post();
  /// Stages, validates without error, posts.
  PostResult import(const std::vector<SheetRow>& rows);
  /// Rows of a query in the company's dialect, cells joined with "|".
  std::vector<std::string> rows(const std::string& query);
  std::string row(const std::string& query);

  ImportRun run();

  TemporaryFolder folder;
  FakeServices fakes;
  std::shared_ptr<FaultyAdapter> adapter;
  CompanyContext company;
  /// What is imported; assets unless a test says otherwise.
  ImportProcedures procedures;
  Selection selection;
  Catalogue catalogue;
  Findings findings;
  FlexGrid grid{"grid1"};
  FlexGrid saved{"flxSave"};
  Label message{"lblMsg2"};
  Label current{"lblCurrentStatus"};
  ProgressBar bar{"ProgressBar1"};
  RunProgress progress{{message, current, bar, fakes.eventLoop}};

 private:
  std::string connectionString() const;
};

}  // namespace orva
