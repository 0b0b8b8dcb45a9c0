#include "platform/odbc/server_test.h"
#include "platform/values/text.h"

namespace orva {
namespace {

constexpr const char* kCatalog = "SETSORVA";

class ServerRecordSets : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    if (!home) return;
    home->makeCatalog(kCatalog);
    connection = home->connect(kCatalog);
    other = home->connect(kCatalog);
  }
  void TearDown() override {
    connection.reset();
    other.reset();
  }
  std::unique_ptr<Recordset> forChange(const std::string& sql) const {
    return connection->open(sql, CursorKind::kKeyset, LockKind::kPessimistic);
  }
  void makeAssets() const {
    connection->execute(
        "create table Asset (Assetid nvarchar(30) not null primary key, [Desc] ntext, Cost money, Qty int, Sold bit, "
        "docdt smalldatetime, Share float, Flag nvarchar(1) default 'N')");
    connection->execute("insert into Asset (Assetid, Cost, docdt) values ('A1', 10, '05/31/2020')");
    connection->execute("insert into Asset (Assetid, Cost) values ('A2', 20)");
    connection->execute("insert into Asset (Assetid, Cost) values ('A3', 30)");
  }

  std::unique_ptr<Connection> connection;
  std::unique_ptr<Connection> other;
};

TEST_P(ServerRecordSets, EveryTypeComesBackAsItWasStored) {
  makeAssets();
  struct Case {
    const char* field;
    Value stored;
  };
  const std::string longText(20'000, 'x');
  const Case kCases[] = {
      {"Desc", longText},
      {"Desc", longText + "\xE0\xA4\xB9\xF0\x9F\x98\x80"},
      {"Desc", ""},
      {"Desc", Value()},
      {"Flag", "\xE0\xA4\xB9"},
      {"Flag", "'"},
      {"Flag", ""},
      {"Flag", Value()},
      {"Cost", Currency::fromUnits(1)},
      {"Cost", Currency::fromUnits(-1)},
      {"Cost", Currency::fromUnits(922'337'203'685'477'5807)},
      {"Cost", Currency::fromUnits(-922'337'203'685'477'5807)},
      {"Cost", Currency()},
      {"Cost", Value()},
      {"Qty", 2147483647},
      {"Qty", std::int64_t{-2147483648}},
      {"Qty", Value()},
      {"Sold", true},
      {"Sold", false},
      {"Sold", Value()},
      {"docdt", *Date::fromParts(1900, 1, 1)},
      {"docdt", *Date::fromParts(2079, 6, 6)},
      {"docdt", *Date::fromParts(2024, 2, 29)},
      {"docdt", Value()},
      {"Share", 0.1},
      {"Share", -1e300},
      {"Share", Value()},
  };
  int number = 0;
  for (const Case& c : kCases) {
    const std::string id = "T" + std::to_string(++number);
    const auto rows = forChange("select * from Asset");
    rows->addNew();
    rows->set("assetid", id);
    rows->set(c.field, c.stored);
    rows->update();
    EXPECT_EQ(rows->get(c.field), c.stored) << id;
    EXPECT_EQ(other->open("select * from Asset where Assetid='" + id + "'")->get(c.field), c.stored) << id;
    // The same value once more as a change of a row.
    rows->filter("Assetid='A1'");
    rows->set(c.field, c.stored);
    rows->update();
    EXPECT_EQ(other->open("select * from Asset where Assetid='A1' and '" + id + "'<>''")->get(c.field), c.stored) << id;
  }
}

TEST_P(ServerRecordSets, FieldsAreDescribedAsTheProviderDescribesThem) {
  makeAssets();
  struct Case {
    const char* name;
    FieldType type;
    int size;
  };
  const Case kCases[] = {{"Assetid", FieldType::kVarChar, 30}, {"Desc", FieldType::kMemo, 0},
                         {"Cost", FieldType::kCurrency, 0},    {"Qty", FieldType::kInteger, 0},
                         {"Sold", FieldType::kBoolean, 0},     {"docdt", FieldType::kTimestamp, 0},
                         {"Share", FieldType::kDouble, 0},     {"Flag", FieldType::kVarChar, 1}};
  for (const auto& rows : {connection->open("select * from Asset"), forChange("select * from Asset")}) {
    const std::vector<FieldInfo> fields = rows->fields();
    ASSERT_EQ(fields.size(), std::size(kCases));
    for (std::size_t i = 0; i < fields.size(); ++i) {
      EXPECT_EQ(fields[i].name, kCases[i].name);
      EXPECT_EQ(fields[i].type, kCases[i].type) << fields[i].name;
      EXPECT_EQ(fields[i].size, kCases[i].size) << fields[i].name;
    }
  }
}

TEST_P(ServerRecordSets, AddsChangesFiltersAndCancels) {
  makeAssets();
  const auto rows = forChange("select * from asset");
  EXPECT_EQ(rows->recordCount(), 3);
  EXPECT_EQ(rows->get("ASSETID"), Value("A1"));
  rows->addNew();
  rows->set("assetid", "A4");
  rows->set("cost", "12.3456");
  rows->set("docdt", "31/05/2020");
  EXPECT_EQ(rowsOf(*other, "select count(*) as n from Asset"), "3");
  rows->update();
  EXPECT_EQ(rows->get("Assetid"), Value("A4"));
  EXPECT_EQ(rows->get("Flag"), Value("N")) << "what the server fills in";
  rows->moveNext();
  EXPECT_TRUE(rows->eof());
  rows->addNew();
  rows->set("assetid", "A5");
  rows->cancel();
  rows->filter("Assetid='a4' and docdt=#05/31/2020#");
  ASSERT_FALSE(rows->eof());
  EXPECT_EQ(rows->recordCount(), 1);
  rows->set("cost", Currency::fromWhole(7));
  rows->set("Desc", "O'Neil");
  EXPECT_EQ(rows->get("cost"), Value(Currency::fromWhole(7)));
  rows->update();
  EXPECT_EQ(rowsOf(*other, "select Cost, [Desc], docdt from Asset where Assetid='A4'"), "7|O'Neil|31/05/2020");
  rows->filter("Assetid='A4' or Cost <> 20");
  EXPECT_EQ(rows->recordCount(), 3);
  rows->filter("Assetid='A9'");
  EXPECT_TRUE(rows->eof());
  other->execute("insert into Asset (Assetid) values ('A9')");
  rows->requery();
  EXPECT_FALSE(rows->eof()) << "the filter stays";
  rows->filter("");
  EXPECT_EQ(rows->recordCount(), 5);
  EXPECT_EQ(rowsOf(*other, "select count(*) as n from Asset"), "5");
}

TEST_P(ServerRecordSets, AChangeByAnotherUserIsNeverOverwritten) {
  makeAssets();
  const auto rows = forChange("select * from Asset where Assetid='A1'");
  EXPECT_EQ(rows->get("Cost"), Value(Currency::fromWhole(10)));
  other->execute("update Asset set Cost=11 where Assetid='A1'");
  rows->set("Cost", Currency::fromWhole(12));
  EXPECT_EQ(failureOf([&] { rows->update(); }).number(), static_cast<std::int32_t>(0x80040E38));
  rows->cancel();
  EXPECT_EQ(rowsOf(*other, "select Cost from Asset where Assetid='A1'"), "11");
  rows->set("Qty", 5);
  EXPECT_NO_THROW(rows->update()) << "another column is no conflict";
  other->execute("delete from Asset where Assetid='A1'");
  rows->set("Qty", 6);
  EXPECT_EQ(failureOf([&] { rows->update(); }).number(), static_cast<std::int32_t>(0x80040E38));
}

TEST_P(ServerRecordSets, ATimeOfDayIsNoConflict) {
  makeAssets();
  if (!isReal()) GTEST_SKIP() << "the engine behind the test server keeps no time of day";
  connection->execute("update Asset set docdt='05/31/2020 13:45' where Assetid='A1'");
  const auto rows = forChange("select * from Asset where Assetid='A1'");
  EXPECT_EQ(rows->get("docdt"), Value(*Date::fromParts(2020, 5, 31)));
  rows->set("docdt", "01/06/2020");
  EXPECT_NO_THROW(rows->update());
}

TEST_P(ServerRecordSets, WithoutAPrimaryKeyTheWholeRowIsTheKey) {
  connection->execute("create table Rates (Code nvarchar(10), Rate money, Since smalldatetime, Notes ntext)");
  for (const char* row : {"('F1', 10, '04/01/2020', 'x')", "('F1', null, '04/01/2020', null)", "('F2', 5, null, null)",
                          "('F2', 5, null, null)"}) {
    connection->execute("insert into Rates (Code, Rate, Since, Notes) values " + std::string(row));
  }
  const auto rows = forChange("select * from Rates");
  rows->filter("Code='F1' and Rate=10");
  rows->set("Rate", "11");
  rows->set("Notes", "y");
  rows->update();
  EXPECT_EQ(rowsOf(*other, "select Rate, Notes from Rates where Code='F1' and Rate is not null"), "11|y");
  EXPECT_EQ(rowsOf(*other, "select count(*) as n from Rates where Rate is null"), "1");
  rows->filter("Code='F2'");
  rows->set("Rate", "6");
  EXPECT_EQ(failureOf([&] { rows->update(); }).number(), provider_number::kUnspecified) << "two equal rows";
  EXPECT_EQ(rowsOf(*other, "select count(*) as n from Rates where Rate=5"), "2");
}

TEST_P(ServerRecordSets, ALongSetIsReadWhileOtherStatementsRun) {
  connection->execute("create table Many (id int not null primary key, name nvarchar(50), done bit)");
  constexpr int kRows = 3000;
  {
    const auto rows = forChange("select * from Many");
    for (int id = 1; id <= kRows; ++id) {
      rows->addNew();
      rows->set("id", id);
      rows->set("name", "name " + std::to_string(id));
      rows->update();
    }
  }
  const auto walked = forChange("select * from Many where id > 0 order by id");
  const auto read = connection->open("select id, name from Many order by id desc");
  const auto forward = connection->open("Select * from Many where id>0", CursorKind::kForwardOnly);
  int expected = 0;
  for (; !walked->eof(); walked->moveNext()) {
    ++expected;
    if (expected == 2995) ++expected;  // deleted below
    ASSERT_EQ(walked->get("id"), Value(expected));
    ASSERT_EQ(walked->get("name"), Value("name " + std::to_string(expected)));
    ASSERT_EQ(read->get("id"), Value(kRows + (expected > 2995 ? 2 : 1) - expected));
    read->moveNext();
    ASSERT_EQ(forward->get("id"), Value(expected));
    forward->moveNext();
    if (expected == 10) connection->execute("delete from Many where id=2995");
    if (expected == 2500) {
      walked->set("done", true);
      walked->update();
    }
  }
  EXPECT_EQ(expected, kRows);
  EXPECT_TRUE(forward->eof());
  EXPECT_THROW(forward->addNew(), ProviderError);
  EXPECT_EQ(rowsOf(*other, "select id from Many where done=1"), "2500");
}

TEST_P(ServerRecordSets, WhatStatementsSayMeansTheSameInEveryScript) {
  connection->execute("create table Dept (Deptcode nvarchar(10), DeptName nvarchar(255))");
  for (const char* name : {"O'Neil", "\xE0\xA4\xB2\xE0\xA5\x87\xE0\xA4\x96\xE0\xA4\xBE", "{d 'x'}", "a?b", "--",
                           "/* */", "N'", "\xC3\x89tat"}) {
    const std::string quoted = sqlQuote(name);
    connection->execute("insert into Dept (Deptcode, DeptName) values ('1', " + quoted + ")");
    EXPECT_EQ(rowsOf(*other, "select DeptName from Dept where DeptName=" + quoted), name);
    EXPECT_EQ(rowsOf(*other, "select DeptName from Dept where Upper(DeptName)=Upper(" + quoted + ")"), name);
    EXPECT_EQ(rowsOf(*other, "select DeptName from Dept where DeptName in (" + quoted + ")"), name);
    EXPECT_EQ(connection->execute("delete from Dept where DeptName=" + quoted), 1) << name;
  }
}

TEST_P(ServerRecordSets, MisuseHasItsNumbers) {
  makeAssets();
  const auto read = connection->open("select * from Asset where Assetid='A9'");
  EXPECT_EQ(failureOf([&] { read->get("Cost"); }).number(), provider_number::kNoCurrentRecord);
  EXPECT_EQ(failureOf([&] { read->moveNext(); }).number(), provider_number::kNoCurrentRecord);
  EXPECT_EQ(failureOf([&] { read->get("Colour"); }).number(), 3265);
  EXPECT_EQ(failureOf([&] { read->addNew(); }).number(), 3251);
  const auto rows = forChange("select * from Asset");
  rows->addNew();
  EXPECT_EQ(failureOf([&] { rows->set("docdt", "31/02/2020"); }).number(), provider_number::kTypeMismatch);
  EXPECT_EQ(failureOf([&] { rows->set("Flag", "NO"); }).number(), provider_number::kDataOverflow);
  rows->set("Cost", "1");
  EXPECT_EQ(failureOf([&] { rows->update(); }).number(), provider_number::kIntegrity) << "no key";
  rows->set("Assetid", "A1");
  EXPECT_EQ(failureOf([&] { rows->update(); }).number(), provider_number::kUnspecified);
  rows->cancel();
  EXPECT_EQ(rowsOf(*connection, "select count(*) as n from Asset"), "3");
  connection.reset();
  EXPECT_EQ(failureOf([&] { rows->eof(); }).number(), provider_number::kObjectClosed);
}

INSTANTIATE_TEST_SUITE_P(Places, ServerRecordSets, testing::Values(Where::kTestServer, Where::kRealServer), whereName);

}  // namespace
}  // namespace orva
