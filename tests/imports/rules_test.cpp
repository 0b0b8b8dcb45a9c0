#include <gtest/gtest.h>

#include <map>

#include "fakes/case_file.h"
#include "imports/import_setting.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

class Rules : public testing::TestWithParam<std::tuple<const char*, SqlDialect>> {};

/// Each case in every mode of its setting: under it stand what the company holds besides ("+ ") and what must be found.
TEST_P(Rules, FindWhatIsListed) {
  const auto [name, dialect] = GetParam();
  ImportSetting setting;
  std::map<std::size_t, std::unique_ptr<AssetCompany>> companies;
  for (const ListedCase& one : listedCases("imports/" + std::string(name) + ".txt")) {
    if (setting.read(one.head)) {
      companies.clear();
      continue;
    }
    Lines facts;
    Lines findings;
    for (const std::string& line : one.lines) {
      if (line.starts_with("+ ")) {
        facts.push_back(line.substr(2));
      } else {
        findings.push_back(line);
      }
    }
    for (std::size_t mode = 0; mode < setting.modes.size(); ++mode) {
      std::unique_ptr<AssetCompany>& company = companies[mode];
      if (!company || !facts.empty()) company = setting.company(dialect, mode);
      company->prepare(facts);
      company->stage(setting.rows(one.head, mode));
      EXPECT_EQ(company->validate(), findings) << one.place;
      if (!facts.empty()) company.reset();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Lists, Rules,
                         testing::Combine(testing::Values("new_assets", "modified_assets", "calendar", "transactions"),
                                          testing::Values(SqlDialect::kAccess, SqlDialect::kSqlServer)),
                         [](const auto& list) {
                           const bool isAccess = std::get<1>(list.param) == SqlDialect::kAccess;
                           return std::string(std::get<0>(list.param)) + (isAccess ? "_Access" : "_Server");
                         });

}  // namespace
}  // namespace orva
