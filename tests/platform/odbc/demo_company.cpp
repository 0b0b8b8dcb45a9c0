#include "platform/odbc/demo_company.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "app/batch/batch.h"
#include "platform/values/date.h"
#include "platform/values/numeric_text.h"
#include "platform/values/text.h"
#include "platform/xls/xls_workbooks.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/upgrade.h"
#include "startup/schema/upgrade_table.h"

namespace orva {
namespace {

void expectDone(const Ran& ran) {
  if (ran.status != 0) throw std::runtime_error(ran.out + ran.err);
}

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

std::string serverDefinition(const std::string& access) {
  return replaceAll(withServerTypes(access), "constraint pk_id primary key", "primary key");
}

std::string serverForm(std::string statement) {
  std::ranges::replace(statement, '#', '\'');
  statement = std::regex_replace(statement, std::regex("\\btrue\\b"), "1");
  return std::regex_replace(statement, std::regex("\\bfalse\\b"), "0");
}

const DemoCompany& DemoCompany::master() {
  static DemoCompany company(Where::kTestServer, nullptr);
  company.home.stop();
  return company;
}

DemoCompany::DemoCompany(Where where) : DemoCompany(where, where == Where::kTestServer ? &master() : nullptr) {}

DemoCompany::DemoCompany(Where where, const DemoCompany* base) : home(where, base ? &base->home : nullptr) {
  const CompanyContext& context = home.context();
  program_.write("SqlProviderConnection.ini", context.providerClause + "\r\n");
  expectDone(onServer({"server-file", "--server", context.server, "--authentication", "SQL", "--user", context.userId},
                      context.password + "\n"));
  if (!base) makeServerCompany();
  makeAccessCompany(base);
}

void DemoCompany::makeServerCompany() {
  home.makeCatalog("DEMOORVA");
  const auto connection = home.connect("DEMOORVA");
  for (const std::string& statement : baseTableStatements()) connection->execute(serverDefinition(statement));
  runUpgrade(*connection, SchemaDialect::kServer);
  for (const std::string& statement : afterUpgradeStatements()) connection->execute(serverDefinition(statement));
  connection->execute("insert into Company (cocd) values ('DEMO')");
  expectDone(onServer({"sql", "--company", "DEMO"}, serverForm(demoScript())));
}

void DemoCompany::makeAccessCompany(const DemoCompany* base) {
  if (base) {
    std::filesystem::copy(base->access_.path(), access_.path());
    access_.write("Orva.ini", access_.text() + "\r\n");
    return;
  }
  expectDone(onAccess({"setup"}));
  expectDone(onAccess({"new", "DEMO"}));
  expectDone(onAccess({"sql", "--company", "DEMO"}, demoScript()));
  // The upgrade of a server switches this on at every opening.
  expectDone(onAccess({"sql", "--company", "DEMO", "update Parameter set Validation = true"}));
}

Ran DemoCompany::onServer(const std::vector<std::string>& arguments, const std::string& input) const {
  return runCommand(program_.text(), arguments, input);
}

Ran DemoCompany::onAccess(const std::vector<std::string>& arguments, const std::string& input) const {
  return runCommand(access_.text(), arguments, input);
}

std::string DemoCompany::workbook(const std::vector<std::vector<std::string>>& rows, const std::string& name,
                                  const std::string& sheet) const {
  std::vector<std::vector<OutputCell>> cells;
  for (const auto& row : rows) {
    auto& line = cells.emplace_back();
    for (const std::string& text : row) line.push_back(cellOf(text));
  }
  std::string path = program_.file(name);
  XlsWorkbooks().write(path, sheet, cells);
  return path;
}

std::string DemoCompany::demoWorkbook(const std::string& file) const {
  const auto sheet = XlsWorkbooks().openSheet(std::string(ORVA_DEMO) + "/" + file, "Asset", HeaderRow::kNo);
  std::vector<std::vector<std::string>> rows;
  int voucherDate = 0;
  for (int row = 0; row < sheet->rowCount(); ++row) {
    auto& cells = rows.emplace_back();
    for (int column = 0; column < sheet->columnCount(); ++column) {
      cells.push_back(sheet->text(row, column));
      if (row == 0 && cells.back() == "VCHRDATE") voucherDate = column;
    }
    cells.push_back(row == 0 ? "PONO" : "PO1");
    cells.push_back(row == 0 ? "PODATE" : sheet->text(row, voucherDate));
    cells.push_back(row == 0 ? "WARRANTY" : "31/03/2030");
  }
  return workbook(rows, file);
}

std::vector<std::string> assetHeadings() {
  return {"PHYID",        "USEDATE", "VCHRDATE", "CAT1",   "CAT2",   "CAT3",       "DESCRIPTION", "COST",
          "MAINLOC",      "SUBLOC",  "PHYLOC",   "VENDOR", "DEPT",   "COSTCENTRE", "USER",        "QTY",
          "SALVAGEVALUE", "VCHRNO",  "PONO",     "PODATE", "BILLNO", "BILLDATE",   "WARRANTY"};
}

std::vector<std::string> goodAsset(const std::string& physicalId) {
  return {physicalId,
          "10/06/2025",
          "05/06/2025",
          "Computers",
          "Personal Computers",
          "Laptops",
          "Laptop",
          "65000.50",
          "Pune",
          "Office",
          "First Floor",
          "Godavari Motors",
          "Accounts",
          "Head Office",
          "A. Kulkarni",
          "1",
          "",
          "V" + physicalId,
          "PO1",
          "01/06/2025",
          "B1",
          "04/06/2025",
          "31/05/2027"};
}

std::vector<std::vector<std::string>> goodSheet(int count) {
  std::vector<std::vector<std::string>> rows{assetHeadings()};
  for (int i = 1; i <= count; ++i) rows.push_back(goodAsset("P" + std::to_string(i)));
  return rows;
}

std::vector<std::string> importing(const std::string& workbook, const std::vector<std::string>& more) {
  std::vector<std::string> arguments{"import", "--company", "DEMO", "--kind", "acquired", workbook};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

std::vector<std::string> with(std::vector<std::string> asset, const std::map<std::string, std::string>& cells) {
  const std::vector<std::string> headings = assetHeadings();
  for (const auto& [heading, text] : cells) {
    asset[static_cast<std::size_t>(std::ranges::find(headings, heading) - headings.begin())] = text;
  }
  return asset;
}

}  // namespace orva
