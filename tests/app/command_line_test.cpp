#include "app/batch/batch.h"
#include "app/batch_test.h"

namespace orva {
namespace {

TEST(CommandLine, StartScreenOrCommand) {
  struct Case {
    std::vector<std::string> arguments;
    bool isStartScreen;
    const char* folder;
    const char* commandLine;
  };
  const Case kCases[] = {
      {{}, true, "/opt/orva", ""},
      {{"/FABC"}, true, "/opt/orva", "/FABC"},
      {{"/f", "abcOrva"}, true, "/opt/orva", "/f abcOrva"},
      {{"--program-folder", "/data/x/", "/FABC"}, true, "/data/x", "/FABC"},
      {{"--program-folder=/data/x"}, true, "/data/x", ""},
      {{"--program-folder", "/data/x", "companies"}, false, "/data/x", ""},
      {{"--program-folder"}, false, "/opt/orva", ""},
      {{"companies"}, false, "/opt/orva", ""},
      {{"--help"}, false, "/opt/orva", ""},
  };
  for (const Case& c : kCases) {
    const StartRequest request = readStartRequest(c.arguments, "/opt/orva");
    EXPECT_EQ(request.isStartScreen, c.isStartScreen) << testing::PrintToString(c.arguments);
    EXPECT_EQ(request.programFolder, c.folder) << testing::PrintToString(c.arguments);
    EXPECT_EQ(request.commandLine, c.commandLine) << testing::PrintToString(c.arguments);
  }
}

TEST(CommandLine, WrongUseIsToldAndFails) {
  const TemporaryFolder folder;
  const std::vector<std::vector<std::string>> kWrong = {
      {"no-such-command"},
      {"new"},
      {"delete"},
      {"companies", "extra"},
      {"companies", "--program-folder"},
      {"companies", "--program-folder", ""},
      {"import", "--company", "ABC", "--kind", "acquired"},
      {"import", "--company", "ABC", "book.xls"},
      {"import", "--company", "ABC", "--kind", "acquired", "--no-such-option", "book.xls"},
      {"sql"},
      {""},
      {std::string(100'000, 'x')},
  };
  for (const auto& arguments : kWrong) {
    const Ran ran = runCommand(folder.text(), arguments);
    EXPECT_EQ(ran.status, 2) << testing::PrintToString(arguments).substr(0, 200);
    EXPECT_NE(ran.err, "");
    EXPECT_EQ(ran.out, "");
  }
  EXPECT_NE(runCommand(folder.text(), {"no-such-command"}).err.find("'no-such-command'"), std::string::npos);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(CommandLine, HelpAndVersionAreNoFailures) {
  for (const auto& arguments : {std::vector<std::string>{"--help"}, {"import", "--help"}, {"--version"}}) {
    const Ran ran = runCommand("/none", arguments);
    EXPECT_EQ(ran.status, 0);
    EXPECT_NE(ran.out, "");
    EXPECT_EQ(ran.err, "");
  }
}

TEST(CommandLine, TheProgramFolderMayStandBeforeOrAfterTheCommand) {
  const TemporaryFolder folder;
  EXPECT_EQ(runCommand("/none", {"setup", "--program-folder", folder.text()}).status, 0);
  EXPECT_EQ(runCommand("/none", {"--program-folder", folder.text(), "new", "ABC"}).status, 0);
  EXPECT_EQ(runCommand("/none", {"companies", "--program-folder=" + folder.text() + "/"}).out, "ABC\n");
}

}  // namespace
}  // namespace orva
