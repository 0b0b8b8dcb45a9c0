#include <map>
#include <random>

#include "platform/access/schema_change.h"
#include "support.h"

namespace orva::access {
namespace {

const std::vector<NewColumn>& assetColumns() {
  static const std::vector<NewColumn> kColumns = {
      {.name = "Number", .type = ColumnType::kLong, .isAutoNumber = true},
      {.name = "AssetId", .type = ColumnType::kText, .size = 40},
      {.name = "Cost", .type = ColumnType::kCurrency},
      {.name = "Rate", .type = ColumnType::kDouble},
      {.name = "Bought", .type = ColumnType::kDate},
      {.name = "Sold", .type = ColumnType::kBoolean},
      {.name = "Note", .type = ColumnType::kMemo},
      {.name = "Picture", .type = ColumnType::kOle},
      {.name = "Lives", .type = ColumnType::kInteger},
  };
  return kColumns;
}

class Changes : public ::testing::Test {
 protected:
  void SetUp() override {
    database_ = AccessDatabase::create("new.mdb", {.files = &files_});
    SchemaChange schema(*database_);
    schema.createTable("Assets", assetColumns());
    schema.createIndex("Assets", {.name = "PrimaryKey", .columns = {{"Number"}}, .isPrimary = true});
    schema.createIndex("Assets", {.name = "ById", .columns = {{"AssetId"}}});
    schema.createIndex("Assets", {.name = "ByCost", .columns = {{"Cost", true}, {"AssetId"}}, .ignoresNulls = true});
    schema.createIndex("Assets", {.name = "BySold", .columns = {{"Sold", true}, {"Bought"}, {"Lives", true}}});
    database_->commit();
  }

  Table& assets() { return database_->table("Assets"); }

  FakeFileSystem files_;
  std::unique_ptr<AccessDatabase> database_;
};

/// Random rows with what breaks easily: nulls, empty texts, long texts and memos of every storage form.
class RandomRows {
 public:
  explicit RandomRows(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t n) { return random_() % n; }
  Cell value(std::size_t column) {
    if (below(6) == 0 && column != 5) return {};
    switch (column) {
      case 1:
        return text(below(41));
      case 2:
        return Currency::fromUnits(static_cast<std::int64_t>(below(2'000'000)) - 1'000'000);
      case 3:
        return static_cast<double>(below(1000)) / 8 - 60;
      case 4:
        return DateTime{static_cast<double>(below(80'000)) - 20'000 + static_cast<double>(below(24)) / 24};
      case 5:
        return below(2) == 0;
      case 6:
        return text(kMemoSizes[below(std::size(kMemoSizes))]);
      case 7:
        return Bytes(kMemoSizes[below(std::size(kMemoSizes))] + 1, static_cast<Byte>(below(256)));
      case 8:
        return static_cast<std::int64_t>(below(65'536)) - 32'768;
      default:
        return {};
    }
  }
  Row row() {
    Row cells(1);
    for (std::size_t i = 1; i < assetColumns().size(); ++i) cells.push_back(value(i));
    return cells;
  }

 private:
  static constexpr std::size_t kMemoSizes[] = {0, 1, 20, 31, 33, 64, 65, 1000, 2040, 4000, 9000};

  std::string text(std::size_t length) {
    static const std::vector<std::string> kLetters = {"a", "B", "c", "z", "9", " ", "'", "-", "é", "ß", "Æ", "Ж"};
    std::string text;
    for (std::size_t i = 0; i < length; ++i) text += kLetters[below(i % 7 == 0 ? kLetters.size() : 6)];
    return text;
  }

  std::mt19937 random_;
};

/// Thousands of changes against a model in memory; the file must hold the same
/// rows and pass every check, also after it was closed.
TEST_F(Changes, ManyChangesLeaveTheRowsOfTheModelAndASoundFile) {
  RandomRows random(7);
  std::map<RowId, Row> model;
  const auto anyRow = [&] { return std::next(model.begin(), static_cast<std::ptrdiff_t>(random.below(model.size()))); };
  for (int step = 0; step < 3000; ++step) {
    const std::size_t dice = random.below(10);
    if (model.empty() || dice < (step < 2000 ? 6u : 1u)) {
      Row row = random.row();
      const RowId id = assets().insert(row);
      row[0] = assets().lastAutoNumber();
      model[id] = row;
    } else if (dice < 8) {
      const auto changed = anyRow();
      std::vector<Change> changes;
      for (std::size_t column = 1; column < 9; ++column) {
        if (random.below(3) == 0) changes.push_back({column, random.value(column)});
      }
      assets().update(changed->first, changes);
      for (const Change& change : changes) changed->second[change.column] = change.value;
    } else {
      const auto gone = anyRow();
      assets().remove(gone->first);
      model.erase(gone);
    }
    if (step % 50 == 0) database_->commit();
  }
  database_->commit();
  EXPECT_EQ(allFaults(*database_), "");
  database_.reset();
  database_ = AccessDatabase::open("new.mdb", {.files = &files_});
  EXPECT_EQ(allFaults(*database_), "");
  std::size_t count = 0;
  for (RowScan scan = assets().scan(); scan.next(); ++count) {
    ASSERT_EQ(model.count(scan.row()), 1u);
    EXPECT_EQ(assets().rows().row(scan.row()), model[scan.row()]);
  }
  EXPECT_EQ(count, model.size());
}

TEST_F(Changes, RollbackLeavesNothing) {
  RandomRows random(1);
  for (int i = 0; i < 100; ++i) assets().insert(random.row());
  database_->commit();
  const Bytes before = *files_.files["new.mdb"];
  const auto rows = rowsOf(assets());
  for (int i = 0; i < 400; ++i) assets().insert(random.row());
  SchemaChange(*database_).createTable("Other", {{.name = "X", .type = ColumnType::kLong}});
  SchemaChange(*database_).dropTable("Assets");
  database_->rollback();
  EXPECT_EQ(rowsOf(assets()), rows);
  EXPECT_EQ(database_->findTable("Other"), nullptr);
  EXPECT_EQ(allFaults(*database_), "");
  assets().insert(random.row());
  database_->commit();
  EXPECT_EQ(rowsOf(assets()).size(), rows.size() + 1);
}

struct Refusal {
  const char* what;
  std::size_t column;
  Cell value;
  std::int32_t number;
};

TEST_F(Changes, WrongValuesAreRefusedBeforeAnythingChanges) {
  const Refusal kRefusals[] = {
      {"text too long", 1, std::string(41, 'x'), provider_number::kDataOverflow},
      {"character without a known weight", 1, "\xE6\x97\xA5", provider_number::kUnspecified},
      {"money out of range", 2, 1e15, provider_number::kDataOverflow},
      {"text for money", 2, "twelve", provider_number::kTypeMismatch},
      {"integer too large", 8, std::int64_t{32'768}, provider_number::kDataOverflow},
      {"date out of range", 4, DateTime{3e6}, provider_number::kDataOverflow},
      {"repeated key", 0, std::int64_t{1}, provider_number::kUnspecified},
  };
  RandomRows random(3);
  assets().insert(random.row());
  database_->commit();
  for (const Refusal& refusal : kRefusals) {
    Row row = random.row();
    row[refusal.column] = refusal.value;
    try {
      assets().insert(row);
      ADD_FAILURE() << refusal.what << " was stored";
    } catch (const ProviderError& error) {
      EXPECT_EQ(error.number(), refusal.number) << refusal.what << ": " << error.what();
    }
    EXPECT_FALSE(database_->file().hasChanges()) << refusal.what;
  }
}

TEST_F(Changes, ARowOverTheLimitIsRefused) {
  SchemaChange schema(*database_);
  std::vector<NewColumn> columns;
  for (int i = 0; i < 20; ++i) columns.push_back({.name = "T" + std::to_string(i), .size = 255, .isCompressed = false});
  schema.createTable("Wide", columns);
  database_->commit();
  Table& wide = database_->table("Wide");
  Row row(20);
  for (int i = 0; i < 7; ++i) row[static_cast<std::size_t>(i)] = std::string(255, 'x');
  wide.insert(row);
  row[7] = std::string(255, 'x');
  database_->commit();
  EXPECT_THROW(wide.insert(row), ProviderError);
  EXPECT_FALSE(database_->file().hasChanges());
  EXPECT_EQ(allFaults(*database_), "");
}

/// Values go into a row on two ways, with the same bytes; what a column keeps as it is, is kept.
TEST_F(Changes, ValuesAndStoredPartsMakeTheSameRow) {
  const TableDefinition& definition = assets().definition();
  RandomRows random(11);
  for (int i = 0; i < 1000; ++i) {
    Row row = random.row();
    StoredCells cells(row.size());
    for (std::size_t c = 0; c < row.size(); ++c) {
      const Column& column = definition.columns[c];
      const Cell given = isLongValue(column.type) ? Cell() : row[c];
      row[c] = convertFor(column, given);
      ASSERT_TRUE(!isKeptAs(column, given) || row[c] == given) << column.name;
      const auto* yes = std::get_if<bool>(&row[c]);
      if (isNull(row[c]) || (yes && !*yes)) continue;
      cells.fill(c, [&](Bytes& bytes) { appendCell(bytes, column, row[c]); });
    }
    Bytes fromCells = {1, 2, 3};
    Bytes fromValues;
    encodeRow(fromCells, definition, cells);
    encodeRow(fromValues, definition, row);
    ASSERT_EQ(fromCells, fromValues);
    ASSERT_EQ(fromCells.size(), encodedRowSize(definition, cells));
  }
}

/// Real files: change every table's rows and look whether all still fits.
TEST(RealFiles, StaySoundWhenRowsAreCopiedChangedAndRemoved) {
  for (const FixtureFile& file : fixtureFiles()) {
    if (std::string(file.name) == "testUnicodeCompV2003.mdb") continue;  // texts that cannot be sorted
    FakeFileSystem files;
    auto database = openCopy(files, file);
    for (const std::string& name : database->tableNames()) {
      Table& table = database->table(name);
      std::vector<RowId> rows;
      for (RowScan scan = table.scan(); scan.next();) rows.push_back(scan.row());
      std::size_t step = 0;
      for (const RowId id : rows) {
        try {
          if (step % 3 == 0) table.remove(id);
          if (step % 3 == 1) table.update(id, {{table.definition().columns.size() - 1, Cell()}});
          if (step % 3 == 2) table.insert(table.rows().row(id));
          database->commit();
        } catch (const ProviderError&) {
          database->rollback();
        }
        ++step;
      }
    }
    EXPECT_EQ(seriousFaults(*database), "") << file.name;
    database.reset();
    database = AccessDatabase::open("copy.mdb", {.password = file.password, .files = &files});
    EXPECT_EQ(seriousFaults(*database), "") << file.name;
  }
}

}  // namespace
}  // namespace orva::access
