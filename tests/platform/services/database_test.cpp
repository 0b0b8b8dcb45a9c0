#include "platform/database.h"

#include <gtest/gtest.h>

#include "fakes/faulty_adapter.h"
#include "fakes/scripted_database.h"

namespace orva {
namespace {

TEST(ConnectionClauses, ReadsTheStringsOfThisProgramAndOddOnes) {
  struct Case {
    const char* text;
    const char* name;
    const char* value;
  };
  const Case kCases[] = {
      {"Provider=P;Data Source= C:\\A B\\ABCOrva.mdb ;Persist Security Info=False;", "data source",
       "C:\\A B\\ABCOrva.mdb"},
      {"Provider=P;Jet OLEDB:Database Password=Tbnq;", "Jet OLEDB:Database Password", "Tbnq"},
      {"Data Source='C:\\a;b.xls';Mode=Share Exclusive;Extended Properties='Excel 8.0;HDR=No'", "Extended Properties",
       "Excel 8.0;HDR=No"},
      {"Integrated Security = SSPI;Initial Catalog=master", "Integrated Security", "SSPI"},
      {"Password=a=b;User ID=x", "password", "a=b"},
      {"Password=;User ID=x", "user id", "x"},
      {"A='unclosed", "A", "unclosed"},
      {"nonsense", "nonsense", ""},
      {";;=;", "x", ""},
  };
  for (const Case& c : kCases) EXPECT_EQ(ConnectionClauses(c.text).get(c.name), c.value) << c.text;
  EXPECT_FALSE(ConnectionClauses("A=1").find("B").has_value());
}

TEST(DatabaseRegistry, AnUnknownProviderIsAnErrorOfItsOwn) {
  DatabaseRegistry registry;
  const auto server = std::make_shared<ScriptedDatabase>();
  server->addCatalog("master");
  registry.add("SQLOLEDB.1", server);
  EXPECT_NE(registry.connect("provider=sqloledb.1;Initial Catalog=master"), nullptr);
  try {
    registry.connect("Provider=Other;");
    FAIL() << "no such provider";
  } catch (const ProviderError& error) {
    EXPECT_EQ(error.number(), provider_number::kUnspecified);
    EXPECT_NE(error.description().find("Other"), std::string::npos);
  }
}

TEST(FaultyAdapter, FailsOnPlanAndReachesTheDatabaseOtherwise) {
  auto server = std::make_shared<ScriptedDatabase>();
  const auto table = server->answer("ABCORVA", "select * from Asset", {.columns = {"Assetid"}, .rows = {}});
  FaultyAdapter adapter(server);
  const ConnectionClauses clauses("Initial Catalog=ABCORVA");
  const auto connection = adapter.connect(clauses, CursorLocation::kClient);
  adapter.plan().failAt(DatabaseCall::kStore, 2, provider_number::kIntegrity);
  const auto records = connection->open("select * from Asset");
  for (int row = 0; row < 3; ++row) {
    records->addNew();
    records->set("assetid", row);
    if (row == 1) {
      EXPECT_THROW(records->update(), ProviderError);
      records->cancel();
    } else {
      records->update();
    }
  }
  EXPECT_EQ(table->rows, (std::vector<std::vector<Value>>{{0}, {2}}));

  adapter.plan().loseConnectionAt(2);
  EXPECT_EQ(connection->execute("first"), 0);
  EXPECT_THROW(connection->execute("second"), ProviderError);
  EXPECT_THROW(records->moveFirst(), ProviderError);
  EXPECT_NO_THROW(adapter.connect(clauses, CursorLocation::kClient)->execute("third"));
  EXPECT_EQ(server->statements().size(), 3U);
}

}  // namespace
}  // namespace orva
