#include "platform/access/other_programs.h"

#include "app/batch_test.h"

namespace orva {
namespace {

using access::AccessDatabase;

/// What an import leaves behind must be a genuine Access file for everybody.
class OtherPrograms : public BatchTest {
 protected:
  void SetUp() override {
    const Ran ran = import(std::string(ORVA_DEMO) + "/acquired-assets.xls");
    ASSERT_EQ(ran.status, 0) << ran.err;
    const std::string statements =
        "update Asset set Remarks = '' where PhyID like 'P%';"
        "update Asset set Cost = Cost + 0.0001, WarrantyEndDt = #12/31/2029# where Qty = 1;"
        "delete from Shift";
    EXPECT_EQ(run({"sql", "--company", "DEMO"}, statements).status, 0);
    database = AccessDatabase::open(file, {.forWriting = false, .asksPassword = false});
  }

  const std::string file = folder.file("DEMOOrva.MDB");
  std::unique_ptr<AccessDatabase> database;
};

TEST_F(OtherPrograms, ReadAnImportedCompanyValueByValue) {
  SKIP_WITHOUT_TOOLS();
  EXPECT_EQ(access::sortedLines(access::output("mdb-tables -1 '" + file + "'")).size(), database->tableNames().size());
  for (const std::string& name : database->tableNames()) {
    EXPECT_EQ(access::difference(access::exportOf(file, name), access::exportedTable(database->table(name))), "")
        << name;
  }
}

TEST_F(OtherPrograms, AnotherReaderReadsAnImportedCompany) {
  SKIP_WITHOUT_READER();
  EXPECT_EQ(access::differenceToReader(file, *database), "");
}

}  // namespace
}  // namespace orva
