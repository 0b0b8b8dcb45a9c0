#include "imports/import_setting.h"

#include <map>

#include "fakes/case_file.h"
#include "imports/asset/asset_import.h"
#include "imports/transactions/amc_insurance.h"
#include "imports/transactions/change_category.h"
#include "imports/transactions/child_assets.h"
#include "imports/transactions/cost_breakup.h"
#include "imports/transactions/sale.h"
#include "imports/transactions/user_defined_fields.h"

namespace orva {
namespace {

const ImportProcedures& proceduresOf(ImportKindId kind) {
  static const ImportRegistry kKinds = {acquiredAssetProcedures(), closingBalanceProcedures(),
                                        childAssetsProcedures(),   childAssetsForeignExchangeProcedures(),
                                        costBreakupProcedures(),   userDefinedFieldsProcedures(),
                                        saleProcedures(),          amcProcedures(),
                                        insuranceProcedures(),     changeCategoryProcedures()};
  return *findProcedures(kKinds, kind);
}

const std::map<std::string, AssetMode> kModes = {
    {"add", AssetMode::kAdd}, {"asset", AssetMode::kModifyByAssetId}, {"phy", AssetMode::kModifyByPhysicalId}};
const std::map<std::string, bool Selection::*> kTicks = {{"auto", &Selection::autoCalcDepRate},
                                                         {"backdated", &Selection::backdated},
                                                         {"lease", &Selection::leaseHold},
                                                         {"multiple", &Selection::multipleAssetIds},
                                                         {"shifted", &Selection::shiftedIn}};
const std::map<std::string, bool ParameterFlags::*> kFlags = {{"book1", &ParameterFlags::additionalBook1},
                                                              {"book2", &ParameterFlags::additionalBook2},
                                                              {"centres", &ParameterFlags::costCentres},
                                                              {"users", &ParameterFlags::users},
                                                              {"validation", &ParameterFlags::validation}};

SheetRow cellsOf(const std::string& line) {
  if (line == "purchase") return purchase();
  if (line == "taken over") return takenOver();
  SheetRow cells;
  for (const std::string& cell : splitAt(line, " | ")) {
    const std::size_t end = cell.find('=');
    cells.emplace_back(cell.substr(0, end), cell.substr(end + 1));
  }
  return cells;
}

}  // namespace

bool ImportSetting::read(const std::string& line) {
  if (line.starts_with("good: ")) {
    good.push_back(cellsOf(line.substr(6)));
  } else if (line.starts_with("books: ")) {
    books.push_back(line.substr(7));
  } else if (line.starts_with("== ")) {
    *this = {};
    for (const std::string& word : splitAt(line.substr(3), " ")) {
      if (const auto kind = importKindByBatchName(word)) {
        selection.kind = *kind;
      } else if (kModes.contains(word)) {
        modes.push_back(kModes.at(word));
      } else if (kTicks.contains(word)) {
        selection.*kTicks.at(word) = true;
      } else {
        flags.*kFlags.at(word) = true;
      }
    }
    if (modes.empty()) modes = {AssetMode::kAdd};
  } else {
    return false;
  }
  return true;
}

std::unique_ptr<AssetCompany> ImportSetting::company(SqlDialect dialect, std::size_t mode) const {
  auto made = std::make_unique<AssetCompany>(dialect, proceduresOf(selection.kind));
  made->selection = selection;
  made->selection.mode = modes.at(mode);
  made->company.flags = flags;
  made->prepare(books);
  return made;
}

std::vector<SheetRow> ImportSetting::rows(const std::string& line, std::size_t mode) const {
  const SheetRow start = good.empty() ? SheetRow() : good.at(mode);
  std::vector<SheetRow> sheet;
  for (const std::string& row : splitAt(line, " || ")) {
    sheet.push_back(row == "good row" ? start : replaced(start, cellsOf(row)));
  }
  return sheet;
}

}  // namespace orva
