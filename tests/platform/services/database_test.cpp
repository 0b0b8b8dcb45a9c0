#include "platform/database.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace orva
