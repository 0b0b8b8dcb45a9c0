#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "platform/embedded/company_file.h"

namespace orva::test {
namespace {

namespace fs = std::filesystem;

std::unique_ptr<Connection> connectTo(const std::string& source, const std::string& password = "Tbnq") {
  EmbeddedAdapter adapter(SqlDialect::kAccess);
  return adapter.connect(ConnectionClauses("Data Source=" + source + ";Jet OLEDB:Database Password=" + password),
                         CursorLocation::kClient);
}

std::string textOfFailure(const std::string& source) {
  try {
    connectTo(source);
    return "none";
  } catch (const ProviderError& error) {
    return numberText(error.number()) + " " + error.description();
  }
}

void writeFile(const fs::path& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

class Files : public testing::TestWithParam<Engine> {
 protected:
  CompanyFile company{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(InBothFiles, Files, testing::ValuesIn(kAccessEngines), kEngineName);

TEST_P(Files, OnlyTheRightPasswordOpens) {
  for (const char* wrong : {"", "tbnq", "Tbnqq", "x"}) {
    EXPECT_EQ(failureOf([&] { company.connect(wrong); }), "80040E4D") << wrong;
  }
  EXPECT_EQ(failureOf([&] { company.connect("Tbnq"); }), "none");
  std::ifstream file(company.file(), std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), {});
  EXPECT_EQ(bytes.find("Tbnq"), std::string::npos);
}

TEST_P(Files, ForeignFilesAreRefused) {
  company.close();
  const fs::path folder = company.folder();
  const std::string missing = (folder / "missing.mdb").string();
  EXPECT_EQ(textOfFailure(missing), "80004005 Could not find file '" + missing + "'.");
  std::ifstream whole(company.file(), std::ios::binary);
  const std::string good((std::istreambuf_iterator<char>(whole)), {});
  const std::pair<const char*, std::string> kFiles[] = {
      {"empty.mdb", ""},
      {"text.mdb", "This is no database, but it is longer than a header."},
      {"cut.mdb", good.substr(0, 700)},
      {"noise.mdb", "SQLite format 3" + std::string(5000, '\x7F')},
  };
  for (const auto& [name, bytes] : kFiles) {
    writeFile(folder / name, bytes);
    const std::string text = textOfFailure((folder / name).string());
    EXPECT_EQ(text.substr(0, 8), "80004005") << name;
    EXPECT_NE(text.find(name), std::string::npos) << text;
  }
  // A database of some other program.
  sqlite3* other = nullptr;
  const std::string foreign = (folder / "foreign.mdb").string();
  ASSERT_EQ(sqlite3_open(foreign.c_str(), &other), SQLITE_OK);
  sqlite3_exec(other, "create table t(a)", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_EQ(textOfFailure(foreign), "80004005 The file '" + foreign + "' is not a company database.");
  EXPECT_EQ(textOfFailure(folder.string()).substr(0, 8), "80004005");
}

TEST_P(Files, ADamagedFileIsAnErrorAndNoMore) {
  company.run("create table Asset (Assetid text(30), Cost currency, primary key (assetid))");
  for (int i = 0; i < 500; ++i) {
    company->execute("insert into asset values ('" + std::to_string(i) + "', " + std::to_string(i) + ")");
  }
  company.close();
  const auto size = fs::file_size(company.file());
  for (std::uintmax_t at = 100; at < size; at += 997) {
    fs::copy_file(company.file(), company.folder() / "bad.mdb", fs::copy_options::overwrite_existing);
    {
      std::fstream bad(company.folder() / "bad.mdb", std::ios::binary | std::ios::in | std::ios::out);
      bad.seekp(static_cast<std::streamoff>(at));
      bad << std::string(300, '\xA5');
    }
    try {
      auto connection = connectTo((company.folder() / "bad.mdb").string());
      rowsOf(*connection->open("select * from asset order by assetid"));
      connection->execute("update asset set cost = cost + 1");
    } catch (const ProviderError& error) {
      EXPECT_FALSE(error.description().empty());
    }
  }
}

TEST_P(Files, PathsAreFoundAsTheScreensWriteThem) {
  std::string path = company.file().string();
  for (char& c : path) c = c == '/' ? '\\' : c;
  path.replace(path.find("demoOrva"), 8, "DEMOorva");
  EXPECT_EQ(failureOf([&] { connectTo(path); }), "none");
  EmbeddedAdapter adapter(SqlDialect::kAccess);
  EXPECT_EQ(failureOf([&] { adapter.create(ConnectionClauses("Data Source=" + path)); }), "80004005");
}

/// A closed company is one file, and a copy of it is a company.
TEST_P(Files, ACopyOfAClosedFileIsSound) {
  company.run(
      "create table Dept (Deptcode text(10), DeptName text(30)); insert into Dept values ('1', 'Stores');"
      "select * from dept where deptname = 'x'");
  const auto companions = company.adapter().companionFiles(company.file().string());
  company.close();
  EXPECT_EQ(std::distance(fs::directory_iterator(company.folder()), {}), 1);
  for (const std::string& companion : companions) EXPECT_FALSE(fs::exists(companion));
  const fs::path copy = company.folder() / "newOrva.mdb";
  fs::copy_file(company.file(), copy);
  auto connection = connectTo(copy.string());
  connection->execute("insert into Dept values ('2', 'Works')");
  EXPECT_EQ(rowsOf(*connection->open("select deptname from Dept order by deptname desc")), "Works/Stores");
}

/// Whatever was finished when the program died is there.
TEST_P(Files, FinishedRowsSurviveTheEndOfTheProgram) {
  company.run("create table Asset (Assetid text(30), Cost currency, primary key (assetid))");
  company.close();
  int pipes[2];
  ASSERT_EQ(pipe(pipes), 0);
  const pid_t child = fork();
  if (child == 0) {
    auto connection = connectTo(company.file().string());
    auto rows = connection->open("select * from Asset", CursorKind::kKeyset, LockKind::kPessimistic);
    for (int i = 0;; ++i) {
      rows->addNew();
      rows->set("assetid", std::to_string(i));
      rows->update();
      connection->execute("update asset set cost = 1 where assetid = '" + std::to_string(i) + "'");
      if (write(pipes[1], &i, sizeof i) != sizeof i) _exit(1);
    }
  }
  int last = -1;
  for (int value = 0; last < 300 && read(pipes[0], &value, sizeof value) == sizeof value;) last = value;
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  close(pipes[1]);
  for (int value = 0; read(pipes[0], &value, sizeof value) == sizeof value;) last = value;
  close(pipes[0]);
  company.reopen();
  const std::string expected = std::to_string(last + 1);
  EXPECT_EQ(company.rows("select count(*) from asset where val(assetid) <= " + std::to_string(last) + " and cost = 1"),
            expected);
}

TEST(SqliteFiles, ALockedFileIsReportedAsSuch) {
  CompanyFile company(kSqliteFile);
  company.run("create table Dept (Deptcode text(10))");
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(company.file().string().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  try {
    company->execute("insert into Dept values ('1')");
    ADD_FAILURE() << "The insert went through.";
  } catch (const ProviderError& error) {
    EXPECT_EQ(error.number(), provider_number::kUnspecified);
    EXPECT_EQ(error.description(), "The database is locked by another program.");
  }
  EXPECT_EQ(company.rows("select count(*) from Dept"), "0");
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_EQ(company.outcome("insert into Dept values ('1')"), "1 rows");
}

/// Two programs that post into one company wait for each other, also while one of them reads.
TEST(SqliteFiles, AShortLockIsWaitedOut) {
  CompanyFile company(kSqliteFile);
  company.run("create table Dept (Deptcode text(10))");
  ASSERT_EQ(company.rows("select * from dept"), "");
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(company.file().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "begin immediate", nullptr, nullptr, nullptr), SQLITE_OK);
  std::thread release([other] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    sqlite3_close(other);
  });
  EXPECT_EQ(company.outcome("insert into dept values ('1')"), "1 rows");
  release.join();
}

/// Another program, for this one's own connections share the file.
TEST(AccessFiles, AFileOfAnotherProgramIsReportedAsSuch) {
  CompanyFile company;
  company.run("create table Dept (Deptcode text(10)); insert into Dept values ('1')");
  const pid_t child = fork();
  if (child == 0) {
    // What the parent has open is locked for this program too.
    const int lock = ::open((company.folder() / "demoOrva.ldb").c_str(), O_RDWR);
    _exit(lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK ? 0 : 1);
  }
  int status = 1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  company.close();
  const int lock = ::open((company.folder() / "demoOrva.ldb").c_str(), O_RDWR | O_CREAT, 0600);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  EXPECT_EQ(textOfFailure(company.file().string()), "80004005 The database " + company.file().string() +
                                                        " is in use by another program. Close it there and try again.");
  ::close(lock);
  company.reopen();
  EXPECT_EQ(company.rows("select count(*) from Dept"), "1");
}

}  // namespace
}  // namespace orva::test
