#include <utility>

#include "platform/odbc/diagnostics.h"
#include "platform/odbc/odbc_adapter.h"
#include "platform/odbc/server_test.h"

namespace orva {
namespace {

constexpr std::int32_t number(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }

constexpr const char* kCatalog = "FAILORVA";

class ServerFailures : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    if (!home) return;
    home->makeCatalog(kCatalog);
    connection = home->connect(kCatalog);
  }
  void TearDown() override { connection.reset(); }

  std::unique_ptr<Connection> connection;
};

/// A server that can be told to fail.
class TestServerFailures : public ServerFailures {};

TEST_P(TestServerFailures, TheServersNumberDecides) {
  struct Case {
    int native;
    std::uint32_t number;
  };
  const Case kCases[] = {
      {102, 0x80040E14},  {156, 0x80040E14},  {170, 0x80040E14},  {208, 0x80040E37},  {207, 0x80040E14},
      {2714, 0x80040E14}, {2705, 0x80040E14}, {2627, 0x80004005}, {2601, 0x80004005}, {515, 0x80040E2F},
      {547, 0x80040E2F},  {8152, 0x80040E57}, {2628, 0x80040E57}, {8115, 0x80040E57}, {245, 0x80040E07},
      {241, 0x80040E07},  {242, 0x80040E07},  {3701, 0x80040E37}, {229, 0x80040E09},  {18456, 0x80040E4D},
      {4060, 0x80004005}, {911, 0x80004005},  {1205, 0x80040E14}, {9002, 0x80040E14}, {50000, 0x80040E14},
  };
  connection->execute("create table T (id int not null primary key, name nvarchar(10))");
  const auto rows = connection->open("select * from T", CursorKind::kKeyset, LockKind::kPessimistic);
  int id = 0;
  for (const Case& c : kCases) {
    const std::string text = "Text " + std::to_string(c.native) + " with [brackets].";
    const auto expectFailure = [&](const ProviderError& error, const char* call) {
      EXPECT_EQ(error.number(), number(c.number)) << c.native << " " << call;
      EXPECT_TRUE(error.description().ends_with(text)) << error.description();
    };
    home->plan().failAt(1, {c.native, text});
    expectFailure(failureOf([&] { connection->execute("delete from T where name='x'"); }), "execute");
    home->plan().failAt(1, {c.native, text});
    expectFailure(failureOf([&] { connection->open("select id from T where id=-" + std::to_string(++id)); }), "open");
    rows->addNew();
    rows->set("id", ++id);
    home->plan().failAt(1, {c.native, text});
    expectFailure(failureOf([&] { rows->update(); }), "update");
    EXPECT_NO_THROW(rows->update()) << "the pending record stays";
    EXPECT_NO_THROW(connection->execute("delete from T where name='x'")) << "the connection works on";
  }
}

TEST_P(TestServerFailures, DeadlockAndFullLogSayWhatHappened) {
  const std::pair<int, const char*> kCases[] = {
      {1205, "Another user was changing the same rows"}, {9002, "log on the server is full"}, {1105, "no room left"}};
  for (const auto& [native, text] : kCases) {
    home->plan().failAt(1, {native, "native"});
    const ProviderError error = failureOf([&] { connection->execute("delete from T"); });
    EXPECT_NE(error.description().find(text), std::string::npos) << error.description();
  }
}

TEST_P(TestServerFailures, AStatementThatTakesTooLongIsGivenUp) {
  CompanyContext context;
  home->fill(context);
  context.providerClause = "Provider=SQLOLEDB.1;General Timeout=1;";
  connection = home->databases().connect(serverConnectionString(context, kCatalog));
  home->plan().stallAt(1, "delete");
  const ProviderError error = failureOf([&] { connection->execute("delete from T"); });
  EXPECT_EQ(error.number(), number(0x80040E31)) << error.description();
  connection = home->connect(kCatalog);
  EXPECT_NO_THROW(connection->execute("create table T (id int)")) << "the server takes the next connection";
}

TEST_P(TestServerFailures, ALostConnectionFailsUntilTheNextOneIsOpened) {
  connection->execute("create table T (id int not null primary key, name nvarchar(10))");
  const auto rows = connection->open("select * from T", CursorKind::kKeyset, LockKind::kPessimistic);
  for (int id = 1; id <= 3; ++id) {
    rows->addNew();
    rows->set("id", id);
    rows->update();
  }
  home->plan().dropAt(2);
  connection->execute("delete from T where id=3");
  const auto expectLost = [](const ProviderError& error, std::int32_t expected = provider_number::kObjectClosed) {
    EXPECT_EQ(error.number(), expected);
    EXPECT_NE(error.description().find("connection to the server was lost"), std::string::npos) << error.description();
  };
  expectLost(failureOf([&] { connection->execute("delete from T where id=2"); }), provider_number::kUnspecified);
  expectLost(failureOf([&] { connection->execute("delete from T where id=2"); }));
  expectLost(failureOf([&] { connection->open("select * from T where id=7"); }));
  expectLost(failureOf([&] { rows->requery(); }));
  rows->addNew();
  rows->set("id", 9);
  expectLost(failureOf([&] { rows->update(); }));
  EXPECT_NO_THROW(rows->cancel());
  connection = home->connect(kCatalog);
  EXPECT_EQ(rowsOf(*connection, "select id from T"), "1/2");
}

TEST_P(TestServerFailures, AServerThatIsNotThere) {
  CompanyContext context;
  {
    const tds::Server gone(home->folder().text(), "sa", "secret");
    context.server = "127.0.0.1," + std::to_string(gone.port());
  }
  const auto connect = [&](const std::string& clause) {
    context.providerClause = "Provider=SQLOLEDB.1;" + clause;
    return failureOf([&] { home->databases().connect(serverConnectionString(context, "master")); });
  };
  EXPECT_EQ(connect("").number(), provider_number::kUnspecified);
  const tds::Server silent(home->folder().text(), "sa", "secret", tds::Server::Manner::kSilent);
  const std::string server = std::exchange(context.server, "127.0.0.1," + std::to_string(silent.port()));
  EXPECT_NE(connect("Connect Timeout=1;").number(), 0) << "a server that takes the call and says nothing";
  context.server = server;
  const ProviderError noDriver = connect("Driver=/nowhere/driver.so;");
  EXPECT_EQ(noDriver.number(), provider_number::kUnspecified);
  EXPECT_NE(noDriver.description().find("/nowhere/driver.so"), std::string::npos) << noDriver.description();
  EXPECT_EQ(connect("Driver=No such driver;").number(), provider_number::kUnspecified);
}

TEST_P(ServerFailures, LoginAndCatalog) {
  const ProviderError login = failureOf([&] { home->connect(kCatalog, "not the secret"); });
  EXPECT_EQ(login.number(), provider_number::kLoginFailed) << login.description();
  EXPECT_EQ(login.description().find("not the secret"), std::string::npos);
  EXPECT_EQ(failureOf([&] { home->connect("NOSUCHORVA"); }).number(), provider_number::kUnspecified);
  EXPECT_THROW(OdbcAdapter().create(ConnectionClauses("Initial Catalog=NEWORVA")), ProviderError);
}

TEST_P(ServerFailures, StatementsThatTheServerRefuses) {
  connection->execute("create table T (id int not null primary key, name nvarchar(3), cost money, d smalldatetime)");
  connection->execute("insert into T (id, name) values (1, 'a')");
  struct Case {
    const char* sql;
    std::uint32_t number;
  };
  const Case kCases[] = {
      {"select from where", 0x80040E14},
      {"select * from Missing", 0x80040E37},
      {"select colour from T", 0x80040E14},
      {"create table T (id int)", 0x80040E14},
      {"insert into T (id) values (1)", 0x80004005},
      {"insert into T (name) values ('b')", 0x80040E2F},
      {"insert into T (id, name) values (2, 'abcd')", 0x80040E57},
      {"insert into T (id, name) values (3, 'abcd\xE0\xA4\xB9')", 0x80040E57},
      {"drop table Missing", 0x80040E37},
      {"alter table T add name nvarchar(3)", 0x80040E14},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(failureOf([&] { connection->execute(c.sql); }).number(), number(c.number)) << c.sql;
  }
  EXPECT_EQ(rowsOf(*connection, "select id, name from T"), "1|a");
}

TEST(Diagnostics, StatesDecideWhereTheNumberSaysNothing) {
  using odbc::DiagnosticRecord;
  struct Case {
    std::vector<DiagnosticRecord> records;
    std::uint32_t number;
    const char* text;
  };
  const Case kCases[] = {
      {{{"23000", 1, "[FreeTDS][SQL Server]x"}}, 0x80040E2F, "x"},
      {{{"22001", 0, "x"}}, 0x80040E57, "x"},
      {{{"42S02", 0, "x"}}, 0x80040E37, "x"},
      {{{"08003", 0, "x"}}, 0x80004005, "x"},
      {{{"08S01", 20009, "x"}, {"08001", 0, "y"}}, 0x80004005, "x"},
      {{{"28000", 0, "x"}}, 0x80040E4D, "x"},
      {{{"28000", 18456, "x"}, {"08001", 0, "y"}}, 0x80040E4D, "x"},
      {{{"42000", 4060, "x"}, {"42000", 18456, "y"}}, 0x80004005, "x"},
      {{{"HYT00", 0, "x"}}, 0x80040E31, "x"},
      {{{"01000", 0, "x"}}, 0x80004005, "x"},
      {{{"01000", 3621, "y"}, {"HY000", 7, "x"}}, 0x80040E14, "x"},
      {{{"HY019", 8115, "x"}, {"01000", 3621, "y"}}, 0x80040E57, "x"},
      {{{"42000", 999, "x"}}, 0x80040E14, "x"},
      {{}, 0x80004005, "The database driver failed without a reason."},
  };
  for (const Case& c : kCases) {
    const ProviderError error = odbc::providerError(c.records);
    const std::string state = c.records.empty() ? "none" : c.records[0].state;
    EXPECT_EQ(error.number(), number(c.number)) << state;
    EXPECT_EQ(error.description(), c.text) << state;
  }
}

INSTANTIATE_TEST_SUITE_P(Places, ServerFailures, testing::Values(Where::kTestServer, Where::kRealServer), whereName);
INSTANTIATE_TEST_SUITE_P(Places, TestServerFailures, testing::Values(Where::kTestServer), whereName);

}  // namespace
}  // namespace orva
