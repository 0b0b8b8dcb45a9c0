#include "startup/company_listing.h"

#include <algorithm>

#include "fakes/fake_services.h"
#include "fakes/scripted_database.h"
#include "startup/contexts.h"

namespace orva {
namespace {

TEST(CompanyNames, OfFiles) {
  const std::pair<const char*, bool> cases[] = {
      {"ABCOrva.mdb", true},  {"abcorva.MDB", true},   {"AB COrva.mdb", false}, {"ORVAABC.mdb", false},
      {"Orva.mdb", false},    {"ABCOrva.ldb", false},  {"ABCOrva", false},      {"ABCOrva.mdb.part", false},
      {"OrvaOrva.mdb", true}, {"ABC.Orva.mdb", true},  {"Orva .mdb", false},    {"ÄÖOrva.mdb", true},
      {"ABCOrv.mdb", false},  {"ABCOrva.mdbx", false},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(isCompanyFile(name), expected) << name;
  EXPECT_EQ(companyCodeOf("abcorva"), "abc");
  EXPECT_EQ(companyCodeOf("ÄÖOrva"), "ÄÖ");
}

TEST(CompanyNames, ServerDataFolder) {
  EXPECT_EQ(serverDataFolder("S", "D:\\Data\\Orva.mdf"), "\\\\S\\D\\Data\\");
  EXPECT_EQ(serverDataFolder("S", "\\\\N\\x:y\\Orva.mdf"), "\\\\S\\\\\\N\\xy\\");
  EXPECT_EQ(serverDataFolder("S", "Orva.mdf"), "\\\\S\\");
}

class Listing : public ::testing::Test {
 protected:
  Listing() {
    all.databases.add("SQLOLEDB.1", database);
    all.databases.add("Microsoft.Jet.OLEDB.4.0", database);
  }

  /// Codes found, then the failure if there was one.
  std::vector<std::string> list() {
    std::vector<std::string> found;
    try {
      listCompanies(context, all.services, [&](const std::string& code) { found.push_back(code); });
    } catch (const std::exception& error) {
      found.push_back(error.what());
    }
    return found;
  }

  FakeServices all;
  std::shared_ptr<ScriptedDatabase> database = std::make_shared<ScriptedDatabase>();
  CompanyContext context;
};

TEST_F(Listing, OfAServer) {
  context = serverContext("WINNT");
  database->answer("master", "Select * from sysdatabases",
                   {{"name", "filename"},
                    {{"master", "C:\\m.mdf"},
                     {"XYOrva", "C:\\x.mdf"},
                     {"orva", "D:\\Data\\Orva.mdf"},
                     {"Other", Value()},
                     {"A BORVA", "C:\\a.mdf"},
                     {"zzORVA", "C:\\z.mdf"},
                     {"brokenORVA", "C:\\b.mdf"},
                     {"lateORVA", "C:\\l.mdf"}}});
  for (const char* catalog : {"XYOrva", "zzORVA", "lateORVA"}) {
    database->answer(catalog, "Select * from Company", {{"coname"}, {}});
  }
  const std::vector<std::string> found = list();
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0], "XY");
  EXPECT_EQ(found[1], "zz");
  EXPECT_NE(found[2].find("brokenORVA"), std::string::npos) << found[2];
  EXPECT_EQ(context.dataFolder, "\\\\S\\D\\Data\\");
  EXPECT_EQ(database->connections[0].get("Initial Catalog"), "master");
}

TEST_F(Listing, OfAFolder) {
  context.dataFolder = "C:\\D";
  for (const char* name : {"bOrva.mdb", "Orva.mdb", "notes.txt", "AORVA.MDB"}) {
    all.files.put(joinPath("C:\\D", name));
  }
  database->answer("", "Select * from Company", {{"coname"}, {}});
  std::vector<std::string> found = list();
  std::ranges::sort(found);
  EXPECT_EQ(found, (std::vector<std::string>{"A", "b"}));
  EXPECT_EQ(all.eventLoop.yields, 4);
  EXPECT_EQ(database->connections.size(), 2U);
  EXPECT_EQ(database->connections[0].get("Jet OLEDB:Database Password"), "Tbnq");
}

}  // namespace
}  // namespace orva
