#include <algorithm>
#include <array>
#include <random>
#include <set>

#include "platform/access/schema_change.h"
#include "platform/access/text_cell.h"
#include "support.h"

namespace orva::access {
namespace {

std::string hex(ByteView bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const Byte byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

struct TextKeyCase {
  const char* text;
  bool descending;
  const char* key;  // empty: no key
};

TEST(TextKeys, FollowTheGeneralOrder) {
  const TextKeyCase kCases[] = {
      {"Tables", false, "6D 4A 4C 5E 51 6B 01 00"},
      {"tABLES  ", false, "6D 4A 4C 5E 51 6B 01 00"},
      {"O'Neil", false, "64 62 51 59 5E 01 01 01 01 80 0B 06 80 00"},
      {"\xC3\xA9t\xC3\xA9", false, "51 6D 51 01 0E 02 0E 00"},
      {"", false, "01 00"},
      {"a", true, "B5 FE FF 00"},
      {"\xC3\x9F-", false, "6B 6B 01 01 01 01 80 0F 06 82 00"},
      {"\xE6\x97\xA5", false, ""},
  };
  for (const TextKeyCase& test : kCases) {
    const auto key = textKey(toUtf16(test.text), test.descending);
    EXPECT_EQ(key ? hex(*key) : "", test.key) << test.text;
  }
}

/// Plain texts take a short way to their key, which must not be seen in it.
TEST(TextKeys, OfPlainTextsAreThoseOfAllTexts) {
  std::mt19937 random(7);
  static constexpr char kOften[] = "aZ09 '-\x01_\xC3\xA9";
  for (int i = 0; i < 20'000; ++i) {
    std::string text(i % 300 == 299 ? 250 + random() % 10 : random() % 12, ' ');
    for (char& c : text) c = static_cast<char>(random() % 2 == 0 ? random() % 128 : kOften[random() % 11]);
    if (random() % 4 == 0) text += "  ";
    for (const bool descending : {false, true}) {
      Bytes key = {0x7F};
      const bool hasKey = appendTextKey(key, text, descending);
      const auto slow = textKey(toUtf16(text), descending);
      ASSERT_EQ(hasKey, slow.has_value()) << text;
      ASSERT_EQ(hex(ByteView(key).subspan(1)), hex(slow.value_or(Bytes()))) << text;
    }
  }
}

/// Ends are found whatever lies between them, on a full page and on an empty one.
TEST(IndexPages, TheLastEndIsFound) {
  Page page{};
  EXPECT_EQ(EntryEnds(page).last(), 0u);
  for (std::size_t end = 1; end <= kIndexCapacity; ++end) {
    page.fill(Byte{0});
    setEntryEnd(page, end);
    ASSERT_EQ(EntryEnds(page).last(), end);
    setEntryEnd(page, 1 + end / 3);
    ASSERT_EQ(EntryEnds(page).last(), std::max(end, 1 + end / 3));
  }
}

struct KeyOrder {
  ColumnType type;
  std::vector<Cell> ascending;
};

/// Keys must order as the values do, upwards and downwards, nulls first.
TEST(IndexKeys, OrderAsTheValues) {
  const auto money = [](std::int64_t units) { return Cell(Currency::fromUnits(units)); };
  const KeyOrder kOrders[] = {
      {ColumnType::kByte, {Cell(), std::int64_t{0}, std::int64_t{127}, std::int64_t{128}, std::int64_t{255}}},
      {ColumnType::kInteger, {Cell(), std::int64_t{-32'768}, std::int64_t{-1}, std::int64_t{0}, std::int64_t{32'767}}},
      {ColumnType::kLong, {Cell(), std::int64_t{-2'147'483'648}, std::int64_t{-1}, std::int64_t{0}, std::int64_t{9}}},
      {ColumnType::kCurrency, {Cell(), money(-10'000'000'000), money(-1), money(0), money(1), money(99'999'999'999)}},
      {ColumnType::kDouble, {Cell(), -1e300, -1.5, -1e-9, 0.0, 1e-9, 2.0, 1e300}},
      {ColumnType::kSingle, {Cell(), -1e30, -1.5, 0.0, 2.0, 1e30}},
      {ColumnType::kDate, {Cell(), DateTime{-40'000}, DateTime{-1.25}, DateTime{0}, DateTime{38'000.5}}},
      {ColumnType::kBoolean, {true, false}},
      {ColumnType::kBinary,
       {Cell(), Bytes{0}, Bytes{1, 2, 3, 4, 5, 6, 7, 8}, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}, Bytes{2}}},
      {ColumnType::kText, {Cell(), "", "a", "A b", "ab", "ab1", "abc", "b"}},
  };
  for (const KeyOrder& order : kOrders) {
    const Column column{.name = "C", .type = order.type, .length = 510};
    for (const bool descending : {false, true}) {
      std::vector<Bytes> keys;
      for (const Cell& cell : order.ascending) {
        keys.emplace_back();
        ASSERT_TRUE(appendKeyPart(keys.back(), column, descending, cell));
      }
      if (descending) std::reverse(keys.begin(), keys.end());
      for (std::size_t i = 1; i < keys.size(); ++i) {
        EXPECT_TRUE(compareEntries(keys[i - 1], keys[i]) < 0) << int(order.type) << " " << descending << " " << i;
      }
    }
  }
}

class Trees : public ::testing::Test {
 protected:
  void SetUp() override {
    database_ = AccessDatabase::create("new.mdb", {.files = &files_});
    SchemaChange schema(*database_);
    schema.createTable("Rows", {{.name = "Name", .size = 120}});
    schema.createIndex("Rows", {.name = "ByName", .columns = {{"Name"}}});
  }
  IndexTree& tree() { return database_->table("Rows").editTree(0); }
  std::size_t pages() {
    std::size_t count = 0;
    tree().map().forEach([&count](PageNumber) { ++count; });
    return count;
  }
  /// The tree's entries forwards must be those of the model, and backwards the same turned round.
  void compare(const std::set<Bytes>& model) { compare(model, tree()); }
  static void compare(const std::set<Bytes>& model, const IndexTree& tree) {
    std::vector<Bytes> forwards;
    for (IndexCursor at = tree.first(); !at.atEnd(); at.next()) forwards.push_back(at.bytes());
    ASSERT_TRUE(std::equal(forwards.begin(), forwards.end(), model.begin(), model.end()));
    std::vector<Bytes> backwards;
    for (IndexCursor at = tree.last(); !at.atEnd(); at.previous()) backwards.push_back(at.bytes());
    ASSERT_TRUE(std::equal(backwards.begin(), backwards.end(), model.rbegin(), model.rend()));
  }

  FakeFileSystem files_;
  std::unique_ptr<AccessDatabase> database_;
};

enum class KeyPattern { kRandom, kAscending, kDescending, kOneKey, kLong, kGroups, kMixed, kFewKeys };

IndexEntry entryFor(KeyPattern pattern, std::uint32_t i, std::mt19937& random) {
  Bytes key;
  if (pattern == KeyPattern::kOneKey) key = {0x7F, 7};
  if (pattern == KeyPattern::kAscending) appendBigEndian(key, i, 6);
  if (pattern == KeyPattern::kDescending) appendBigEndian(key, 1'000'000 - i, 6);
  if (pattern == KeyPattern::kRandom) appendBigEndian(key, random() % 5000, 4);
  if (pattern == KeyPattern::kLong) key.assign(100 + random() % 300, static_cast<Byte>(random() % 4));
  // Long beginnings in common, which a page stores once; a stranger among them costs it that saving.
  if (pattern == KeyPattern::kGroups) {
    key.assign(random() % 40 == 0 ? 3 : 60, static_cast<Byte>(random() % 3));
    appendBigEndian(key, i / (1 + random() % 2), 4);
  }
  if (pattern == KeyPattern::kMixed) key.assign(5 + random() % 1190 * (random() % 4 / 3), static_cast<Byte>(random()));
  if (pattern == KeyPattern::kFewKeys) key.assign(40, static_cast<Byte>(random() % 3));
  return {key, i};
}

/// Trees of up to four levels grow and shrink to nothing; every page is given back.
TEST_F(Trees, GrowAndShrinkInEveryOrder) {
  for (const KeyPattern pattern :
       {KeyPattern::kRandom, KeyPattern::kAscending, KeyPattern::kDescending, KeyPattern::kOneKey, KeyPattern::kLong,
        KeyPattern::kGroups, KeyPattern::kMixed, KeyPattern::kFewKeys}) {
    std::mt19937 random(static_cast<unsigned>(pattern));
    std::set<Bytes> model;
    std::vector<IndexEntry> entries;
    for (std::uint32_t i = 0; i < 4000; ++i) {
      entries.push_back(entryFor(pattern, i, random));
      tree().insert(entries.back());
      model.insert(entries.back().bytes());
      if (i % 5 == 4) {
        const std::size_t victim = random() % entries.size();
        ASSERT_TRUE(tree().erase(entries[victim]));
        model.erase(entries[victim].bytes());
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(victim));
      }
    }
    compare(model);
    std::size_t bytes = 0;
    for (const Bytes& entry : model) bytes += entry.size();
    ASSERT_GT(pages(), 5u);
    ASSERT_LT(pages(), 4 * bytes / kIndexCapacity + 8) << static_cast<int>(pattern);
    std::shuffle(entries.begin(), entries.end(), random);
    for (std::size_t i = 0; i < entries.size(); ++i) {
      ASSERT_TRUE(tree().erase(entries[i]));
      model.erase(entries[i].bytes());
      ASSERT_FALSE(tree().erase(entries[i]));
      if (i % 1000 == 0) compare(model);
    }
    EXPECT_TRUE(tree().first().atEnd());
    EXPECT_EQ(pages(), 1u);
  }
  EXPECT_EQ(allFaults(*database_), "");
}

/// Neighbours that come in one behind the other, while pages go from one tree to the other and back.
TEST_F(Trees, EntriesComeIntoTheirOwnTree) {
  SchemaChange schema(*database_);
  schema.createTable("Others", {{.name = "Name", .size = 120}});
  schema.createIndex("Others", {.name = "ByName", .columns = {{"Name"}}});
  database_->commit();
  constexpr std::uint32_t kRange = 1000;
  std::mt19937 random(11);
  std::array<std::set<Bytes>, 2> models;
  auto committed = models;
  const auto treeAt = [this](std::size_t i) -> IndexTree& {
    return database_->table(i == 0 ? "Rows" : "Others").editTree(0);
  };
  const auto bytesOf = [](std::uint32_t key) {
    Bytes bytes;
    appendBigEndian(bytes, key, 4);
    return bytes;
  };
  for (std::uint32_t step = 0; step < 800; ++step) {
    const std::size_t which = random() % 2;
    std::set<Bytes>& model = models[which];
    const std::uint32_t range = random() % 8 * kRange;
    switch (random() % 8) {
      case 0:
        while (model.lower_bound(bytesOf(range)) != model.lower_bound(bytesOf(range + kRange))) {
          ASSERT_TRUE(treeAt(which).erase(IndexEntry::of(*model.lower_bound(bytesOf(range)))));
          model.erase(model.lower_bound(bytesOf(range)));
        }
        break;
      case 1:
        database_->commit();
        committed = models;
        break;
      case 2:
        database_->rollback();
        models = committed;
        break;
      default:
        for (std::uint32_t i = 0; i < 60; ++i) {
          const IndexEntry entry{bytesOf(range + random() % kRange), step * 60 + i};
          treeAt(which).insert(entry);
          model.insert(entry.bytes());
        }
    }
    if (step % 50 != 0) continue;
    for (std::size_t i = 0; i < models.size(); ++i) compare(models[i], treeAt(i));
  }
}

/// A node may be left with one child, which it names.
TEST_F(Trees, ANamedLastEntryIsRaised) {
  const auto entryAt = [](std::uint32_t i) {
    // Too much for a root, which does not leave out what entries have in common.
    IndexEntry entry{Bytes(60, 0x7F), i};
    appendBigEndian(entry.key, i, 4);
    return entry;
  };
  constexpr std::uint32_t kMany = 1000;
  constexpr std::uint32_t kFew = 100;
  for (std::uint32_t i = 0; i < kMany; ++i) tree().insert(entryAt(i));
  for (std::uint32_t i = kMany; i > kFew; --i) ASSERT_TRUE(tree().erase(entryAt(i - 1)));
  ASSERT_EQ(pages(), 2u);
  for (std::uint32_t i = kFew; i < kFew + 5; ++i) tree().insert(entryAt(i));
  EXPECT_EQ(allFaults(*database_).find("another last entry"), std::string::npos) << allFaults(*database_);
}

TEST_F(Trees, SearchFindsTheEdges) {
  for (std::uint32_t i = 0; i < 3000; ++i) tree().insert({{0x7F, static_cast<Byte>(i / 256), static_cast<Byte>(i)}, i});
  EXPECT_TRUE(tree().containsKey(Bytes{0x7F, 3, 4}));
  EXPECT_FALSE(tree().containsKey(Bytes{0x7F, 3, 4}, 3 * 256 + 4));
  EXPECT_FALSE(tree().containsKey(Bytes{0x7F, 3}));
  EXPECT_EQ(tree().lowerBound(Bytes{0x7F, 3}).row(), 3u * 256);
  EXPECT_EQ(tree().before(Bytes{0x7F, 3}).row(), 3u * 256 - 1);
  EXPECT_TRUE(tree().before(Bytes{0x00}).atEnd());
  EXPECT_TRUE(tree().lowerBound(Bytes{0x80}).atEnd());
}

TEST_F(Trees, CursorsGoOnWhenTheTreeChangesUnderThem) {
  std::set<Bytes> model;
  for (std::uint32_t i = 0; i < 2000; ++i) {
    IndexEntry entry{{}, i};
    appendBigEndian(entry.key, i, 4);
    tree().insert(entry);
  }
  std::uint32_t expected = 0;
  for (IndexCursor at = tree().first(); !at.atEnd(); at.next(), ++expected) {
    ASSERT_EQ(at.row(), expected);
    ASSERT_TRUE(tree().erase(IndexEntry::of(at.bytes())));
  }
  EXPECT_EQ(expected, 2000u);
}

/// Nulls and uniqueness in the indexes of the engine's own file.
TEST(RealFiles, UniqueAndIgnoredNullsAreObeyed) {
  FakeFileSystem files;
  const auto database = openCopy(files, {"testIndexPropertiesV2000.mdb"});
  for (const std::string& name : database->tableNames()) {
    Table& table = database->table(name);
    const Row empty(table.definition().columns.size());
    for (int i = 0; i < 2; ++i) {
      try {
        table.insert(empty);
      } catch (const ProviderError& error) {
        EXPECT_EQ(error.number(), provider_number::kIntegrity) << name << error.what();
      }
    }
    if (table.definition().rowCount == 0) continue;
    const Row taken = table.rows().row([&table] {
      RowScan scan = table.scan();
      scan.next();
      return scan.row();
    }());
    bool isUnique = false;
    for (const RealIndex& index : table.definition().realIndexes) {
      isUnique = isUnique || (index.isUnique() && !allNull(table.definition(), index, taken));
    }
    if (isUnique) {
      EXPECT_THROW(table.insert(taken), ProviderError) << name;
    } else {
      EXPECT_NO_THROW(table.insert(taken)) << name;
    }
  }
  database->commit();
  EXPECT_EQ(seriousFaults(*database), "");
}

/// indexTestV2003: Table1 points to Table2 (deletes cascade) and Table3 (updates cascade).
TEST(RealFiles, RelationshipsAreObeyed) {
  FakeFileSystem files;
  const auto database = openCopy(files, {"indexTestV2003.mdb"});
  Table& child = database->table("Table1");
  const auto column = [](Table& table, const char* name) { return *table.definition().findColumn(name); };
  const auto rowWith = [](Table& table, std::size_t at, std::int64_t value) -> RowId {
    for (RowScan scan = table.scan(); scan.next();) {
      if (table.rows().cell(scan.row(), at) == Cell(value)) return scan.row();
    }
    return 0;
  };
  Row orphan(child.definition().columns.size());
  orphan[column(child, "id")] = std::int64_t{77};
  orphan[column(child, "otherfk1")] = std::int64_t{12'345};
  EXPECT_THROW(child.insert(orphan), ProviderError);
  orphan[column(child, "otherfk1")] = Cell();
  EXPECT_NO_THROW(child.insert(orphan));

  Table& deletes = database->table("Table2");
  const std::size_t before = rowsOf(child).size();
  const Cell used = child.rows().cell(rowWith(child, column(child, "id"), 1), column(child, "otherfk1"));
  const RowId parent = rowWith(deletes, column(deletes, "id"), std::get<std::int64_t>(used));
  ASSERT_NE(parent, 0u);
  EXPECT_THROW(deletes.update(parent, {{column(deletes, "id"), std::int64_t{500}}}), ProviderError);
  deletes.remove(parent);
  EXPECT_LT(rowsOf(child).size(), before);

  Table& updates = database->table("Table3");
  RowScan scan = child.scan();
  Cell key;
  while (scan.next() && isNull(key = child.rows().cell(scan.row(), column(child, "otherfk2")))) {
  }
  const RowId second = rowWith(updates, column(updates, "id"), std::get<std::int64_t>(key));
  EXPECT_THROW(updates.remove(second), ProviderError);
  database->rollback();
  Table& again = database->table("Table3");
  again.update(second, {{column(again, "id"), std::int64_t{900}}});
  EXPECT_EQ(database->table("Table1").rows().cell(scan.row(), column(database->table("Table1"), "otherfk2")),
            Cell(std::int64_t{900}));
  database->commit();
  EXPECT_EQ(seriousFaults(*database), "");
}

/// A file of another sort order can be read, but its indexed texts are left alone.
TEST(RealFiles, OtherSortOrdersAreNotWritten) {
  FakeFileSystem files;
  const auto database = AccessDatabase::create("new.mdb", {.files = &files});
  SchemaChange schema(*database);
  schema.createTable("Rows", {{.name = "Name", .size = 20}, {.name = "Free", .size = 20}});
  schema.createIndex("Rows", {.name = "ByName", .columns = {{"Name"}}});
  Table& table = database->table("Rows");
  const RowId row = table.insert({"a", "b"});
  table.editDefinition().columns[0].sortOrder = 2052;
  database->commit();
  EXPECT_THROW(table.insert({"c", "d"}), AccessFileError);
  EXPECT_THROW(table.update(row, {{0, "x"}}), AccessFileError);
  EXPECT_THROW(table.remove(row), AccessFileError);
  EXPECT_FALSE(database->file().hasChanges());
  table.update(row, {{1, "x"}});
  EXPECT_EQ(rowsOf(table)[0], "a|x");
}

}  // namespace
}  // namespace orva::access
