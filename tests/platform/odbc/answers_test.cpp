#include <random>

#include "platform/odbc/answers.h"
#include "platform/odbc/server_test.h"
#include "platform/values/text.h"

namespace orva {
namespace {

/// Look-ups over the wire, answered from memory where they may be, against the same look-ups
/// asked of the server each time, while the connection itself changes the tables.
TEST(Answers, AreNeverOlderThanAChangeOfTheirOwnConnection) {
  ServerHome home(Where::kTestServer);
  home.makeCatalog("ANSWORVA");
  const auto connection = home.connect("ANSWORVA");
  const auto fresh = home.connect("ANSWORVA");
  for (const char* table : {"Vendor", "Dept"}) {
    connection->execute("create table " + std::string(table) +
                        " (Code nvarchar(10) not null primary key, Name nvarchar(50), Rate money)");
  }
  std::mt19937 random(20250611);
  const auto pick = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
  int served = 0;
  for (int step = 0; step < 1500; ++step) {
    const std::string table = pick(2) == 0 ? "Vendor" : "Dept";
    const std::string code = std::to_string(pick(6));
    const auto rows = connection->open("select * from " + table, CursorKind::kKeyset, LockKind::kPessimistic);
    switch (pick(14)) {
      case 0:
        rows->filter("Code='" + code + "'");
        if (rows->eof()) {
          rows->addNew();
          rows->set("Code", code);
        }
        rows->set("Name", "name " + std::to_string(pick(3)));
        rows->update();
        break;
      case 1:
        connection->execute("delete from " + table + " where Code='" + code + "'");
        break;
      case 2:
        connection->execute("update " + table + " set Rate=" + std::to_string(pick(4)) + " where Code<>'" + code + "'");
        break;
      default:
        break;
    }
    const std::string kQueries[] = {
        "select * from " + table + " where Code='" + code + "'",
        "Select Name from " + table + " where Upper(Name)='NAME " + std::to_string(pick(3)) + "' order by Code",
        "select v.Code, d.Name from Vendor v, Dept d where v.Code=d.Code order by v.Code",
        "select max(Rate) as m, count(*) as n from " + table,
    };
    const std::string& query = kQueries[pick(4)];
    home.plan().forget();
    const std::string answered = rowsOf(*connection, query);
    served += home.plan().statements().empty() ? 1 : 0;
    ASSERT_EQ(answered, rowsOf(*fresh, query + " ")) << query << " at step " << step;
    // The other connection never serves an answer again.
    fresh->execute("delete from Vendor where Code='none'");
    fresh->execute("delete from Dept where Code='none'");
  }
  EXPECT_GT(served, 200);
}

TEST(Answers, ServeForAMomentOnly) {
  odbc::Answers answers;
  answers.remember("q", {"SELECT", "T"}, {});
  answers.remember("g", {"SELECT", "GETDATE"}, {});
  answers.remember("unreadable", {}, {});
  EXPECT_NE(answers.find("q"), nullptr);
  EXPECT_EQ(answers.find("g"), nullptr);
  EXPECT_EQ(answers.find("unreadable"), nullptr);
  answers.changed({"U"});
  EXPECT_NE(answers.find("q"), nullptr);
  answers.changed({"T"});
  EXPECT_EQ(answers.find("q"), nullptr);
  answers.remember("q", {"SELECT", "T"}, {});
  EXPECT_NE(answers.find("q"), nullptr) << "asked after the change";
  std::this_thread::sleep_for(odbc::Answers::kMostAge + std::chrono::milliseconds(20));
  EXPECT_EQ(answers.find("q"), nullptr);
}

}  // namespace
}  // namespace orva
