#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/access/schema_change.h"
#include "support.h"

namespace orva::access {
namespace {

constexpr int kRows = 12;

/// A run that finishes rows, some together; returns how many were finished when the program was killed.
int finishRows(FakeFileSystem& files, int& tablesMade, int together = 1) {
  int finished = 0;
  try {
    const auto database = AccessDatabase::open("books.mdb", {.files = &files});
    Table& table = database->table("Rows");
    while (finished < kRows) {
      database->file().holdBack();
      for (int row = finished; row < finished + together; ++row) {
        table.insert({std::int64_t{row}, std::string(static_cast<std::size_t>(row) * 300, 'x')});
        database->commit();
      }
      database->file().letGo();
      finished += together;
      if (finished % 4 != 0) continue;
      SchemaChange schema(*database);
      schema.createTable("T" + std::to_string(finished), {{.name = "A", .size = 10}});
      database->commit();
      ++tablesMade;
      // Everything goes into the file itself now and then.
      database->file().sweep();
    }
  } catch (const Killed&) {
  }
  return finished;
}

/// Ends the program in every single write of a run, in the middle of the bytes.
class EveryKill : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(OfRowsStoredTogether, EveryKill, testing::Values(1, 4));

TEST_P(EveryKill, LosesNoFinishedRow) {
  FakeFileSystem fresh;
  {
    const auto database = AccessDatabase::create("books.mdb", {.files = &fresh});
    SchemaChange schema(*database);
    schema.createTable("Rows", {{.name = "Id", .type = ColumnType::kLong}, {.name = "T", .type = ColumnType::kMemo}});
    schema.createIndex("Rows", {.name = "Key", .columns = {{"Id"}}, .isPrimary = true});
    database->commit();
  }
  const Bytes start = *fresh.files["books.mdb"];
  bool ranThrough = false;
  int kills = 0;
  for (int n = 0; !ranThrough; ++n) {
    FakeFileSystem files;
    files.files["books.mdb"] = std::make_shared<Bytes>(start);
    files.killAtWrite(n);
    int tables = 0;
    const int finished = finishRows(files, tables, GetParam());
    ranThrough = !files.isDead();
    kills += ranThrough ? 0 : 1;
    files.revive();
    const auto database = AccessDatabase::open("books.mdb", {.files = &files});
    ASSERT_EQ(allFaults(*database), "") << "killed in write " << n;
    const auto rows = rowsOf(database->table("Rows"));
    // Each row in the making may be there in whole or not at all.
    ASSERT_GE(rows.size(), static_cast<std::size_t>(finished)) << "killed in write " << n;
    ASSERT_LE(rows.size(), static_cast<std::size_t>(finished + GetParam())) << "killed in write " << n;
    for (std::size_t i = 0; i < rows.size(); ++i) ASSERT_EQ(rows[i].substr(0, rows[i].find('|')), std::to_string(i));
    ASSERT_GE(database->tableNames().size(), static_cast<std::size_t>(tables) + 1);
    database->table("Rows").insert({std::int64_t{1000}, "after"});
    database->commit();
  }
  EXPECT_GT(kills, GetParam() == 1 ? 30 : 20);
}

/// A kill while the restoring itself runs must not hurt either.
TEST(Safety, RestoringCanBeInterruptedToo) {
  FakeFileSystem files;
  {
    const auto database = AccessDatabase::create("books.mdb", {.files = &files});
    SchemaChange(*database).createTable(
        "Rows", {{.name = "Id", .type = ColumnType::kLong}, {.name = "T", .type = ColumnType::kMemo}});
    database->commit();
  }
  files.killAtWrite(12);  // while pages go into the file
  int tables = 0;
  const int finished = finishRows(files, tables);
  ASSERT_TRUE(files.isDead());
  for (int n = 0;; ++n) {
    files.revive();
    files.killAtWrite(n);
    try {
      AccessDatabase::open("books.mdb", {.files = &files}).reset();
    } catch (const Killed&) {
      continue;
    }
    if (!files.isDead()) break;
  }
  files.revive();
  const auto database = AccessDatabase::open("books.mdb", {.files = &files});
  EXPECT_EQ(allFaults(*database), "");
  EXPECT_GE(rowsOf(database->table("Rows")).size(), static_cast<std::size_t>(finished));
}

/// A real program, killed by the system in the middle of its work.
TEST(Safety, AKilledProgramLeavesEveryFinishedRow) {
  const TemporaryFolder folder;
  const std::string path = folder.file("books.mdb");
  {
    const auto database = AccessDatabase::create(path);
    SchemaChange schema(*database);
    schema.createTable("Rows", {{.name = "Id", .type = ColumnType::kLong}, {.name = "T", .size = 99}});
    schema.createIndex("Rows", {.name = "Key", .columns = {{"Id"}}, .isPrimary = true});
    database->commit();
  }
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const auto database = AccessDatabase::open(path);
    for (std::int64_t i = 0;; ++i) {
      database->table("Rows").insert({i, "row " + std::to_string(i)});
      database->commit();
      if (::write(ends[1], &i, sizeof i) != sizeof i) ::_exit(1);
    }
  }
  ::close(ends[1]);
  std::int64_t last = -1;
  while (last < 2000 && ::read(ends[0], &last, sizeof last) == sizeof last) {
  }
  EXPECT_THROW(AccessDatabase::open(path), AccessFileError);  // in use
  ::kill(child, SIGKILL);
  for (std::int64_t more; ::read(ends[0], &more, sizeof more) == sizeof more;) last = more;
  ::waitpid(child, nullptr, 0);
  ::close(ends[0]);
  const auto database = AccessDatabase::open(path);
  EXPECT_EQ(allFaults(*database), "");
  EXPECT_GE(database->table("Rows").definition().rowCount, static_cast<std::uint32_t>(last + 1));
  EXPECT_LE(database->table("Rows").definition().rowCount, static_cast<std::uint32_t>(last + 2));
}

/// A side file belongs to one state of its database: not to one that another program has changed, nor to a copy that
/// somebody put in its place.
TEST(Safety, ASideFileOfAForeignStateIsRefused) {
  FakeFileSystem files;
  const auto addTable = [&files](const std::string& name, bool isKilled) {
    const auto database = AccessDatabase::open("books.mdb", {.files = &files});
    SchemaChange(*database).createTable(name, {{.name = "A", .size = 1}});
    database->commit();
    if (isKilled) files.killAtWrite(0);  // the side file is whole, the database untouched
  };
  AccessDatabase::create("books.mdb", {.files = &files}).reset();
  addTable("T1", false);
  const Bytes yesterday = *files.files["books.mdb"];
  addTable("T2", false);
  const Bytes today = *files.files["books.mdb"];
  addTable("T3", true);
  files.revive();
  ASSERT_TRUE(files.exists(RedoLog::pathFor("books.mdb")));
  Bytes usedElsewhere = today;
  ++usedElsewhere[header_at::kUserSlots];
  for (const Bytes& other : {yesterday, usedElsewhere}) {
    *files.files["books.mdb"] = other;
    EXPECT_THROW(AccessDatabase::open("books.mdb", {.files = &files}), AccessFileError);
    EXPECT_EQ(*files.files["books.mdb"], other);
  }
  *files.files["books.mdb"] = today;
  EXPECT_EQ(AccessDatabase::open("books.mdb", {.files = &files})->tableNames().size(), 3U);
}

/// However often one statement changes a page, no more than the page has to be kept and recorded.
TEST(Safety, ManyChangesOfOnePageInOneStatementStaySmall) {
  FakeFileSystem files;
  const auto database = AccessDatabase::create("books.mdb", {.files = &files});
  SchemaChange schema(*database);
  schema.createTable("Rows", {{.name = "Id", .type = ColumnType::kLong}, {.name = "T", .size = 100}});
  schema.createIndex("Rows", {.name = "Text", .columns = {{"T"}}});
  Table& table = database->table("Rows");
  constexpr int kMany = 400;
  std::vector<RowId> rows;
  rows.reserve(kMany);
  for (int i = 0; i < kMany; ++i) rows.push_back(table.insert({std::int64_t{i}, std::string(60, 'a')}));
  database->commit();
  database->file().sweep();
  const auto changeAll = [&] {
    for (int round = 0; round < 20; ++round) {
      for (const RowId row : rows) table.update(row, {{1, std::string(60, static_cast<char>('b' + round))}});
    }
  };
  const Bytes before = *files.files["books.mdb"];
  changeAll();
  database->rollback();
  EXPECT_EQ(table.rows().cell(rows[0], 1), Cell(std::string(60, 'a')));
  changeAll();
  database->commit();
  EXPECT_LT(files.files["books.mdb-changes"]->size(), 3 * before.size());
  EXPECT_EQ(table.rows().cell(rows[399], 1), Cell(std::string(60, 'u')));
  EXPECT_EQ(allFaults(*database), "");
}

/// A long side file is written over: what is left of the records before must not be taken for later ones.
TEST(Safety, RecordsThatWereWrittenOverAreNotRepeated) {
  constexpr std::size_t kText = 250;
  constexpr int kBefore = 70;
  constexpr int kAfter = 3;
  const std::string side = RedoLog::pathFor("books.mdb");
  FakeFileSystem files;
  const auto database = AccessDatabase::create("books.mdb", {.files = &files});
  SchemaChange(*database).createTable("Rows", {{.name = "T", .size = kText}});
  Table& table = database->table("Rows");
  const RowId row = table.insert({std::string(kText, 'a')});
  database->commit();
  database->file().sweep();
  const auto change = [&](int number) {
    const std::string text(kText, static_cast<char>('a' + number % 26));
    table.update(row, {{0, text}});
    database->commit();
    return text;
  };
  // All records are of one length, so that an old one begins where a new one ends.
  for (int number = 1; number <= kBefore; ++number) change(number);
  database->file().sweep();
  for (int number = kBefore + 1; number <= kBefore + kAfter; ++number) {
    const std::string text = change(number);
    EXPECT_GT(files.files[side]->size(), kBefore * kText) << "the old records are still there";
    FakeFileSystem asItStands;
    for (const auto& [name, bytes] : files.files) asItStands.files[name] = std::make_shared<Bytes>(*bytes);
    const auto found = AccessDatabase::open("books.mdb", {.files = &asItStands});
    EXPECT_EQ(rowsOf(found->table("Rows")), std::vector<std::string>{text});
    EXPECT_EQ(allFaults(*found), "");
  }
}

/// The checksum of side files before it had four lanes.
std::uint64_t earlierSum(ByteView bytes, std::uint64_t seed) {
  constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15;
  std::uint64_t sum = seed ^ bytes.size();
  std::size_t at = 0;
  for (; at + 8 <= bytes.size(); at += 8) {
    sum = (sum ^ u64At(bytes, at)) * kPrime;
    sum ^= sum >> 29;
  }
  for (; at < bytes.size(); ++at) sum = (sum ^ bytes[at]) * kPrime;
  return sum ^ sum >> 32;
}

/// Gives a side file the sums that an earlier version would have written.
void makeEarlier(Bytes& log, const Bytes& database) {
  const auto page = [&database](std::uint32_t number) {
    return ByteView(database).subspan(std::size_t{number} * kPageSize, kPageSize);
  };
  constexpr std::uint32_t kMagic = 0x4C52414F;
  log.erase(log.begin() + 12, log.begin() + 20);
  putU32(log, 0, kMagic);
  putU64(log, 4, earlierSum(page(0).subspan(header_at::kUserSlots), kMagic));
  for (std::size_t at = 12; at < log.size();) {
    const std::size_t end = at + 20 + u32At(log, at + 4);
    for (std::size_t range = at + 20; range < end; range += 8 + u16At(log, range + 6)) {
      const std::uint32_t number = u32At(log, range);
      if (u16At(log, range + 4) == 0xFFFF) putU64(log, range + 8, earlierSum(page(number), number));
    }
    putU64(log, at + 12, earlierSum(ByteView(log).subspan(at + 20, end - at - 20), u32At(log, at + 8)));
    at = end;
  }
}

/// An earlier version may have been killed before this one came; and this one while it restores.
TEST(Safety, ASideFileOfAnEarlierVersionIsRepeated) {
  FakeFileSystem files;
  AccessDatabase::create("books.mdb", {.files = &files}).reset();
  {
    const auto database = AccessDatabase::open("books.mdb", {.files = &files});
    for (const char* name : {"T1", "T2"}) {
      SchemaChange(*database).createTable(name, {{.name = "A", .size = 1}});
      database->commit();
    }
    files.killAtWrite(0);
  }
  files.revive();
  const std::string side = RedoLog::pathFor("books.mdb");
  makeEarlier(*files.files[side], *files.files["books.mdb"]);
  const Bytes start = *files.files["books.mdb"];
  const Bytes log = *files.files[side];
  bool ranThrough = false;
  for (int n = 0; !ranThrough; ++n) {
    files.files["books.mdb"] = std::make_shared<Bytes>(start);
    files.files[side] = std::make_shared<Bytes>(log);
    files.killAtWrite(n);
    try {
      AccessDatabase::open("books.mdb", {.files = &files}).reset();
    } catch (const Killed&) {
    }
    ranThrough = !files.isDead();
    files.revive();
    const auto database = AccessDatabase::open("books.mdb", {.files = &files});
    ASSERT_EQ(database->tableNames().size(), 2U) << "killed in write " << n;
    ASSERT_EQ(allFaults(*database), "") << "killed in write " << n;
  }
}

/// After a failed write the file can be opened anew although the program still holds the old object.
TEST(Safety, AnAbandonedFileIsOpenedAnew) {
  FakeFileSystem files;
  AccessDatabase::create("books.mdb", {.files = &files}).reset();
  const auto broken = AccessDatabase::open("books.mdb", {.files = &files});
  SchemaChange(*broken).createTable("T", {{.name = "A", .size = 1}});
  broken->commit();
  files.killAtWrite(1);
  EXPECT_THROW(broken->file().sweep(), Killed);
  files.revive();
  ASSERT_TRUE(broken->file().isBroken());
  broken->abandon();
  EXPECT_EQ(AccessDatabase::open("books.mdb", {.files = &files})->tableNames().size(), 1U);
  EXPECT_THROW(broken->file().page(1), AccessFileError);
}

/// What waited for others was told as done: when it cannot be written, the program must not go on as if it were.
TEST(Safety, RowsThatCannotBeStoredTogetherBreakTheFile) {
  FakeFileSystem files;
  {
    const auto database = AccessDatabase::create("books.mdb", {.files = &files});
    SchemaChange(*database).createTable("Rows", {{.name = "T", .size = 250}});
    database->commit();
  }
  auto database = AccessDatabase::open("books.mdb", {.files = &files});
  const auto add = [&](const std::string& text) {
    database->table("Rows").insert({text});
    database->commit();
  };
  add("alone");
  database->file().holdBack();
  database->file().holdBack();
  add("inner");
  const int writes = files.writes();
  database->file().letGo();
  EXPECT_EQ(files.writes(), writes) << "the outer holder still holds back";
  add("outer");
  files.isFull = true;
  EXPECT_THROW(database->file().letGo(), AccessFileError);
  files.isFull = false;
  ASSERT_TRUE(database->file().isBroken());
  EXPECT_THROW(add("after"), AccessFileError);
  database->abandon();
  database = AccessDatabase::open("books.mdb", {.files = &files});
  EXPECT_EQ(rowsOf(database->table("Rows")), std::vector<std::string>{"alone"});
  // A statement that fails alone breaks nothing; one that fails behind others that wait does.
  for (const bool others : {false, true}) {
    database->file().holdBack();
    if (others) add("waits");
    const std::string many(200, 'x');
    for (int i = 0; i < 400; ++i) database->table("Rows").insert({many + std::to_string(i)});
    files.isFull = true;
    EXPECT_THROW(database->commit(), AccessFileError);
    files.isFull = false;
    database->rollback();
    EXPECT_EQ(database->file().isBroken(), others);
    database->file().letGo();
  }
  database->abandon();
  database = AccessDatabase::open("books.mdb", {.files = &files});
  EXPECT_EQ(rowsOf(database->table("Rows")), std::vector<std::string>{"alone"});
}

TEST(Safety, AFileInUseElsewhereIsLeftAlone) {
  FakeFileSystem files;
  AccessDatabase::create("books.mdb", {.files = &files}).reset();
  files.lockedElsewhere = true;
  EXPECT_THROW(AccessDatabase::open("books.mdb", {.files = &files}), AccessFileError);
  EXPECT_NO_THROW(AccessDatabase::open("books.mdb", {.forWriting = false, .files = &files}));
}

/// Every single byte of a small file, changed: an error or a result, nothing else.
TEST(Safety, DamagedFilesGiveErrors) {
  const Bytes sound = readFile(fixture("compIndexTestV2000.mdb"));
  unsigned state = 12345;
  for (int round = 0; round < 150; ++round) {
    FakeFileSystem files;
    files.files["bad.mdb"] = std::make_shared<Bytes>(sound);
    for (int i = 0; i < 12; ++i) {
      state = state * 1664525 + 1013904223;
      const std::size_t page = 1 + (state >> 8) % (sound.size() / kPageSize - 1);
      const std::size_t offset = state % 4 == 0 ? (state >> 4) % kPageSize : (state >> 4) % 64;
      (*files.files["bad.mdb"])[page * kPageSize + offset] = static_cast<Byte>(state >> 20);
    }
    try {
      const auto database = AccessDatabase::open("bad.mdb", {.forWriting = false, .files = &files});
      checkStructure(*database);
    } catch (const AccessFileError& error) {
      EXPECT_NE(std::string(error.what()).find("bad.mdb"), std::string::npos) << error.what();
    }
  }
}

struct Foreign {
  const char* what;
  std::size_t size;
  std::size_t offset;
  Byte value;
};

TEST(Safety, ForeignFilesAreNamed) {
  const Foreign kForeign[] = {{"older", 65536, header_at::kVersion, 0},
                              {"newer", 65536, header_at::kVersion, 2},
                              {"not an Access database", 65536, header_at::kName, 'X'},
                              {"missing", 8192, 0, 0},
                              {"missing", 65000, 0, 0}};
  for (const Foreign& foreign : kForeign) {
    FakeFileSystem files;
    Bytes bytes = readFile(fixture("adox_jet4.mdb"));
    bytes.resize(foreign.size);
    bytes[foreign.offset] = foreign.value;
    files.files["f.mdb"] = std::make_shared<Bytes>(bytes);
    try {
      AccessDatabase::open("f.mdb", {.files = &files});
      ADD_FAILURE() << foreign.what;
    } catch (const AccessFileError& error) {
      EXPECT_NE(std::string(error.what()).find(foreign.what), std::string::npos) << error.what();
    }
  }
}

}  // namespace
}  // namespace orva::access
