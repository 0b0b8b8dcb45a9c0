#include "startup/orva_ini.h"

#include "fakes/fake_files.h"

namespace orva {
namespace {

constexpr const char* kPath = "C:\\P\\Orva.ini";

TEST(Scrambling, ReadsBackwardsThirtyLower) {
  EXPECT_EQ(unscramble("\x62\x6B\x54"), "\x36\x4D\x44");
  EXPECT_EQ(unscramble(""), "");
}

TEST(Scrambling, EveryByteComesBack) {
  std::string all;
  for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
  EXPECT_EQ(unscramble(scramble(all)), all);
  EXPECT_EQ(scramble(unscramble(all)), all);
}

struct IniCase {
  const char* name;
  std::vector<std::string> lines;
  OrvaIni expected;
};

TEST(OrvaIniFile, TellsFolderOrServer) {
  const std::vector<std::string> server = {scramble("SERVER=S,1433"), scramble("AUTH=winnt"), scramble("USER=sa"),
                                           scramble("PWD=p=q;\xE9")};
  const IniCase cases[] = {
      {"one line", {"C:\\Data"}, {.dataFolder = "C:\\Data"}},
      {"one line that describes a server", {server[0]}, {.dataFolder = server[0]}},
      {"several plain lines", {"C:\\Data", "more", "SERVER=x"}, {.dataFolder = "C:\\Data"}},
      {"plain SERVER= is not scrambled", {"SERVER=x", "y"}, {.dataFolder = "SERVER=x"}},
      {"folder as stored", {" D:\\A b \\"}, {.dataFolder = " D:\\A b \\"}},
      {"byte order mark",
       {"\xEF\xBB\xBF"
        "C:\\Data"},
       {.dataFolder = "C:\\Data"}},
      {"Windows letters",
       {"C:\\Donn\xE9"
        "es\x92"},
       {.dataFolder = "C:\\Données’"}},
      {"UTF-8 letters", {"C:\\Données"}, {.dataFolder = "C:\\Données"}},
      {"server", server, {true, "", "S,1433", "winnt", "sa", "p=q;é"}},
      {"server, lines missing", {server[0], server[1]}, {true, "", "S,1433", "winnt", "", ""}},
      {"server, written anew as UTF-8",
       {server[0], scramble("A=SQL"), "\xE2\x80\xA2\xC5\xBD\x7F\xE2\x80\x98[pcqs",
        "\xE2\x80\x99\xC2\x8D\xC2\x8D\xC2\x90[bun"},
       {true, "", "S,1433", "SQL", "sapw", "root"}},
      {"server, its codes written as UTF-8",
       {server[0], scramble("A=SQL"), "\xC2\x95\xC2\x8E\x7F\xC2\x91[pcqs"},
       {true, "", "S,1433", "SQL", "sapw", ""}},
      {"value without a name", {server[0], scramble("WINNT")}, {true, "", "S,1433", "WINNT", "", ""}},
  };
  for (const IniCase& test : cases) {
    SCOPED_TRACE(test.name);
    FakeFiles files;
    files.put(kPath, test.lines);
    const OrvaIni ini = readOrvaIni(files, kPath);
    EXPECT_EQ(ini.isSqlServer, test.expected.isSqlServer);
    EXPECT_EQ(ini.dataFolder, test.expected.dataFolder);
    EXPECT_EQ(ini.server, test.expected.server);
    EXPECT_EQ(ini.authenticationKind, test.expected.authenticationKind);
    EXPECT_EQ(ini.userId, test.expected.userId);
    EXPECT_EQ(ini.password, test.expected.password);
  }
}

TEST(OrvaIniFile, AFileThatSaysNothingIsNamed) {
  FakeFiles files;
  const auto failure = [&] {
    try {
      readOrvaIni(files, kPath);
    } catch (const FileError& error) {
      return std::string(error.what());
    }
    return std::string("nothing thrown");
  };
  const std::string utf16("\xFF\xFE/\0t\0", 6);
  const std::vector<std::vector<std::string>> cases = {
      {}, {""}, {" \t"}, {utf16}, {"C:\\Data\x01"}, {"C:\\Data\rC:\\More"}, {std::string(5000, 'x')}};
  for (const std::vector<std::string>& lines : cases) {
    files.put(kPath, lines);
    EXPECT_NE(failure().find(kPath), std::string::npos) << failure().substr(0, 200);
    EXPECT_LT(failure().size(), 200U) << "the rubbish itself is not shown";
  }
  files.put(kPath, {"C:\\Data"});
  files.lock(kPath);
  EXPECT_NE(failure().find(kPath), std::string::npos);
}

TEST(ProviderClause, IsTheFirstLine) {
  FakeFiles files;
  files.put(kPath, {"Provider=X;", "other"});
  EXPECT_EQ(readProviderClause(files, kPath), "Provider=X;");
  files.put(kPath);
  EXPECT_EQ(readProviderClause(files, kPath), "");
}

}  // namespace
}  // namespace orva
