#include "support.h"

namespace orva::access {
namespace {

TEST(RealFiles, PassTheStructureCheck) {
  for (const FixtureFile& file : fixtureFiles()) {
    const auto database = AccessDatabase::open(fixture(file.name), {.password = file.password, .forWriting = false});
    EXPECT_EQ(seriousFaults(*database), "") << file.name;
  }
}

struct ExpectedRow {
  const char* file;
  const char* table;
  std::size_t row;
  const char* text;
};

TEST(RealFiles, RowsReadAsOtherProgramsShowThem) {
  const ExpectedRow kRows[] = {
      {"testV2000.mdb", "Table1", 0, "abcdefg|hijklmnop|2|222|333333333|444.555|27293.000000|3.5|True"},
      {"db-enc.mdb", "Table1", 1, "2|world|42"},
      {"delColTestV2000.mdb", "table1", 1, "3|5|bar|bar2"},
      {"indexTestV2003.mdb", "MSysRelationships", 0, "1|4096|0|otherfk1|Table1|id|Table2|Table2Table1"},
      {"testIndexPropertiesV2000.mdb", "TableIgnoreNulls1", 1, "row1|"},
  };
  for (const ExpectedRow& expected : kRows) {
    const auto database = AccessDatabase::open(fixture(expected.file), {.forWriting = false});
    const auto rows = rowsOf(database->table(expected.table));
    ASSERT_GT(rows.size(), expected.row) << expected.file;
    EXPECT_EQ(rows[expected.row], expected.text) << expected.file;
  }
}

}  // namespace
}  // namespace orva::access
