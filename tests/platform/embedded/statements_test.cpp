#include <gtest/gtest.h>

#include <optional>

#include "fakes/case_file.h"
#include "platform/embedded/company_file.h"
#include "platform/values/text.h"

namespace orva::test {
namespace {

/// Assets, depreciation and masters as the queries of the program meet them.
std::string tables(SqlDialect dialect) {
  std::string text = fixtureText("statements/tables.txt");
  if (dialect == SqlDialect::kAccess) return text;
  const std::pair<const char*, const char*> kNames[] = {
      {" text(", " nvarchar("}, {" memo", " ntext"},      {" currency", " money"}, {" yesno", " bit"},
      {" date,", " datetime,"}, {" date)", " datetime)"}, {" number", " float"},   {"#", "'"},
      {", true", ", 1"},        {", false", ", 0"}};
  for (const auto& [from, to] : kNames) text = replaceAll(text, from, to);
  return text;
}

class Statements : public testing::TestWithParam<Engine> {};

INSTANTIATE_TEST_SUITE_P(InEveryFile, Statements, testing::ValuesIn(kEngines), kEngineName);

TEST_P(Statements, GiveWhatIsListed) {
  const bool isServer = GetParam().dialect == SqlDialect::kSqlServer;
  std::optional<CompanyFile> company;
  for (const ListedCase& one : listedCases(isServer ? "statements/server.txt" : "statements/access.txt")) {
    if (one.head.starts_with("== ")) {
      company.emplace(GetParam());
      company->run(tables(GetParam().dialect));
    } else {
      EXPECT_EQ(company->outcome(one.head), one.lines.empty() ? "" : one.lines[0]) << one.place << ": " << one.head;
    }
  }
}

}  // namespace
}  // namespace orva::test
