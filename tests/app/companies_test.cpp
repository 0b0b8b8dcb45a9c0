#include "app/batch_test.h"
#include "startup/orva_ini.h"

namespace orva {
namespace {

TEST(Setup, MakesWhatIsAbsentAndKeepsTheRest) {
  const TemporaryFolder parent;
  const std::string folder = parent.file("ORVA");
  EXPECT_EQ(runCommand(folder, {"setup"}).status, 0);
  EXPECT_EQ(parent.read("ORVA/Orva.ini"), folder + "\r\n");
  EXPECT_EQ(runCommand(folder, {"companies"}).out, "");
  EXPECT_EQ(runCommand(folder, {"new", "ABC"}).status, 0);

  parent.write("ORVA/Orva.ini", folder + "\r\nsecond line\r\n");
  const Ran again = runCommand(folder, {"setup"});
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.out, "") << "nothing was written";
  EXPECT_EQ(parent.read("ORVA/Orva.ini"), folder + "\r\nsecond line\r\n");
  EXPECT_EQ(runCommand(folder, {"companies"}).out, "ABC\n");
}

TEST(Setup, AFolderThatCannotBeMadeIsToldByName) {
  const TemporaryFolder parent;
  const std::string inside = parent.write("file", "x") + "/ORVA";
  const Ran ran = runCommand(inside, {"setup"});
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.err.find(inside), std::string::npos) << ran.err;
}

TEST(Setup, ATemplateThatCannotBeUsedIsNamed) {
  const TemporaryFolder folder;
  EXPECT_EQ(runCommand(folder.text(), {"setup"}).status, 0);
  for (const char* template_ : {"", "no database"}) {
    folder.write("Orva.mdb", template_);
    const Ran ran = runCommand(folder.text(), {"new", "ABC"});
    EXPECT_EQ(ran.status, 2);
    EXPECT_NE(ran.err.find("copied from " + folder.text() + "\\Orva.MDB"), std::string::npos) << ran.err;
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "ABCOrva.MDB"));
  }
  std::filesystem::remove(folder.path() / "Orva.mdb");
  EXPECT_NE(runCommand(folder.text(), {"new", "ABC"}).err.find("there is no file"), std::string::npos);
}

using Companies = BatchTest;

TEST_F(Companies, DamagedConfigurationIsToldAndNothingIsMade) {
  struct Case {
    const char* ini;
    const char* text;
  };
  const std::string password = "s3cret";
  const std::string server = scramble("SERVER=S1") + "\r\n" + scramble("AUTH=SQL") + "\r\n" + scramble("UID=sa") +
                             "\r\n" + scramble("PWD=" + password) + "\r\n";
  const Case kCases[] = {
      {"", "Orva.ini is empty"},
      {"\x01\x02\r\n", "Orva.ini names no folder"},
      {"/no/such/folder\r\n", "/no/such/folder"},
      {server.c_str(), "[ORVA]"},
  };
  for (const Case& c : kCases) {
    folder.write("Orva.ini", c.ini);
    for (const auto& command : {std::vector<std::string>{"companies"}, {"sql", "--company", "DEMO", "select 1"}}) {
      const Ran ran = run(command);
      EXPECT_EQ(ran.status, 2) << c.text;
      EXPECT_NE(ran.err.find(c.text), std::string::npos) << ran.err;
      EXPECT_EQ((ran.out + ran.err).find(password), std::string::npos);
    }
  }
  folder.write("Orva.ini", "\n");
  EXPECT_EQ(run({"new", "ABC"}).status, 2);
  std::filesystem::remove(folder.path() / "Orva.ini");
  EXPECT_EQ(run({"new", "ABC"}).status, 2);
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "ABCOrva.MDB"));
}

}  // namespace
}  // namespace orva
