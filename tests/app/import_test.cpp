#include <sqlite3.h>

#include "app/batch_test.h"

namespace orva {
namespace {

using Import = BatchTest;

TEST_F(Import, ACompanyThatKeepsOtherAmountsIsAnError) {
  // The file does what a damaged one might: it keeps a rupee less than it is given.
  keepInSqlite();
  const std::string file = folder.file("DEMOOrva.MDB");
  ASSERT_TRUE(std::filesystem::exists(file));
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database,
                         "create trigger thief after insert on Asset begin update Asset set Cost = Cost - 10000 where "
                         "PhyID = 'P2' and rowid = new.rowid; end",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(database);
  const Ran ran = import(workbook("assets.xls", {assetHeadings(), goodAsset("P1"), goodAsset("P2")}));
  EXPECT_EQ(ran.status, 2);
  EXPECT_NE(ran.out.find("Rows posted : 2\n"), std::string::npos) << ran.out;
  EXPECT_NE(ran.out.find("Control totals of the company  : Rows 2, Cost 130000.00, "), std::string::npos) << ran.out;
  EXPECT_NE(ran.err.find("The control totals of the company differ from those of the workbook."), std::string::npos)
      << ran.err;
}

}  // namespace
}  // namespace orva
