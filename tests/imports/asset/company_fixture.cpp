#include "imports/asset/company_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "imports/asset/asset_import.h"
#include "platform/access/structure_check.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/upgrade.h"
#include "wizard/catalogue/builders.h"
#include "wizard/staging.h"

namespace orva {
namespace {

constexpr const char* kBooks[] = {
    "insert into Company (cocd, coname) values ('K1', 'Test Company')",
    "insert into AccYear (AccYear, AccOpDt, AccClDt, Closed) values ('2004-05', #04/01/2004#, #03/31/2005#, false)",
    "insert into AccYear (AccYear, AccOpDt, AccClDt, Closed) values ('2005-06', #04/01/2005#, #03/31/2006#, false)",
    "insert into FinYear (FinYear, FinOpDt, FinClDt, Closed) values ('2004-05', #04/01/2004#, #03/31/2005#, false)",
    "insert into FinYear (FinYear, FinOpDt, FinClDt, Closed) values ('2005-06', #04/01/2005#, #03/31/2006#, false)",
    "insert into FADefinition (DefCode, Description, Prefix, FACode, FACode1, FACode2, BlockCode) "
    "values ('PM', 'Plant and Machinery', 'PM', 'F1', 'A1', 'B1', 'T1')",
    "insert into FADefinition (DefCode, Description, Prefix, FACode, FACode1, FACode2, BlockCode, blnLeaseHold) "
    "values ('LH', 'Leased Land', 'LH', 'F1', 'A1', 'B1', 'T1', true)",
    "insert into Classification (DefCode, ClassCode, ClassDesc, Prefix) values ('PM', 'PM-01', 'Pumps', 'PU')",
    "insert into Classification (DefCode, ClassCode, ClassDesc) values ('PM', 'PM-02', 'Presses')",
    "insert into Classification (DefCode, ClassCode, ClassDesc) values ('LH', 'LH-01', 'Plots')",
    "insert into SubClass (DefCode, ClassCode, SubClassCode, SubClassDesc, Prefix, FACode) "
    "values ('PM', 'PM-01', 'PM-01-01', 'Centrifugal', 'CE', 'F2')",
    "insert into FARate (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'F1', 'SLM', 10, '2004-05')",
    "insert into FARate (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'F1', 'SLM', 10, '2005-06')",
    "insert into FARate (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'F2', 'WDV', 25, '2004-05')",
    "insert into FARate (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'F2', 'WDV', 25, '2005-06')",
    "insert into FARate1 (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'A1', 'WDV', 15, '2004-05')",
    "insert into FARate1 (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'A1', 'WDV', 15, '2005-06')",
    "insert into FARate2 (Cocd, FACode, Method, Rate, Accyear) values ('K1', 'B1', 'SLM', 5, '2004-05')",
    "insert into ITaxRates (Cocd, BlockCode, Rate, FinYear) values ('K1', 'T1', 40, '2004-05')",
    "insert into ITaxRates (Cocd, BlockCode, Rate, FinYear) values ('K1', 'T1', 40, '2005-06')",
    "insert into Dept (Deptcode, DeptName) values ('0007', 'Stores')",
    "insert into Vendor (Vendorcode, VendorName) values ('0003', 'Acme')",
    "insert into CostCentre (Centrecode, CentreName) values ('0002', 'Works')",
    "insert into Users (usedby, UserName) values ('0004', 'Rao')",
    "insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) "
    "values ('K1', 12, 'Pune', 'Plant 1', 'Bay 1')",
    "update parameter set digits=4, regioncode=null, autoassetid=true",
};

/// One database of each kind for all tests of the program; each works on a copy.
const std::string& master(CompanyFileKind kind) {
  static TemporaryFolder folder;
  const auto make = [](CompanyFileKind made, const std::string& name) {
    std::string file = folder.file(name);
    DatabaseRegistry databases;
    databases.add("Access", std::make_shared<EmbeddedAdapter>(SqlDialect::kAccess, "", made));
    const std::string clauses = "Provider=Access;Data Source=" + file;
    databases.create(clauses);
    const auto connection = databases.connect(clauses);
    for (const std::string& statement : baseTableStatements()) connection->execute(statement);
    runUpgrade(*connection, SchemaDialect::kAccess);
    for (const std::string& statement : afterUpgradeStatements()) connection->execute(statement);
    for (const char* statement : kBooks) connection->execute(statement);
    return file;
  };
  static const std::string access = make(CompanyFileKind::kAccess, "access.mdb");
  static const std::string sqlite = make(CompanyFileKind::kSqlite, "sqlite.mdb");
  return kind == CompanyFileKind::kAccess ? access : sqlite;
}

std::string lineOf(const Finding& finding, const FlexGrid& grid) {
  const char* mark = finding.findingClass == FindingClass::kWarning     ? "~"
                     : finding.findingClass == FindingClass::kBackdated ? "*"
                                                                        : "";
  const std::string column =
      finding.otherColumn.empty() ? std::string(grid.text(0, finding.column)) : std::string(finding.otherColumn);
  const std::string text = findingText(finding);
  return mark + std::to_string(finding.row) + " " + column + (text.empty() ? "" : ": " + text);
}

}  // namespace

SheetRow replaced(SheetRow row, const SheetRow& cells) {
  for (const auto& cell : cells) {
    const auto found = std::ranges::find(row, cell.first, &SheetRow::value_type::first);
    if (found == row.end()) {
      row.push_back(cell);
    } else {
      found->second = cell.second;
    }
  }
  return row;
}

SheetRow purchase(const SheetRow& cells) {
  return replaced({{"PHYID", "T-100"},
                   {"USEDATE", "01/05/2005"},
                   {"VCHRDATE", "01/05/2005"},
                   {"CAT1", "Plant and Machinery"},
                   {"CAT2", "Pumps"},
                   {"CAT3", ""},
                   {"DESCRIPTION", "Feed pump"},
                   {"COST", "1000"},
                   {"QTY", "1"},
                   {"MAINLOC", "Pune"},
                   {"SUBLOC", "Plant 1"},
                   {"PHYLOC", "Bay 1"},
                   {"DEPT", "Stores"},
                   {"VENDOR", "Acme"}},
                  cells);
}

SheetRow takenOver(const SheetRow& cells) {
  return replaced(purchase({{"USEDATE", "01/10/2004"}, {"VCHRDATE", "01/10/2004"}, {"ACCDEP", "120"}}), cells);
}

AssetCompany::AssetCompany(SqlDialect dialect) : AssetCompany(dialect, acquiredAssetProcedures()) {}

AssetCompany::AssetCompany(SqlDialect dialect, const ImportProcedures& kind) : procedures(kind) {
  selection.kind = kind.kind;
  // A company of the desktop is a genuine Access file; what stands in for the server has files of its own.
  const bool isServer = dialect == SqlDialect::kSqlServer;
  const auto store = isServer ? CompanyFileKind::kSqlite : CompanyFileKind::kAccess;
  std::filesystem::copy_file(master(store), folder.path() / "company.mdb");
  adapter = std::make_shared<FaultyAdapter>(std::make_shared<EmbeddedAdapter>(dialect, folder.text()));
  fakes.databases.add("Company", adapter);
  fakes.databases.add("Books", std::make_shared<EmbeddedAdapter>(SqlDialect::kAccess));
  fakes.eventLoop.due = false;
  company.isSqlServer = isServer;
  company.companyCode = "K1";
  company.flags.automaticIdentifiers = true;
  company.connection = fakes.databases.connect(connectionString());
}

AssetCompany::~AssetCompany() {
  company.connection.reset();
  if (company.isSqlServer) return;
  for (const auto& fault : access::checkFile(folder.file("company.mdb"))) ADD_FAILURE() << fault.toText();
}

std::string AssetCompany::connectionString() const {
  return company.isSqlServer ? "Provider=Company;Initial Catalog=company"
                             : "Provider=Company;Data Source=" + folder.file("company.mdb");
}

void AssetCompany::prepare(const std::vector<std::string>& statements) {
  const auto books = fakes.databases.connect("Provider=Books;Data Source=" + folder.file("company.mdb"));
  for (const std::string& statement : statements) books->execute(statement);
}

ImportRun AssetCompany::run() {
  return {.services = fakes.services,
          .company = company,
          .selection = selection,
          .catalogue = catalogue,
          .grid = grid,
          .findings = findings,
          .progress = progress,
          .saved = saved};
}

void AssetCompany::stage(const std::vector<SheetRow>& sheet) {
  catalogue = buildCatalogue(selection, company);
  const auto own = procedures.ownColumns;
  TextTable table;
  table.reset(static_cast<int>(sheet.front().size() + own.size()));
  table.addRow();
  int column = 0;
  for (const auto& cell : sheet.front()) table.setCell(0, column++, cell.first);
  for (const std::string_view heading : own) table.setCell(0, column++, heading);
  for (const SheetRow& cells : sheet) {
    const int row = table.addRow();
    column = 0;
    for (const auto& [heading, text] : cells) table.setCell(row, column++, normalisedCell(heading, text));
  }
  grid.setTable(table);
  saved.setTable(table);
}

std::vector<std::string> AssetCompany::validate() {
  findings.clear();
  ImportRun order = run();
  procedures.validate(order);
  std::vector<std::string> lines;
  for (const Finding& finding : findings.all()) lines.push_back(lineOf(finding, grid));
  return lines;
}

PostResult AssetCompany::post() {
  ImportRun order = run();
  return procedures.post(order);
}

PostResult AssetCompany::import(const std::vector<SheetRow>& sheet) {
  stage(sheet);
  for (const std::string& line : validate()) {
    if (line[0] != '~' && line[0] != '*') ADD_FAILURE() << line;
  }
  return post();
}

std::vector<std::string> AssetCompany::rows(const std::string& query) {
  std::vector<std::string> lines;
  const auto set = company.connection->open(query);
  const std::vector<FieldInfo> fields = set->fields();
  for (; !set->eof(); set->moveNext()) {
    std::string line;
    for (const FieldInfo& field : fields)
      line += (&field == &fields.front() ? "" : "|") + nullToText(set->get(field.name));
    lines.push_back(line);
  }
  return lines;
}

std::string AssetCompany::row(const std::string& query) {
  const auto lines = rows(query);
  return lines.empty() ? std::string() : lines.front();
}

}  // namespace orva
