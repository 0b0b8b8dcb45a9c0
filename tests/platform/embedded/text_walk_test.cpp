#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/embedded/company_file.h"

namespace orva::test {
namespace {

using Lines = std::vector<std::string>;

/// What a walk shows, a line for each row.
Lines walked(Connection& connection, std::string_view table, const std::vector<std::string_view>& columns) {
  Lines lines;
  connection.walkTexts(table, columns, [&](std::span<const std::optional<std::string_view>> cells) {
    std::string line;
    for (const auto& cell : cells) line.append(cell.value_or("~")).append("|");
    lines.push_back(line);
  });
  std::ranges::sort(lines);
  return lines;
}

Lines queried(Connection& connection, const std::string& sql) {
  Lines lines;
  for (const auto rows = connection.open(sql); !rows->eof(); rows->moveNext()) {
    std::string line;
    for (const FieldInfo& field : rows->fields()) {
      const Value value = rows->get(field.name);
      line.append(value.isNull() ? "~" : value.toText()).append("|");
    }
    lines.push_back(line);
  }
  std::ranges::sort(lines);
  return lines;
}

class TextWalks : public testing::TestWithParam<Engine> {};
INSTANTIATE_TEST_SUITE_P(Engines, TextWalks, testing::ValuesIn(kAccessEngines), kEngineName);

/// Texts that a file keeps in different forms, in columns of different kinds.
TEST_P(TextWalks, ShowWhatAQueryGives) {
  const std::string kTexts[] = {"",
                                "A",
                                "AB",
                                "PM\\PU0001",
                                " blanks  ",
                                "\xC3\xA9",
                                "caf\xC3\xA9 \xC3\xA0",
                                "\xE0\xA4\xA8\xE0\xA4\xAE",
                                "\xF0\x9F\x98\x80",
                                "mixed \xE0\xA4\xA8",
                                std::string(255, 'x')};
  CompanyFile company(GetParam());
  company.run("create table T (Id text(10), Name text(255), Note memo, N number, D date, M currency, F yesno)");
  EXPECT_EQ(walked(*company, "T", {"Id", "Name"}), Lines{});
  int number = 0;
  for (const std::string& text : kTexts) {
    const std::string id = std::to_string(++number);
    std::string row = "insert into T values ('";
    row.append(id).append("', '").append(text).append("', '").append(text).append("', ").append(id);
    company.run(row.append(", #02/03/2005#, 1.5, true)"));
    row = "insert into T (Id, Note) values (null, 'long ";
    company.run(row.append(text).append(text).append("')"));
  }
  const std::vector<std::string_view> kColumns[] = {
      {"Id"}, {"name", "ID"}, {"Name", "Note"}, {"Id", "N", "D"}, {"M", "F", "Name"}};
  for (const auto& columns : kColumns) {
    std::string query;
    for (const std::string_view column : columns) query.append(query.empty() ? "select " : ", ").append(column);
    EXPECT_EQ(walked(*company, "t", columns), queried(*company, query + " from T")) << query;
  }
}

TEST_P(TextWalks, MeetEveryRowOnce) {
  CompanyFile company(GetParam());
  company.run("create table T (Id text(10), Name text(255), Other text(255), primary key (Id))");
  for (int i = 0; i < 400; ++i) company.run("insert into T values ('" + std::to_string(i) + "', 'a', 'b')");
  // Where they have no room any more, rows move to other pages; some go away afterwards.
  const std::string longer(250, 'z');
  company.run("update T set Name='" + longer + "', Other='" + longer + "' where Id like '%7'");
  company.run("delete from T where Id like '1%'; insert into T values ('new', null, '')");
  const Lines lines = walked(*company, "T", {"Id", "Name", "Other"});
  EXPECT_EQ(lines, queried(*company, "select Id, Name, Other from T"));
  EXPECT_EQ(lines.size(), 290u);
}

TEST_P(TextWalks, FailAsTheQueryDoes) {
  CompanyFile company(GetParam());
  company.run("create table T (Id text(10)); insert into T values ('A')");
  const auto walk = [&](std::string_view table, std::string_view column) {
    return failureOf([&] { walked(*company, table, {"Id", column}); });
  };
  EXPECT_EQ(walk("T", "Id"), "none");
  EXPECT_EQ(walk("None", "Id"), company.outcome("select Id from None"));
  EXPECT_EQ(walk("T", "None"), company.outcome("select Id, None from T"));
  EXPECT_EQ(failureOf([&] {
              company->walkTexts("T", std::vector<std::string_view>{"Id"},
                                 [](auto) { throw ProviderError(provider_number::kIntegrity, "Enough."); });
            }),
            numberText(provider_number::kIntegrity));
  company.run("alter table T add Name text(5); update T set Name='n'");
  EXPECT_EQ(walked(*company, "T", {"Id", "Name"}), Lines{"A|n|"});
}

/// A record set that stands on a row stays there.
TEST_P(TextWalks, DoNotDisturbRecordSets) {
  CompanyFile company(GetParam());
  company.run("create table T (Id text(10)); insert into T values ('A'); insert into T values ('B')");
  const auto rows = company->open("select Id from T order by Id");
  EXPECT_EQ(walked(*company, "T", {"Id"}), (Lines{"A|", "B|"}));
  EXPECT_EQ(rows->get("Id").toText(), "A");
  rows->moveNext();
  EXPECT_EQ(rows->get("Id").toText(), "B");
}

}  // namespace
}  // namespace orva::test
