#include "platform/odbc/demo_company.h"

#include <algorithm>
#include <regex>
#include <stdexcept>

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
  std::string path = program_.file(name);
  writeWorkbook(path, sheet, rows);
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

}  // namespace orva
