#include "platform/local/local_files.h"
#include "platform/odbc/demo_company.h"
#include "platform/odbc/server_test.h"
#include "startup/orva_ini.h"

namespace orva {
namespace {

std::vector<std::string> serverFile(const std::string& server, const std::string& kind, const std::string& user) {
  std::vector<std::string> arguments{"server-file", "--server", server, "--authentication", kind};
  if (!user.empty()) arguments.insert(arguments.end(), {"--user", user});
  return arguments;
}

struct Case {
  const char* server;
  const char* kind;
  const char* user;
  const char* input;
  /// Of the password that is read back; null: refused.
  const char* password;
};

TEST(ServerFile, IsReadBackAsItWasToldOrRefused) {
  const Case kCases[] = {
      {"db1,1433", "SQL", "orva", "secret\n", "secret"},
      {"tcp:db1\\X", "sql", "orva", "secret", "secret"},
      {"db1", "SQL", "orva", "p}w&d{ '=x\r\n", "p}w&d{ '=x"},
      {"db1", "SQL", "orva", "\n", ""},
      {"db1", "SQL", "\xC3\xA9tage", "\xE2\x82\xAC 5\n", "\xE2\x82\xAC 5"},
      {"db1", "SQL", "\xE0\xA4\xB9", "\xC3\x83\xC2\xA9\n", "\xC3\x83\xC2\xA9"},
      {"db1", "WINNT", "", "not read\n", ""},
      {"db1", "winnt", "", "", ""},
      {"db1", "WINNT", "orva", "", nullptr},
      {"db1", "SQL", "", "secret\n", nullptr},
      {" ", "SQL", "orva", "secret\n", nullptr},
      {"db1", "SQL", "orva", "a;Data Source=evil\n", nullptr},
      {"db1;Encrypt=no", "SQL", "orva", "secret\n", nullptr},
      {"db1", "SQL", "orva", "\"quoted\"\n", nullptr},
      {"db1", "SQL", "orva", "blank \n", nullptr},
      {"db1", "SQL", "orva", "\xC3\xAC\n", "\xC3\xAC"},
      {"db1", "SQL", "orva", "\xE2\x82\xAC\xC3\xAC\n", nullptr},
  };
  for (const Case& c : kCases) {
    const TemporaryFolder folder;
    const Ran ran = runCommand(folder.text(), serverFile(c.server, c.kind, c.user), c.input);
    EXPECT_EQ(ran.status, c.password ? 0 : 2) << c.input << ran.err;
    if (!c.password) {
      EXPECT_TRUE(std::filesystem::is_empty(folder.path())) << c.input;
      continue;
    }
    const OrvaIni read = readOrvaIni(LocalFiles(), folder.file("Orva.ini"));
    EXPECT_TRUE(read.isSqlServer);
    EXPECT_EQ(read.server, c.server);
    EXPECT_EQ(read.authenticationKind, c.kind);
    EXPECT_EQ(read.userId, c.user);
    EXPECT_EQ(read.password, c.password);
    if (!read.password.empty()) {
      EXPECT_EQ((ran.out + ran.err + folder.read("Orva.ini")).find(read.password), std::string::npos);
    }
  }
}

TEST(ServerFile, KeepsTheFileOfAnAccessInstallation) {
  const TemporaryFolder folder;
  folder.write("Orva.ini", "D:\\Data\r\n");
  for (const char* server : {"db1", "db2"}) {
    ASSERT_EQ(runCommand(folder.text(), serverFile(server, "WINNT", "")).status, 0);
    EXPECT_EQ(folder.read("Orva.ini.access"), "D:\\Data\r\n");
    EXPECT_EQ(readOrvaIni(LocalFiles(), folder.file("Orva.ini")).server, server);
  }
}

}  // namespace
}  // namespace orva
