#include <algorithm>
#include <map>
#include <set>
#include <type_traits>

#include "fakes/fake_services.h"
#include "platform/embedded/embedded_adapter.h"
#include "platform/odbc/demo_company.h"
#include "platform/odbc/odbc_adapter.h"
#include "platform/odbc/server_test.h"
#include "platform/values/text.h"
#include "startup/company_listing.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/upgrade.h"

namespace orva {
namespace {

class ServerCompany : public testing::TestWithParam<Where> {
 protected:
  void SetUp() override {
    if (!ServerHome::isThere(GetParam())) GTEST_SKIP() << "ORVA_TEST_SQLSERVER names no server";
    demo = std::make_unique<DemoCompany>(GetParam());
  }
  /// The query's rows on the server, after a look whether Access has the same.
  std::string sameRows(const std::string& query) const {
    const Ran server = demo->onServer({"sql", "--company", "DEMO", query});
    const Ran access = demo->onAccess({"sql", "--company", "DEMO", query});
    EXPECT_EQ(server.out, access.out) << query << server.err << access.err;
    return server.out;
  }
  void expectSameRun(const std::vector<std::string>& arguments) const {
    const Ran server = demo->onServer(arguments);
    const Ran access = demo->onAccess(arguments);
    EXPECT_EQ(server.status, access.status) << server.err << access.err;
    EXPECT_EQ(server.out, access.out) << server.err;
  }
  void expectSameBooks() const {
    for (const char* query :
         {kAssets, "select Vendorcode, VendorName from Vendor order by Vendorcode",
          "select Deptcode, DeptName from Dept order by Deptcode", "select usedby, Username from Users order by usedby",
          "select recordid, MainLocation, SubLocation, PhysicalLocation from Location order by recordid",
          "select DefCode, ClassCode, ClassDesc from Classification order by ClassCode"}) {
      sameRows(query);
    }
  }

  static constexpr const char* kAssets =
      "select Assetid, PhyID, [Desc], Cost, Qty, UseDate, Docdt, DefCode, ClassCode, SubClasscode, Vendorcode, "
      "DeptCode, UsedBY, LocationId, LeaseDate, FAAge, AcquiredAs, BackDated, Remarks from Asset order by Assetid";
  std::unique_ptr<DemoCompany> demo;
};

/// Tests that need a server which can be told to fail, or which counts.
class TestServerCompany : public ServerCompany {};

std::vector<std::vector<std::string>> goodSheet(int count) {
  std::vector<std::vector<std::string>> rows{assetHeadings()};
  for (int i = 1; i <= count; ++i) rows.push_back(goodAsset("P" + std::to_string(i)));
  return rows;
}

std::vector<std::string> importing(const std::string& workbook, std::vector<std::string> more = {}) {
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

TEST_P(ServerCompany, IsListedFromTheCatalogs) {
  const Ran ran = demo->onServer({"companies"});
  EXPECT_EQ(ran.status, 0) << ran.err;
  const auto lines = "\n" + ran.out;
  EXPECT_NE(lines.find("\nDEMO\n"), std::string::npos) << ran.out;
  FakeServices fakes;
  addServerProviders(fakes.databases);
  CompanyContext context;
  demo->home.fill(context);
  listCompanies(context, fakes.services, [](const std::string&) {});
  if (GetParam() == Where::kRealServer) return;
  EXPECT_EQ(context.dataFolder, "\\\\" + context.server + "\\D\\Data\\");
}

TEST_P(ServerCompany, ImportsLikeAnAccessCompany) {
  auto sheet = goodSheet(2);
  sheet.push_back(
      with(goodAsset("P3"), {{"VENDOR", "O'Neil & Sons"}, {"DEPT", "New \xC3\x89tage"}, {"USER", "P. d'Souza"}}));
  sheet.push_back(
      with(goodAsset("P4"), {{"VENDOR", "o'neil & sons"}, {"COST", "0.01"}, {"DESCRIPTION", std::string(3000, 'd')}}));
  sheet.push_back(
      with(goodAsset("P5"), {{"PHYLOC", "New [Bay] #1"}, {"USEDATE", "12/11/2025"}, {"VCHRDATE", "11/12/2025"}}));
  sheet.push_back(with(goodAsset("P6"), {{"CAT2", "Tablets"}, {"CAT3", "Rugged"}, {"QTY", "3"}}));
  const std::string path = demo->workbook(sheet);
  expectSameRun(importing(path, {"--validate-only"}));
  expectSameRun(importing(path));
  expectSameBooks();
  // Once more, with the numbers going on, and one bad row that keeps the others out.
  expectSameRun(importing(demo->workbook(goodSheet(3))));
  sheet.push_back(with(goodAsset("P7"), {{"COST", "-5"}, {"DEPT", "Nowhere"}}));
  expectSameRun(importing(demo->workbook(sheet)));
  expectSameBooks();
}

TEST_P(ServerCompany, ChangesAssetsLikeAnAccessCompany) {
  expectSameRun(importing(demo->workbook(goodSheet(3))));
  const std::string first = "MH\\CO\\PC\\LT0001";
  const std::string last = "MH\\CO\\PC\\LT0003";
  expectSameRun({"update-leod", "--company", "DEMO",
                 demo->workbook({{"Assetid", "LEOD"}, {first, "31/03/2030"}, {last, "30/06/2031"}})});
  expectSameRun({"update-leod", "--company", "DEMO", demo->workbook({{"Assetid", "LEOD"}, {"No such", "31/03/2030"}})});
  expectSameRun({"update-rate-method", "--company", "DEMO",
                 demo->workbook({{"Assetid", "OVERRIDERATE", "OVERRIDEMETHOD"}, {first, "12.5", "WDV"}})});
  auto headings = assetHeadings();
  headings.insert(headings.begin(), "ASSETID");
  auto changed = with(goodAsset("P9"), {{"DESCRIPTION", "Changed"}, {"VENDOR", "Another"}});
  changed.insert(changed.begin(), last);
  expectSameRun(importing(demo->workbook({headings, changed}), {"--mode", "modify-by-asset-id"}));
  expectSameBooks();
  sameRows("select Assetid, OverrideRate, OverrideMthd, FlgOverride from Asset order by Assetid");
}

/// Notes the statements that fail.
class Noting : public Connection {
 public:
  explicit Noting(Connection& inner) : inner_(inner) {}
  std::int64_t execute(std::string_view sql) override {
    return noting(sql, [&] { return inner_.execute(sql); });
  }
  std::unique_ptr<Recordset> open(std::string_view sql, CursorKind cursor, LockKind lock) override {
    return noting(sql, [&] { return inner_.open(sql, cursor, lock); });
  }
  std::vector<std::string> failed;

 private:
  template <typename Action>
  std::invoke_result_t<Action> noting(std::string_view sql, Action action) {
    try {
      return action();
    } catch (const ProviderError&) {
      failed.emplace_back(sql);
      throw;
    }
  }
  Connection& inner_;
};

TEST_P(ServerCompany, TheUpgradeIsRefusedOnlyWhatItKeepsOnPurpose) {
  /// Beginnings of the statements in the Access dialect, each followed by a variant for the
  /// server. Newer servers know "trim" and take some of them.
  const std::vector<std::string> kKept = {
      "update asset set usedby=null where trim(",
      "update shift set olduser=null where trim(",
      "update shift set newuser=null where trim(",
      "update split set user1=null where trim(",
      "select distinct usedby as username from asset where trim(",
      "select distinct newuser as username from shift where trim(",
      "select distinct olduser as username from shift where trim(",
      "select distinct user1 as username from split where trim(",
      "update asset,users set ",
      "update shift,users set shift.newuser",
      "update shift,users set shift.olduser",
      "update split,users set ",
      "update classification set facode=fadefinition.facode, facode1=",  // malformed on purpose
      "update location set mainlocation=trim(",
      "update Asset set mainlocation=trim(",
      "update Addition set mainlocation=trim(",
      "update shift set MainLocation=trim(",
      "update shift set oldMainLocation=trim(",
      "update addition set usedby=null where trim(",
      "select distinct usedby as username from addition where trim(",
      "update addition,users set ",
  };
  demo->home.makeCatalog("OLDORVA");
  const auto connection = demo->home.connect("OLDORVA");
  for (const std::string& statement : baseTableStatements()) connection->execute(serverDefinition(statement));
  Noting noting(*connection);
  runUpgrade(noting, SchemaDialect::kServer);
  std::set<std::string> met;
  for (const std::string& statement : noting.failed) {
    if (statement.find(" drop column ") != std::string::npos || statement.starts_with("drop table ")) continue;
    const auto kept = std::ranges::find_if(kKept, [&](const std::string& text) { return statement.starts_with(text); });
    if (kept == kKept.end()) {
      ADD_FAILURE() << statement;
    } else {
      met.insert(*kept);
    }
  }
  if (GetParam() == Where::kRealServer) return;
  EXPECT_EQ(met.size(), kKept.size());
}

TEST_P(TestServerCompany, EveryColumnHasTheTypeOfTheEngine) {
  EmbeddedAdapter engine(SqlDialect::kSqlServer, demo->home.folder().text());
  const auto direct = engine.connect(ConnectionClauses("Initial Catalog=DEMOORVA"), CursorLocation::kClient);
  const auto overWire = demo->home.connect("DEMOORVA");
  std::set<std::string> tables{"Addition", "Parameter", "UDValues", "Shift", "Split", "SplitOriginal"};
  for (const ColumnRow& row : baseColumns()) tables.insert(std::string(row.table));
  for (const std::string& table : tables) {
    const auto expected = direct->open("select * from " + table)->fields();
    const auto fields = overWire->open("select * from " + table)->fields();
    ASSERT_EQ(fields.size(), expected.size()) << table;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      EXPECT_EQ(fields[i].name, expected[i].name) << table;
      EXPECT_EQ(fields[i].type, expected[i].type) << table << "." << fields[i].name;
      EXPECT_EQ(fields[i].size, expected[i].size) << table << "." << fields[i].name;
    }
  }
}

TEST_P(TestServerCompany, AFailureInTheMiddleCountsWhatWasPosted) {
  struct Case {
    int native;  ///< 0: the connection is dropped
    const char* text;
  };
  // A lost connection has the general number, which the asset import takes for an identifier
  // that is there already.
  const Case kCases[] = {{0, "Asset Id already present"},
                         {1205, "Another user was changing the same rows"},
                         {9002, "The database's log on the server is full."},
                         {2627, "Violation"}};
  int posted = 0;
  for (const Case& c : kCases) {
    const std::string path = demo->workbook(goodSheet(4));
    if (c.native == 0) {
      demo->home.plan().dropAt(3, "insert into [Asset]");
    } else {
      demo->home.plan().failAt(3, {c.native, "Violation"}, "insert into [Asset]");
    }
    const Ran ran = demo->onServer(importing(path));
    posted += 2;
    EXPECT_EQ(ran.status, 2) << c.native;
    EXPECT_NE(ran.out.find("Rows posted : 2\n"), std::string::npos) << c.native << ran.out;
    EXPECT_NE(ran.err.find(c.text), std::string::npos) << c.native << ran.err;
    const auto connection = demo->home.connect("DEMOORVA");
    EXPECT_EQ(rowsOf(*connection, "select count(*) as n from Asset"), std::to_string(posted)) << c.native;
  }
  EXPECT_EQ(demo->onServer(importing(demo->workbook(goodSheet(4)))).status, 0) << "the next run works";
}

TEST_P(TestServerCompany, PostingAsksLittleAndNothingTwiceForOneRow) {
  constexpr int kRows = 200;
  const std::string path = demo->workbook(goodSheet(kRows));
  ASSERT_EQ(demo->onServer(importing(path, {"--validate-only"})).status, 0);
  demo->home.plan().forget();
  ASSERT_EQ(demo->onServer(importing(path)).status, 0);
  const std::vector<std::string> statements = demo->home.plan().statements();
  const auto isInsert = [](const std::string& statement) { return statement.starts_with("insert into [Asset]"); };
  const auto first = std::ranges::find_if(statements, isInsert);
  EXPECT_EQ(std::ranges::count_if(statements, isInsert), kRows);
  EXPECT_LT(statements.end() - first, 4 * kRows);
  std::set<std::string> ofRow;
  for (auto at = first; at != statements.end(); ++at) {
    if (isInsert(*at)) ofRow.clear();
    EXPECT_TRUE(ofRow.insert(*at).second) << *at << " twice";
  }
}

TEST_P(TestServerCompany, ThePasswordIsNowhereButInItsFile) {
  const std::string& password = demo->home.context().password;
  const std::string file = demo->programFile("Orva.ini");
  EXPECT_EQ(file.find(password), std::string::npos);
  const Ran wrong = demo->onServer(
      {"server-file", "--server", demo->home.context().server, "--authentication", "SQL", "--user", "sa"},
      "wrong one\r\n");
  EXPECT_EQ(wrong.status, 0);
  for (const char* command : {"companies", "sql"}) {
    std::vector<std::string> arguments{command};
    if (arguments[0] == "sql") arguments.insert(arguments.end(), {"--company", "DEMO", "select 1 as n"});
    const Ran ran = demo->onServer(arguments);
    EXPECT_EQ(ran.status, 2) << command;
    EXPECT_NE(ran.err.find("Login failed"), std::string::npos) << ran.err;
    EXPECT_EQ((ran.out + ran.err).find("wrong one"), std::string::npos) << ran.err;
  }
}

INSTANTIATE_TEST_SUITE_P(Places, ServerCompany, testing::Values(Where::kTestServer, Where::kRealServer), whereName);
INSTANTIATE_TEST_SUITE_P(Places, TestServerCompany, testing::Values(Where::kTestServer), whereName);

}  // namespace
}  // namespace orva
