#include "other_programs.h"

#include "platform/access/schema_change.h"
#include "support.h"

namespace orva::access {
namespace {

/// A file with every type of column, rows added, changed, moved and removed, and a changed layout.
/// Without gaps no long value is removed: mdb-reader takes the mark of a removed one for a length.
enum class Gaps { kYes, kNo };
std::unique_ptr<AccessDatabase> writeAllTypes(const std::string& path, Gaps gaps) {
  auto database = AccessDatabase::create(path);
  SchemaChange schema(*database);
  schema.createTable("All types", {{.name = "Id", .type = ColumnType::kLong, .isAutoNumber = true},
                                   {.name = "Yes", .type = ColumnType::kBoolean},
                                   {.name = "Small", .type = ColumnType::kByte},
                                   {.name = "Whole", .type = ColumnType::kInteger},
                                   {.name = "Money", .type = ColumnType::kCurrency},
                                   {.name = "Fraction", .type = ColumnType::kDouble},
                                   {.name = "Day", .type = ColumnType::kDate},
                                   {.name = "Name", .size = 100},
                                   {.name = "Long", .type = ColumnType::kMemo}});
  schema.createIndex("All types", {.name = "PrimaryKey", .columns = {{"Id"}}, .isPrimary = true});
  schema.createIndex("All types", {.name = "ByName", .columns = {{"Name", true}, {"Money"}}});
  Table& table = database->table("All types");
  const Currency kMoney[] = {Currency::fromUnits(123'400), Currency::fromUnits(-1), Currency::fromWhole(922'337'203),
                             Currency::fromUnits(-98'765'432'101)};
  const std::string kTexts[] = {"", "ab", "abc", "O'Neil & Söhne", "Жук", "=1+1"};
  for (int i = 0; i < 600; ++i) {
    const auto n = static_cast<std::size_t>(i);
    table.insert({Cell(), i % 3 == 0, std::int64_t{i % 256}, std::int64_t{i - 300}, kMoney[n % 4], i / 8.0 - 20,
                  i % 5 == 0 ? Cell() : Cell(DateTime{36'000.0 + i + (i % 24) / 24.0}),
                  i % 7 == 0 ? Cell() : Cell(kTexts[n % 6]),
                  i % 4 == 0 ? Cell() : Cell(std::string(n * 13, static_cast<char>('a' + i % 26)))});
  }
  std::vector<RowId> rows;
  for (RowScan scan = table.scan(); scan.next();) rows.push_back(scan.row());
  for (std::size_t i = 0; i < rows.size(); i += 3) {
    if (gaps == Gaps::kYes && i % 2 == 0) table.remove(rows[i]);
    if (gaps == Gaps::kYes && i % 2 == 1) table.update(rows[i], {{8, std::string(3000 + i, 'u')}});
    if (i % 2 == 1) table.update(rows[i], {{7, std::string(90, 'n')}});
  }
  schema.addColumn("All types", {.name = "Added", .type = ColumnType::kCurrency});
  schema.dropColumn("All types", "Small");
  table.insert(
      {Cell(), true, std::int64_t{1}, Currency::fromWhole(5), 1.5, Cell(), "last", Cell(), Currency::fromUnits(7)});
  database->commit();
  database->file().sweep();
  return database;
}

TEST(OtherPrograms, ReadWhatWeWriteValueByValue) {
  SKIP_WITHOUT_TOOLS();
  const TemporaryFolder folder;
  const std::string path = folder.file("new.mdb");
  const auto database = writeAllTypes(path, Gaps::kYes);
  Table& table = database->table("All types");
  EXPECT_EQ(allFaults(*database), "");
  EXPECT_EQ(output("mdb-tables -1 '" + path + "'"), "All types\n");
  const std::string definition = output("mdb-schema '" + path + "' access");
  for (const char* part : {"[All types]", "[Money]", "Currency", "[Name]\t\t\tText (100)"}) {
    EXPECT_NE(definition.find(part), std::string::npos) << part << " in " << definition;
  }
  EXPECT_EQ(difference(exportOf(path, "All types"), exportedTable(table)), "");
}

TEST(OtherPrograms, AnotherReaderReadsTheSame) {
  SKIP_WITHOUT_READER();
  const TemporaryFolder folder;
  const std::string path = folder.file("new.mdb");
  const auto database = writeAllTypes(path, Gaps::kNo);
  EXPECT_EQ(differenceToReader(path, *database), "");
}

/// The other way round: real files must give us the values that the tools print.
TEST(OtherPrograms, AgreeOnTheValuesOfRealFiles) {
  SKIP_WITHOUT_TOOLS();
  std::size_t tables = 0;
  for (const FixtureFile& file : fixtureFiles()) {
    const auto database = AccessDatabase::open(fixture(file.name), {.password = file.password, .forWriting = false});
    for (const std::string& name : database->tableNames()) {
      Table& table = database->table(name);
      const auto& columns = table.definition().columns;
      const bool comparable = std::all_of(columns.begin(), columns.end(), [](const Column& column) {
        return column.type != ColumnType::kOle && column.type != ColumnType::kGuid &&
               column.type != ColumnType::kDecimal;
      });
      if (!comparable) continue;
      EXPECT_EQ(difference(exportOf(fixture(file.name), name), exportedTable(table)), "") << file.name << " " << name;
      ++tables;
    }
  }
  EXPECT_GT(tables, 15u);
}

}  // namespace
}  // namespace orva::access
