#include "app/demo_data.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "app/batch/batch.h"
#include "platform/values/date.h"
#include "platform/values/numeric_text.h"
#include "platform/xls/xls_workbooks.h"

namespace orva {
namespace {

constexpr std::pair<const char*, const char*> kGoodAsset[] = {
    {"PHYID", ""},
    {"USEDATE", "10/06/2025"},
    {"VCHRDATE", "05/06/2025"},
    {"CAT1", "Computers"},
    {"CAT2", "Personal Computers"},
    {"CAT3", "Laptops"},
    {"DESCRIPTION", "Laptop"},
    {"COST", "65000.50"},
    {"MAINLOC", "Pune"},
    {"SUBLOC", "Office"},
    {"PHYLOC", "First Floor"},
    {"VENDOR", "Godavari Motors"},
    {"DEPT", "Accounts"},
    {"COSTCENTRE", "Head Office"},
    {"USER", "A. Kulkarni"},
    {"QTY", "1"},
    {"SALVAGEVALUE", ""},
    {"VCHRNO", ""},
    {"PONO", "PO1"},
    {"PODATE", "01/06/2025"},
    {"BILLNO", "B1"},
    {"BILLDATE", "04/06/2025"},
    {"WARRANTY", "31/05/2027"},
};

OutputCell cellOf(const std::string& text) {
  if (text.empty()) return {};
  if (Date::parseDayMonthYear(text)) return {CellKind::kDate, text};
  return {isNumeric(text) ? CellKind::kNumber : CellKind::kText, text};
}

}  // namespace

Ran runCommand(const std::string& folder, const std::vector<std::string>& arguments, const std::string& input) {
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  const Exit exit = runBatch(arguments, folder, {in, out, err});
  return {static_cast<int>(exit), out.str(), err.str()};
}

std::string demoScript(const std::string& name) {
  std::ifstream file(std::string(ORVA_DEMO) + "/" + name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void writeWorkbook(const std::string& path, const std::string& sheet,
                   const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::vector<OutputCell>> cells;
  for (const auto& row : rows) {
    auto& line = cells.emplace_back();
    for (const std::string& text : row) line.push_back(cellOf(text));
  }
  XlsWorkbooks().write(path, sheet, cells);
}

std::vector<std::string> assetHeadings() {
  std::vector<std::string> headings;
  for (const auto& [heading, text] : kGoodAsset) headings.emplace_back(heading);
  return headings;
}

std::vector<std::string> goodAsset(const std::string& physicalId) {
  std::vector<std::string> asset;
  for (const auto& [heading, text] : kGoodAsset) asset.emplace_back(text);
  return with(std::move(asset), {{"PHYID", physicalId}, {"VCHRNO", "V" + physicalId}});
}

std::vector<std::string> with(std::vector<std::string> asset, const std::map<std::string, std::string>& cells) {
  const std::vector<std::string> headings = assetHeadings();
  for (const auto& [heading, text] : cells) {
    asset[static_cast<std::size_t>(std::ranges::find(headings, heading) - headings.begin())] = text;
  }
  return asset;
}

}  // namespace orva
