#include "startup/schema/template_database.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <sstream>

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/temporary_folder.h"
#include "platform/embedded/embedded_adapter.h"
#include "platform/local/local_files.h"
#include "platform/values/text.h"
#include "startup/company_context.h"
#include "startup/opening.h"
#include "startup/schema/base_layout.h"
#include "startup/schema/old_company.h"
#include "startup/schema/upgrade.h"
#include "startup/scrEntry.h"
#include "startup/setup.h"

namespace orva {
namespace {

/// Tables of the two layout fixtures.
std::set<std::string> allTables() {
  std::set<std::string> tables;
  for (const char* name : {"company_layout.txt", "importer_columns.txt"}) {
    std::ifstream file(std::string(ORVA_FIXTURES) + "/schema/" + name);
    for (std::string line; std::getline(file, line);) {
      const std::size_t colon = line.find(": ");
      if (!line.starts_with("#") && colon != std::string::npos) tables.insert(line.substr(0, colon));
    }
  }
  return tables;
}

/// Columns, types and rows of every table.
std::string contentOf(Connection& connection) {
  std::string content;
  for (const std::string& table : allTables()) {
    content += table + ":";
    for (const FieldInfo& field : connection.open("select * from " + table)->fields()) {
      content +=
          field.name + "=" + std::to_string(static_cast<int>(field.type)) + "/" + std::to_string(field.size) + ",";
    }
    content += rowsOf(connection, "select * from " + table) + "\n";
  }
  return content;
}

std::string contentOfFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A program folder on the disk with the real engine behind the Access provider.
class ProgramFolder : public ::testing::Test {
 protected:
  ProgramFolder() { fakes.databases.add(kAccessProvider, adapter); }

  std::string text() const { return folder.text(); }
  std::vector<std::string> filesLeft() const {
    std::vector<std::string> names = files.list(text());
    std::ranges::sort(names);
    return names;
  }
  std::unique_ptr<Connection> connect(const std::string& name) {
    return fakes.databases.connect(accessConnectionString(folder.file(name)));
  }

  TemporaryFolder folder;
  LocalFiles files;
  FakeServices fakes;
  Services services{fakes.databases, fakes.workbooks, files, fakes.dialogs, fakes.shell, fakes.eventLoop};
  std::shared_ptr<FaultyAdapter> adapter =
      std::make_shared<FaultyAdapter>(std::make_shared<EmbeddedAdapter>(SqlDialect::kAccess));
};

TEST_F(ProgramFolder, TemplateHasEveryColumnOfTheImporter) {
  createTemplate(fakes.databases, folder.file("T.mdb"));
  const auto connection = connect("T.mdb");
  std::ifstream file(std::string(ORVA_FIXTURES) + "/schema/importer_columns.txt");
  int tables = 0;
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(": ");
    if (line.starts_with("#") || colon == std::string::npos) continue;
    ++tables;
    std::set<std::string> columns;
    for (const FieldInfo& field : connection->open("select * from " + line.substr(0, colon))->fields()) {
      columns.insert(toUpper(field.name));
    }
    std::istringstream names(line.substr(colon + 2));
    for (std::string name; std::getline(names, name, ',');) {
      EXPECT_TRUE(columns.contains(toUpper(trim(name)))) << line.substr(0, colon) << "." << name;
    }
  }
  EXPECT_EQ(tables, 22);
  EXPECT_EQ(rowsOf(*connection,
                   "select autoassetid, regioncode, digits, centre, users, validation, farate1, asperrbi, "
                   "depcalperiod from parameter"),
            "True||4|False|False|False|False|False|D");
  EXPECT_EQ(rowsOf(*connection, "select * from company"), "");
}

TEST_F(ProgramFolder, UpgradingAgainChangesNothing) {
  createTemplate(fakes.databases, folder.file("T.mdb"));
  const auto connection = connect("T.mdb");
  for (const char* sql :
       {"insert into users (usedby, username) values ('0001','Ravi')",
        "insert into fadefinition (defcode, description, facode, wdv, wopercent) values ('B','Building','F0',1,95)",
        "insert into classification (defcode, classcode, facode1) values ('B','B-01','F1')",
        "insert into asset (assetid, defcode, classcode, usedby, mainlocation) values ('A1','B','B-01','0001','M ')",
        "insert into fadep (assetid) values ('A1')", "insert into fadep1 (assetid) values ('A1')"}) {
    connection->execute(sql);
  }
  runUpgrade(*connection, SchemaDialect::kAccess);
  const std::string once = contentOf(*connection);
  EXPECT_NE(once.find("Ravi"), std::string::npos);
  runUpgrade(*connection, SchemaDialect::kAccess);
  EXPECT_EQ(contentOf(*connection), once);
}

TEST_F(ProgramFolder, SetUpWritesOnlyWhatIsAbsent) {
  files.writeLines(joinPath(text(), "Orva.ini"), {"elsewhere"});
  EXPECT_EQ(setUpProgramFolder(text(), services), (std::vector<std::string>{"SqlProviderConnection.ini", "Orva.mdb"}));
  EXPECT_EQ(files.readLines(joinPath(text(), "Orva.ini")), std::vector<std::string>{"elsewhere"});
  EXPECT_EQ(filesLeft(), (std::vector<std::string>{"Orva.ini", "Orva.mdb", "SqlProviderConnection.ini"}));
  files.remove(joinPath(text(), "orva.INI"), false);
  EXPECT_EQ(setUpProgramFolder(text(), services), std::vector<std::string>{"Orva.ini"});
  EXPECT_EQ(files.readLines(joinPath(text(), "Orva.ini")), std::vector<std::string>{text()});
}

TEST_F(ProgramFolder, HalfATemplateNeverStays) {
  for (const int nth : {1, 30, 300}) {
    adapter->plan().failAt(DatabaseCall::kExecute, nth, provider_number::kDataOverflow, "Disk full.");
    EXPECT_THROW(setUpProgramFolder(text(), services), ProviderError);
    EXPECT_EQ(filesLeft(), (std::vector<std::string>{"Orva.ini", "SqlProviderConnection.ini"}));
  }
  folder.write("Orva.mdb.part", "left by a run that was cut off");
  setUpProgramFolder(text(), services);
  EXPECT_EQ(filesLeft(), (std::vector<std::string>{"Orva.ini", "Orva.mdb", "SqlProviderConnection.ini"}));
}

TEST_F(ProgramFolder, NewCompanyCanBeOpenedAtOnceAndDeleted) {
  setUpProgramFolder(text(), services);
  folder.write("NEWOrva.MDB-wal", "journal of an earlier company of this name");
  CompanyContext context;
  context.programFolder = text();
  int shown = 0;
  scrEntry screen(services, context, {[&] { ++shown; }, {}, {}});
  screen.Load();
  EXPECT_EQ(screen.lstCompanies.count(), 0);
  screen.cmdNew_Click();
  screen.cmbCocode.setText("NEW");
  screen.cmdNew_Click();
  screen.cmdOpen_Click();
  EXPECT_EQ(fakes.dialogs.texts(), std::vector<std::string>{"Company created Successfully"});
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(context.companyCode, "NEW");
  EXPECT_EQ(rowsOf(*context.connection, "select cocd from company"), "NEW");
  screen.cmdDelete_Click();
  EXPECT_EQ(screen.lstCompanies.count(), 0);
  EXPECT_EQ(filesLeft(), (std::vector<std::string>{"Orva.ini", "Orva.mdb", "SqlProviderConnection.ini"}));
}

TEST_F(ProgramFolder, FilesThatAreNoCompanyAreNamed) {
  const std::string bad = folder.file("BADOrva.mdb");
  const auto writers = std::vector<std::pair<const char*, std::function<void()>>>{
      {"text", [&] { folder.write("BADOrva.mdb", "this is no database at all"); }},
      {"empty", [&] { folder.write("BADOrva.mdb", ""); }},
      {"other password",
       [&] { fakes.databases.create(replaceAll(accessConnectionString(bad), kDatabasePassword, "else")); }},
      {"no tables", [&] { fakes.databases.create(accessConnectionString(bad)); }},
      {"no company",
       [&] {
         createTemplate(fakes.databases, bad);
         connect("BADOrva.mdb")->execute("drop table Company");
       }},
      {"absent", [] {}}};
  for (const auto& [name, write] : writers) {
    SCOPED_TRACE(name);
    files.remove(bad, true);
    write();
    const std::string before = contentOfFile(bad);
    CompanyContext context;
    context.dataFolder = text();
    fakes.dialogs.messages.clear();
    EXPECT_EQ(openCompany(context, services, "BAD"), OpenResult::kFailed);
    context.connection.reset();
    EXPECT_EQ(contentOfFile(bad), before) << "nothing changed";
    ASSERT_EQ(fakes.dialogs.messages.size(), 1U);
    EXPECT_NE(fakes.dialogs.lastText().find("BADOrva.mdb"), std::string::npos) << fakes.dialogs.lastText();
    EXPECT_EQ(fakes.dialogs.lastText().find("Tbnq"), std::string::npos);
  }
}

/// Otherwise every statement of the upgrade would wait for the other program.
TEST_F(ProgramFolder, ACompanyThatIsLockedIsToldAtOnce) {
  createTemplate(fakes.databases, folder.file("LOCKOrva.mdb"));
  const int other = ::open(folder.file("LOCKOrva.ldb").c_str(), O_RDWR | O_CREAT, 0600);
  ASSERT_EQ(::flock(other, LOCK_EX), 0);
  CompanyContext context;
  context.dataFolder = text();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(openCompany(context, services, "LOCK"), OpenResult::kFailed);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  ::close(other);
  ASSERT_EQ(fakes.dialogs.texts().size(), 1U);
  EXPECT_EQ(fakes.dialogs.lastText(), "The database " + folder.file("LOCKOrva.mdb") +
                                          " is in use by another program. Close it there and try again.");
}

}  // namespace
}  // namespace orva
