#include <random>

#include "platform/odbc/server_test.h"
#include "platform/values/text.h"

namespace orva {
namespace {

class ServerAnswers : public testing::Test {
 protected:
  void SetUp() override {
    home.makeCatalog("ANSWORVA");
    connection = home.connect("ANSWORVA");
    other = home.connect("ANSWORVA");
    for (const char* table : {"Vendor", "Dept"}) {
      connection->execute("create table " + std::string(table) +
                          " (Code nvarchar(10) not null primary key, Name nvarchar(50), Rate money)");
    }
  }
  void TearDown() override {
    connection.reset();
    other.reset();
  }
  int pick(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)); }
  /// One of several changes of one of the tables.
  void change(Connection& by, const std::string& table) {
    const std::string code = std::to_string(pick(6));
    switch (pick(3)) {
      case 0: {
        const auto rows = by.open("select * from " + table, CursorKind::kKeyset, LockKind::kPessimistic);
        rows->filter("Code='" + code + "'");
        if (rows->eof()) {
          rows->addNew();
          rows->set("Code", code);
        }
        rows->set("Name", "name " + std::to_string(pick(3)));
        rows->update();
        return;
      }
      case 1:
        by.execute("delete from " + table + " where Code='" + code + "'");
        return;
      default:
        by.execute("update " + table + " set Rate=" + std::to_string(pick(4)) + " where Code<>'" + code + "'");
    }
  }
  std::string query(const std::string& table) {
    switch (pick(4)) {
      case 0:
        return "select * from " + table + " where Code='" + std::to_string(pick(6)) + "'";
      case 1:
        return "Select Name from " + table + " where Upper(Name)='NAME " + std::to_string(pick(3)) + "' order by Code";
      case 2:
        return "select v.Code, d.Name from Vendor v, Dept d where v.Code=d.Code order by v.Code";
      default:
        return "select max(Rate) as m, count(*) as n from " + table;
    }
  }
  /// Whether the last question went to the server.
  bool wasAsked() { return !home.plan().statements().empty(); }

  ServerHome home{Where::kTestServer};
  std::unique_ptr<Connection> connection;
  std::unique_ptr<Connection> other;

 private:
  std::mt19937 random_{20250611};
};

TEST_F(ServerAnswers, AreThoseOfTheServerWhileTheConnectionItselfChangesTheTables) {
  int served = 0;
  for (int scope = 0; scope < 60; ++scope) {
    const LookupScope lookups(*connection);
    for (int step = 0; step < 25; ++step) {
      const std::string table = pick(2) == 0 ? "Vendor" : "Dept";
      if (pick(8) == 0) change(*connection, table);
      const std::string question = query(table);
      home.plan().forget();
      const std::string answer = rowsOf(*connection, question);
      served += wasAsked() ? 0 : 1;
      ASSERT_EQ(answer, rowsOf(*other, question)) << question << " in scope " << scope << " step " << step;
    }
    // What others do is seen at the latest when the next scope begins.
    change(*other, pick(2) == 0 ? "Vendor" : "Dept");
  }
  EXPECT_GT(served, 100);
}

TEST_F(ServerAnswers, NumbersGivenByOthersAreSeenAtOnce) {
  const LookupScope lookups(*connection);
  for (int number = 1; number <= 20; ++number) {
    // The next code of a master, by turns from both connections.
    Connection& user = number % 2 == 0 ? *other : *connection;
    const auto codes = user.open("select * from Dept where isnumeric(Code)=1 order by convert(integer,Code) desc",
                                 CursorKind::kFirstRow);
    const auto highest = codes->eof() ? 0 : codes->get("Code").toInteger().value_or(0);
    ASSERT_EQ(highest, number - 1);
    user.execute("insert into Dept (Code) values ('" + std::to_string(number) + "')");
  }
}

TEST_F(ServerAnswers, WithoutAScopeEveryQuestionIsAsked) {
  const std::string question = "select * from Dept where Code='1'";
  for (int time = 0; time < 2; ++time) {
    home.plan().forget();
    rowsOf(*connection, question);
    EXPECT_TRUE(wasAsked());
  }
  {
    const LookupScope lookups(*connection);
    rowsOf(*connection, question);
    const LookupScope inner(*connection);
    home.plan().forget();
    rowsOf(*connection, question);
    EXPECT_FALSE(wasAsked());
  }
  rowsOf(*connection, question);
  EXPECT_TRUE(wasAsked());
}

}  // namespace
}  // namespace orva
