#include "app/batch_test.h"

#include "platform/embedded/embedded_adapter.h"
#include "startup/connection_strings.h"
#include "startup/schema/template_database.h"

namespace orva {
namespace {

namespace fs = std::filesystem;

/// The folder that every test starts from.
const TemporaryFolder& demoFolder() {
  static const TemporaryFolder kFolder;
  static const bool kMade = [] {
    for (const Ran& ran : {runCommand(kFolder.text(), {"setup"}), runCommand(kFolder.text(), {"new", "DEMO"}),
                           runCommand(kFolder.text(), {"sql", "--company", "DEMO"}, demoScript())}) {
      if (ran.status != 0) ADD_FAILURE() << ran.out << ran.err;
    }
    return true;
  }();
  static_cast<void>(kMade);
  return kFolder;
}

}  // namespace

BatchTest::BatchTest() {
  for (const fs::directory_entry& entry : fs::directory_iterator(demoFolder().path())) {
    if (entry.path().filename() != "Orva.ini") fs::copy(entry.path(), folder.path() / entry.path().filename());
  }
  folder.write("Orva.ini", folder.text() + "\r\n");
}

BatchTest::~BatchTest() {
  const std::string file = folder.file("DEMOOrva.MDB");
  if (!fs::exists(file) || folder.read("DEMOOrva.MDB").find("Standard Jet DB") != 4) return;
  const Ran ran = run({"check-file", file});
  EXPECT_EQ(ran.out, file + " is sound.\n");
}

void BatchTest::keepInSqlite() const {
  const std::string file = folder.file("DEMOOrva.MDB");
  fs::remove(file);
  DatabaseRegistry databases;
  databases.add(kAccessProvider,
                std::make_shared<EmbeddedAdapter>(SqlDialect::kAccess, std::string(), CompanyFileKind::kSqlite));
  createTemplate(databases, file);
  databases.connect(accessConnectionString(file))->execute("insert into Company (cocd) values ('DEMO')");
  EXPECT_EQ(run({"sql", "--company", "DEMO"}, demoScript()).status, 0);
}

Ran BatchTest::import(const std::string& workbook, std::vector<std::string> more) const {
  std::vector<std::string> arguments{"import", "--company", "DEMO", "--kind", "acquired"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  arguments.push_back(workbook);
  return run(arguments);
}

std::string BatchTest::query(const std::string& statement) const {
  const Ran ran = run({"sql", "--company", "DEMO", statement});
  return ran.status == 0 ? ran.out : ran.err;
}

std::string BatchTest::workbook(const std::string& name, const std::vector<std::vector<std::string>>& rows) const {
  writeWorkbook(folder.file(name), "Asset", rows);
  return folder.file(name);
}

}  // namespace orva
