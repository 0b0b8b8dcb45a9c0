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

Ran runCommand(const std::string& folder, const std::vector<std::string>& arguments, const std::string& input) {
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  const Exit exit = runBatch(arguments, folder, {in, out, err});
  return {static_cast<int>(exit), out.str(), err.str()};
}

std::string demoScript() {
  std::ifstream file(std::string(ORVA_DEMO) + "/company.sql");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void expectDone(const Ran& ran) {
  if (ran.status != 0) throw std::runtime_error(ran.out + ran.err);
}

OutputCell cellOf(const std::string& text) {
  if (text.empty()) return {};
  if (Date::parseDayMonthYear(text)) return {CellKind::kDate, text};
  return {isNumeric(text) ? CellKind::kNumber : CellKind::kText, text};
}

}  // namespace

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
}

Ran DemoCompany::onServer(std::vector<std::string> arguments, const std::string& input) const {
  return runCommand(program_.text(), arguments, input);
}

Ran DemoCompany::onAccess(std::vector<std::string> arguments, const std::string& input) const {
  return runCommand(access_.text(), arguments, input);
}

std::string DemoCompany::workbook(const std::vector<std::vector<std::string>>& rows, const std::string& name) const {
  std::vector<std::vector<OutputCell>> cells;
  for (const auto& row : rows) {
    auto& line = cells.emplace_back();
    for (const std::string& text : row) line.push_back(cellOf(text));
  }
  const std::string path = program_.file(name);
  XlsWorkbooks().write(path, "Asset", cells);
  return path;
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

}  // namespace orva
