#include "platform/access/schema_change.h"
#include "support.h"

namespace orva::access {
namespace {

class Schema : public ::testing::Test {
 protected:
  void SetUp() override {
    database_ = AccessDatabase::create("new.mdb", {.files = &files_});
    makeItems();
  }
  void makeItems() {
    schema().createTable("Items", {{.name = "Code", .size = 10},
                                   {.name = "Amount", .type = ColumnType::kLong},
                                   {.name = "Text", .type = ColumnType::kMemo}});
    for (int i = 0; i < 300; ++i) {
      items().insert({"C" + std::to_string(i), std::int64_t{i}, std::string(static_cast<std::size_t>(i) * 20, 'm')});
    }
    database_->commit();
  }
  void TearDown() override { EXPECT_EQ(allFaults(*database_), ""); }

  SchemaChange schema() { return SchemaChange(*database_); }
  Table& items() { return database_->table("Items"); }
  void reopen() {
    database_->commit();
    database_.reset();
    database_ = AccessDatabase::open("new.mdb", {.files = &files_});
  }

  FakeFileSystem files_;
  std::unique_ptr<AccessDatabase> database_;
};

TEST(NewDatabase, IsTheOneThatTheEngineMakes) {
  FakeFileSystem files;
  AccessDatabase::create("new.mdb", {.files = &files}).reset();
  const Bytes model = readFile(fixture("adox_jet4.mdb"));
  const Bytes& made = *files.files["new.mdb"];
  ASSERT_EQ(made.size(), model.size());
  // Pages 2 to 4 hold filler from the engine's memory, page 14 the time of making.
  for (const std::size_t page : {1u, 5u, 6u, 7u, 8u, 9u, 10u, 11u, 12u, 13u, 15u}) {
    EXPECT_TRUE(std::equal(made.begin() + static_cast<std::ptrdiff_t>(page * kPageSize),
                           made.begin() + static_cast<std::ptrdiff_t>((page + 1) * kPageSize),
                           model.begin() + static_cast<std::ptrdiff_t>(page * kPageSize)))
        << "page " << page;
  }
  EXPECT_TRUE(std::equal(made.begin(), made.begin() + header_at::kUserSlots, model.begin()));
}

TEST(NewDatabase, AsksForItsPassword) {
  FakeFileSystem files;
  AccessDatabase::create("new.mdb", {.password = "Secret word 20 chars", .files = &files}).reset();
  for (const char* wrong : {"", "secret word 20 chars", "Secret word 20 char"}) {
    try {
      AccessDatabase::open("new.mdb", {.password = wrong, .files = &files});
      ADD_FAILURE() << wrong;
    } catch (const AccessFileError& error) {
      EXPECT_EQ(error.number(), provider_number::kLoginFailed);
    }
  }
  const auto database = AccessDatabase::open("new.mdb", {.password = "Secret word 20 chars", .files = &files});
  database->setPassword("");
  database->commit();
  EXPECT_THROW(database->setPassword("123456789012345678901"), AccessFileError);
}

TEST_F(Schema, DefinitionsOfRealFilesAreWrittenAsTheyWere) {
  for (const FixtureFile& file : fixtureFiles()) {
    const auto real = AccessDatabase::open(fixture(file.name), {.password = file.password, .forWriting = false});
    for (const CatalogueObject& object : real->catalogue().objects()) {
      if (!object.isTable()) continue;
      const TableDefinition& definition = real->findTable(object.name)->definition();
      const Bytes bytes = encodeTableDefinition(definition);
      const std::uint32_t length = u32At(real->file().page(definition.page), definition_at::kLength);
      EXPECT_EQ(bytes.size(), length) << file.name << " " << object.name;
    }
  }
}

TEST_F(Schema, AddedAndDroppedColumnsKeepTheOthers) {
  schema().addColumn("Items", {.name = "Price", .type = ColumnType::kCurrency, .defaultValue = "0"});
  schema().addColumn("Items", {.name = "Remark", .type = ColumnType::kMemo});
  reopen();
  items().insert({"new", std::int64_t{1}, "memo", Currency::fromWhole(3), std::string(5000, 'r')});
  EXPECT_EQ(rowsOf(items())[5].substr(0, 5), "C5|5|");
  EXPECT_EQ(items().properties().defaultValue("price"), "0");
  schema().dropColumn("Items", "Text");
  schema().dropColumn("Items", "Amount");
  reopen();
  EXPECT_EQ(rowsOf(items())[5], "C5||");
  EXPECT_EQ(rowsOf(items())[300], "new|3|" + std::string(5000, 'r'));
  schema().addColumn("Items", {.name = "Amount", .type = ColumnType::kDouble});
  reopen();
  EXPECT_EQ(rowsOf(items())[300], "new|3|" + std::string(5000, 'r') + "|");
}

TEST_F(Schema, ColumnsGrowAndChangeTheirType) {
  schema().createIndex("Items", {.name = "ByCode", .columns = {{"Code"}}, .isUnique = true});
  schema().alterColumn("Items", "Code", {.size = 60});
  reopen();
  items().insert({std::string(60, 'k'), std::int64_t{-7}});
  schema().alterColumn("Items", "Amount", {.type = ColumnType::kText, .size = 20});
  reopen();
  EXPECT_EQ(rowsOf(items())[2].substr(0, 5), "C2|2|");
  EXPECT_EQ(rowsOf(items())[300], std::string(60, 'k') + "|-7|");
  schema().alterColumn("Items", "Amount", {.type = ColumnType::kInteger});
  reopen();
  EXPECT_EQ(std::get<std::int64_t>(items().rows().row(items().tree(0).last().row())[1]), -7);
  try {
    schema().alterColumn("Items", "Code", {.size = 5});
    ADD_FAILURE();
  } catch (const ProviderError& error) {
    EXPECT_EQ(error.number(), provider_number::kErrorsOccurred);
  }
  database_->rollback();
  EXPECT_EQ(items().definition().columns[0].length, 120);
}

TEST_F(Schema, IndexesAreBuiltOverRowsAndDropped) {
  schema().createIndex("Items", {.name = "Key", .columns = {{"Amount"}}, .isPrimary = true});
  schema().createIndex("Items", {.name = "Another", .columns = {{"Amount"}}, .isUnique = true, .refusesNulls = true});
  EXPECT_EQ(items().definition().realIndexes.size(), 1u);  // two names for one tree
  schema().createIndex("Items", {.name = "ByText", .columns = {{"Text"}, {"Code", true}}});
  reopen();
  schema().dropIndex("Items", "Key");
  schema().dropIndex("Items", "Another");
  EXPECT_EQ(items().definition().realIndexes.size(), 1u);
  items().insert({"C1", std::int64_t{1}});
  EXPECT_THROW(schema().createIndex("Items", {.name = "Key", .columns = {{"Amount"}}, .isPrimary = true}),
               ProviderError);
  reopen();
}

TEST_F(Schema, DroppedTablesGiveTheirPagesBack) {
  schema().createIndex("Items", {.name = "ByText", .columns = {{"Text"}, {"Code", true}}});
  const PageNumber before = database_->file().pageCount();
  for (int round = 0; round < 3; ++round) {
    schema().dropTable("Items");
    makeItems();
  }
  EXPECT_EQ(database_->file().pageCount(), before);
}

struct BadName {
  const char* table;
  NewColumn column;
};

TEST_F(Schema, LimitsAndNamesAreChecked) {
  const BadName kBad[] = {{"", {.name = "A", .size = 1}},
                          {"Items", {.name = "A", .size = 1}},
                          {"ITEMS", {.name = "A", .size = 1}},
                          {"a.b", {.name = "A", .size = 1}},
                          {"T", {.name = "[A]", .size = 1}},
                          {"T", {.name = "A", .size = 256}},
                          {"T", {.name = "A", .size = 0}},
                          {"T", {.name = "A", .type = ColumnType::kText, .size = 5, .isAutoNumber = true}}};
  for (const BadName& bad : kBad) {
    EXPECT_THROW(schema().createTable(bad.table, {bad.column}), ProviderError) << bad.table << bad.column.name;
    EXPECT_FALSE(database_->file().hasChanges());
  }
  std::vector<NewColumn> many;
  for (int i = 0; i < 255; ++i) many.push_back({.name = "C" + std::to_string(i), .type = ColumnType::kInteger});
  schema().createTable("Many", many);
  EXPECT_THROW(schema().addColumn("Many", {.name = "One more", .size = 1}), ProviderError);
  database_->commit();
}

TEST_F(Schema, RequiredAndEmptyTextsAreRefused) {
  schema().createTable(
      "Strict", {{.name = "A", .size = 5, .isRequired = true, .allowsZeroLength = false}, {.name = "B", .size = 5}});
  reopen();
  Table& strict = database_->table("Strict");
  EXPECT_THROW(strict.insert({Cell(), "b"}), ProviderError);
  EXPECT_THROW(strict.insert({"", "b"}), ProviderError);
  const RowId row = strict.insert({"a", ""});
  EXPECT_THROW(strict.update(row, {{0, Cell()}}), ProviderError);
  strict.update(row, {{1, Cell()}});
  database_->commit();
}

}  // namespace
}  // namespace orva::access
