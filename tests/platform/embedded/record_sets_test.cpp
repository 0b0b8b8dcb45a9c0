#include <gtest/gtest.h>

#include <fstream>

#include "platform/embedded/company_file.h"

namespace orva::test {
namespace {

std::unique_ptr<Recordset> openForChange(CompanyFile& company, std::string_view sql) {
  return company->open(sql, CursorKind::kKeyset, LockKind::kPessimistic);
}

void fillAssets(CompanyFile& company) {
  const bool access = company.dialect() == SqlDialect::kAccess;
  company.run(access
                  ? "create table Asset (Assetid text(10) not null, AcquiredAs text(15), Cost currency, Qty long,"
                    " docdt date, Sold yesno, Flag text(1) default 'N', Remarks memo, primary key (Assetid))"
                  : "create table Asset (Assetid nvarchar(10) not null, AcquiredAs nvarchar(15), Cost money, Qty int,"
                    " docdt datetime, Sold bit, Flag nvarchar(1) default 'N', Remarks ntext, primary key (Assetid))");
  for (const char* row : {"('A1', 'Purchased', 10)", "('A2', 'O', 20)", "('A3', 'Purchased', 30)"}) {
    company->execute("insert into Asset (Assetid, AcquiredAs, Cost) values " + std::string(row));
  }
}

/// What holds for every engine.
class RecordSets : public testing::TestWithParam<Engine> {};

INSTANTIATE_TEST_SUITE_P(InEveryFile, RecordSets, testing::ValuesIn(kEngines), kEngineName);

class AccessRecordSets : public RecordSets {};

INSTANTIATE_TEST_SUITE_P(InBothFiles, AccessRecordSets, testing::ValuesIn(kAccessEngines), kEngineName);

TEST_P(RecordSets, AddsChangesAndFindsRows) {
  CompanyFile company(GetParam());
  fillAssets(company);
  auto rows = openForChange(company, "select * from asset");
  EXPECT_EQ(rows->get("ASSETID"), Value("A1"));
  rows->addNew();
  EXPECT_EQ(rows->get("flag"), Value("N"));
  rows->set("assetid", "A4");
  rows->set("cost", "12.3456");
  rows->set("qty", "7");
  rows->set("docdt", "31/05/2020");
  rows->set("sold", "true");
  EXPECT_EQ(company.rows("select count(*) from asset"), "3");
  rows->update();
  EXPECT_EQ(rows->get("Assetid"), Value("A4"));
  EXPECT_EQ(company.rows("select cost, qty, docdt, sold, flag from asset where assetid = 'a4'"),
            "12.3456|7|31/05/2020|True|N");
  rows->moveNext();
  EXPECT_TRUE(rows->eof());
  rows->filter("Assetid='a2' and AcquiredAs = 'O'");
  ASSERT_FALSE(rows->eof());
  rows->set("cost", Currency::fromUnits(205'000));
  rows->set("remarks", "O'Neil");
  EXPECT_EQ(rows->get("cost"), Value(Currency::fromUnits(205'000)));
  rows->update();
  EXPECT_EQ(company.rows("select cost, remarks from asset where remarks = 'o''NEIL'"), "20.5|O'Neil");
  rows->filter("Assetid='A2' and AcquiredAs <> 'O'");
  EXPECT_TRUE(rows->eof());
  EXPECT_EQ(rows->recordCount(), 0);
  rows->filter("docdt=#05/31/2020# and Assetid='A4'");
  EXPECT_FALSE(rows->eof());
  rows->filter("");
  EXPECT_EQ(rows->recordCount(), 4);
  EXPECT_EQ(rows->get("Assetid"), Value("A1"));
}

TEST_P(RecordSets, AFailedRecordLeavesNothing) {
  struct Failure {
    const char* field;
    const char* value;
    const char* onSet;
    const char* onUpdate;
  };
  // The second record has the key of the first one, or lacks it.
  const Failure kFailures[] = {
      {"assetid", "A1", "none", "80004005"},
      {"assetid", "longer than ten", "80040E57", "80040E2F"},
      {"flag", "NY", "80040E57", "80040E2F"},
      {"qty", "many", "80040E07", "80040E2F"},
      {"cost", "", "80040E07", "80040E2F"},
      {"docdt", "05/31/2020", "80040E07", "80040E2F"},
      {"docdt", "31/02/2005", "80040E07", "80040E2F"},
      {"qty", "9999999999", "80040E57", "80040E2F"},
      {"sold", "perhaps", "80040E07", "80040E2F"},
  };
  CompanyFile company(GetParam());
  fillAssets(company);
  auto rows = openForChange(company, "select * from asset");
  for (const Failure& f : kFailures) {
    rows->addNew();
    EXPECT_EQ(failureOf([&] { rows->set(f.field, f.value); }), f.onSet) << f.field << " " << f.value;
    EXPECT_EQ(failureOf([&] { rows->update(); }), f.onUpdate) << f.field;
    rows->cancel();
    EXPECT_EQ(rows->get("assetid"), Value("A1"));
  }
  EXPECT_EQ(company.rows("select count(*) as n, sum(cost) as total from asset"), "3|60");
  // The pending values stay until they are mended.
  rows->addNew();
  rows->set("assetid", "A1");
  rows->set("cost", 5);
  EXPECT_EQ(failureOf([&] { rows->update(); }), "80004005");
  rows->set("assetid", "A9");
  rows->update();
  EXPECT_EQ(company.rows("select cost from asset where assetid = 'A9'"), "5");
}

TEST_P(RecordSets, MisuseHasTheLibrarysNumbers) {
  CompanyFile company(GetParam());
  fillAssets(company);
  auto rows = company->open("select * from asset where assetid = 'none'");
  EXPECT_TRUE(rows->eof());
  EXPECT_EQ(failureOf([&] { rows->get("cost"); }), numberText(provider_number::kNoCurrentRecord));
  EXPECT_EQ(failureOf([&] { rows->moveNext(); }), numberText(provider_number::kNoCurrentRecord));
  EXPECT_EQ(failureOf([&] { rows->get("nothing"); }), numberText(3265));
  EXPECT_EQ(failureOf([&] { rows->addNew(); }), numberText(3251));
  EXPECT_EQ(failureOf([&] { openForChange(company, "select count(*) as n from asset")->set("n", 1); }),
            numberText(3251));
  EXPECT_EQ(failureOf([&] { rows->filter("cost ="); }), "80040E14");
  auto kept = company->open("select * from asset");
  company.close();
  EXPECT_EQ(failureOf([&] { kept->get("cost"); }), numberText(provider_number::kObjectClosed));
}

/// Other statements may run between any two steps of a walk.
TEST_P(RecordSets, KeepTheirRowsWhileOthersRun) {
  const std::pair<const char*, const char*> kWalks[] = {
      {"select assetid, cost from asset", "A1/A2/A3/A4"},
      {"select assetid from asset where cost > 15", "A2/A3/A4"},
      {"select assetid from asset order by cost desc", "A4/A3/A2/A1"},
      {"select distinct assetid from asset order by assetid", "A1/A2/A3/A4"},
      {"select a.assetid from asset a, asset b where a.assetid = b.assetid order by a.assetid", "A1/A2/A3/A4"},
  };
  for (const auto& [query, expected] : kWalks) {
    CompanyFile company(GetParam());
    fillAssets(company);
    company->execute("insert into asset (assetid, cost) values ('A4', 40)");
    auto rows = company->open(query);
    std::string seen;
    for (; !rows->eof(); rows->moveNext()) {
      EXPECT_EQ(company.rows("select count(*) from asset where cost < 1000"), "4");
      company->execute("update asset set qty = 1 where assetid = 'A2'");
      seen += (seen.empty() ? "" : "/") + rows->get("assetid").toText();
      EXPECT_EQ(rows->recordCount(), static_cast<std::int64_t>(std::string(expected).size() + 1) / 3);
    }
    EXPECT_EQ(seen, expected) << query;
    rows->moveFirst();
    EXPECT_EQ(rows->get("assetid").toText(), std::string(expected).substr(0, 2));
  }
}

TEST_P(RecordSets, TheCurrentRowStaysAsItWasRead) {
  CompanyFile company(GetParam());
  fillAssets(company);
  auto rows = company->open("select * from asset where assetid = 'A1'");
  company->execute("update asset set cost = 99 where assetid = 'A1'");
  EXPECT_EQ(rows->get("cost").toText(), "10");
  rows->requery();
  EXPECT_EQ(rows->get("cost").toText(), "99");
  auto walk = company->open("select * from asset");
  company->execute("delete from asset where assetid = 'A2'");
  walk->moveNext();
  EXPECT_EQ(walk->get("assetid").toText(), "A3");
  walk->moveNext();
  EXPECT_TRUE(walk->eof());
}

TEST_P(RecordSets, FieldsTellTypeAndSize) {
  CompanyFile company(GetParam());
  fillAssets(company);
  std::string text;
  for (const FieldInfo& field : company->open("select * from asset")->fields()) {
    text += field.name + ":" + std::to_string(static_cast<int>(field.type)) + ":" + std::to_string(field.size) + " ";
  }
  const std::string date = company.dialect() == SqlDialect::kAccess ? "7" : "135";
  EXPECT_EQ(text, "Assetid:202:10 AcquiredAs:202:15 Cost:6:0 Qty:3:0 docdt:" + date +
                      ":0 Sold:11:0 Flag:202:1 Remarks:203:0 ");
}

/// A layout that changes under an open connection, by itself or by another.
TEST_P(AccessRecordSets, NoticeAChangedLayout) {
  CompanyFile company(GetParam());
  fillAssets(company);
  auto other = company.connect();
  EXPECT_EQ(rowsOf(*other->open("select * from asset where assetid = 'A1'")), "A1|Purchased|10|~|~|False|N|~");
  company->execute("alter table asset add Batch text(5)");
  EXPECT_EQ(rowsOf(*other->open("select * from asset where assetid = 'A1'")), "A1|Purchased|10|~|~|False|N|~|~");
  company->execute("alter table asset alter column batch text(8)");
  EXPECT_EQ(other->execute("update asset set batch = '12345678' where assetid = 'A1'"), 1);
  EXPECT_EQ(company.rows("select batch from asset where assetid = 'A1'"), "12345678");
  company->execute("alter table asset drop column batch");
  EXPECT_EQ(failureOf([&] { other->open("select batch from asset"); }), "80040E10");
  company->execute("drop table asset");
  EXPECT_EQ(failureOf([&] { other->execute("delete from asset"); }), "80040E37");
}

/// No answer may be older than the question, whoever changed the file.
TEST_P(RecordSets, SeeWhatOthersStore) {
  CompanyFile company(GetParam());
  fillAssets(company);
  auto other = company.connect();
  const std::string query = "select cost from asset where assetid = 'A1'";
  auto left = other->open("select * from asset");
  for (int cost = 1; cost < 50; ++cost) {
    company->execute("update asset set cost = " + std::to_string(cost) + " where assetid = 'A1'");
    EXPECT_EQ(rowsOf(*other->open(query)), std::to_string(cost));
    other->execute("update asset set qty = " + std::to_string(cost) + " where assetid = 'A2'");
    EXPECT_EQ(company.rows("select qty from asset where assetid = 'A2'"), std::to_string(cost));
  }
}

}  // namespace
}  // namespace orva::test
