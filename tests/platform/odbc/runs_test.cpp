#include <algorithm>
#include <filesystem>
#include <set>

#include "platform/embedded/embedded_adapter.h"
#include "platform/odbc/demo_company.h"
#include "platform/odbc/server_test.h"
#include "startup/schema/base_layout.h"

namespace orva {
namespace {

/// Imports into a company on a server that can be told to fail, and which counts.
class ServerRuns : public testing::Test {
 protected:
  DemoCompany demo{Where::kTestServer};
};

TEST_F(ServerRuns, EveryColumnHasTheTypeOfTheEngine) {
  EmbeddedAdapter engine(SqlDialect::kSqlServer, demo.home.folder().text());
  const auto direct = engine.connect(ConnectionClauses("Initial Catalog=DEMOORVA"), CursorLocation::kClient);
  const auto overWire = demo.home.connect("DEMOORVA");
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

TEST_F(ServerRuns, AFailureInTheMiddleCountsWhatWasPosted) {
  struct Case {
    int native;  ///< 0: the connection is dropped
    const char* text;
  };
  // A lost connection has the general number, which the asset import takes for an identifier
  // that is there already.
  const Case kCases[] = {{0, "Asset Id already present \nThe connection to the server was lost."},
                         {1205, "Another user was changing the same rows"},
                         {9002, "The database's log on the server is full."},
                         {2627, "Asset Id already present \n"}};
  int posted = 0;
  for (const Case& c : kCases) {
    const std::string path = demo.workbook(goodSheet(4));
    if (c.native == 0) {
      demo.home.plan().dropAt(3, "insert into [Asset]");
    } else {
      demo.home.plan().failAt(3, {c.native, "Violation"}, "insert into [Asset]");
    }
    const Ran ran = demo.onServer(importing(path));
    posted += 2;
    EXPECT_EQ(ran.status, 2) << c.native;
    EXPECT_NE(ran.out.find("Rows posted : 2\n"), std::string::npos) << c.native << ran.out;
    EXPECT_NE(ran.err.find(c.text), std::string::npos) << c.native << ran.err;
    const auto connection = demo.home.connect("DEMOORVA");
    EXPECT_EQ(rowsOf(*connection, "select count(*) as n from Asset"), std::to_string(posted)) << c.native;
  }
  EXPECT_EQ(demo.onServer(importing(demo.workbook(goodSheet(4)))).status, 0) << "the next run works";
}

/// The statements of an import, from the first that begins so.
std::vector<std::string> statementsFrom(DemoCompany& demo, const std::vector<std::string>& command,
                                        const std::string& beginning) {
  demo.home.plan().forget();
  const Ran ran = demo.onServer(command);
  EXPECT_EQ(ran.status, 0) << ran.err;
  const std::vector<std::string> all = demo.home.plan().statements();
  const auto begins = [&](const std::string& statement) { return statement.starts_with(beginning); };
  return {std::ranges::find_if(all, begins), all.end()};
}

TEST_F(ServerRuns, ValidationAsksTheSameQuestionOnceAndForEachNumberAnew) {
  constexpr int kRows = 50;
  const auto statements = statementsFrom(demo, importing(demo.workbook(goodSheet(kRows)), {"--validate-only"}),
                                         "Select * from accyear where accopdt");
  std::multiset<std::string> asked;
  int numbers = 0;
  for (const std::string& statement : statements) {
    if (statement.starts_with("Select top 1 assetid from asset")) {
      ++numbers;
    } else {
      asked.insert(statement);
      EXPECT_EQ(asked.count(statement), 1U) << statement;
    }
  }
  EXPECT_EQ(numbers, kRows);
  EXPECT_GT(asked.size(), 10U);
}

TEST_F(ServerRuns, PostingAsksLittleAndNothingTwiceForOneRow) {
  constexpr int kRows = 50;
  /// Three levels of the category, the numbering, the highest number, five masters, the record.
  constexpr int kMostOfOneRow = 11;
  const auto statements = statementsFrom(demo, importing(demo.workbook(goodSheet(kRows))), "insert into [Asset]");
  const auto isInsert = [](const std::string& statement) { return statement.starts_with("insert into [Asset]"); };
  EXPECT_EQ(std::ranges::count_if(statements, isInsert), kRows);
  std::set<std::string> ofRow;
  int rows = 0;
  for (const std::string& statement : statements) {
    if (isInsert(statement)) {
      EXPECT_LE(ofRow.size(), kMostOfOneRow);
      ofRow.clear();
      ++rows;
    }
    if (rows < kRows) {
      EXPECT_TRUE(ofRow.insert(statement).second) << statement << " twice";
    }
  }
  EXPECT_LT(statements.size(), kRows * (kMostOfOneRow + 3U)) << "with the lives that are filled in at the end";
}

TEST_F(ServerRuns, WhatIsNotThereIsNamed) {
  const Ran missing = demo.onServer({"sql", "--company", "NONE", "select 1 as n"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_NE(missing.err.find("NONEORVA"), std::string::npos) << missing.err;
  demo.home.plan().dropAt(1, "alter table Location add LocCode");
  const Ran lost = demo.onServer({"sql", "--company", "DEMO", "select 1 as n"});
  EXPECT_EQ(lost.status, 2) << "a connection that is lost during the upgrade opens no company";
  EXPECT_NE(lost.err.find("The connection to the server was lost"), std::string::npos) << lost.err;
  EXPECT_EQ(demo.onServer({"sql", "--company", "DEMO", "select 1 as n"}).out, "n\n1\n");
}

TEST_F(ServerRuns, ThePasswordIsNowhereButInItsFile) {
  const std::string& password = demo.home.context().password;
  for (const auto& entry : std::filesystem::directory_iterator(demo.folder().path())) {
    EXPECT_EQ(demo.folder().read(entry.path().filename().string()).find(password), std::string::npos) << entry;
  }
  const Ran wrong =
      demo.onServer({"server-file", "--server", demo.home.context().server, "--authentication", "SQL", "--user", "sa"},
                    "wrong one\r\n");
  EXPECT_EQ(wrong.status, 0);
  for (const char* command : {"companies", "sql"}) {
    std::vector<std::string> arguments{command};
    if (arguments[0] == "sql") arguments.insert(arguments.end(), {"--company", "DEMO", "select 1 as n"});
    const Ran ran = demo.onServer(arguments);
    EXPECT_EQ(ran.status, 2) << command;
    EXPECT_NE(ran.err.find("Login failed"), std::string::npos) << ran.err;
    EXPECT_EQ((ran.out + ran.err).find("wrong one"), std::string::npos) << ran.err;
  }
}

}  // namespace
}  // namespace orva
