#include <gtest/gtest.h>

#include <optional>

#include "fakes/case_file.h"
#include "platform/values/text.h"
#include "startup/schema/old_company.h"

namespace orva {
namespace {

class UpgradeRepair : public ::testing::TestWithParam<SchemaDialect> {};

TEST_P(UpgradeRepair, MendsWhatIsListed) {
  const bool isServer = GetParam() == SchemaDialect::kServer;
  std::optional<OldCompany> company;
  for (const ListedCase& step : listedCases("schema/repairs.txt")) {
    SCOPED_TRACE(step.place + ": " + step.head);
    const bool isNew = step.head.starts_with("== ");
    if (isNew) company.emplace(GetParam());
    if (isNew || step.head == "reopen") {
      EXPECT_EQ(company->upgrade(), std::vector<std::string>{});
    } else if (step.lines.empty()) {
      company->run(replaceAll(step.head, "{off}", isServer ? "0" : "false"));
    } else {
      EXPECT_EQ(company->rows(step.head), isServer ? step.lines.back() : step.lines.front());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Dialects, UpgradeRepair, ::testing::Values(SchemaDialect::kAccess, SchemaDialect::kServer),
                         [](const auto& dialect) { return dialectName(dialect.param); });

/// Which execution of an upgrade sends the command that starts so (before the first
/// procedure that executes anything); 1 is the first.
int executionOf(const std::string& start, SchemaDialect dialect) {
  int nth = 0;
  for (const UpgradeRow& row : upgradeRows()) {
    for (const std::string& command : upgradeCommands(row, dialect)) {
      ++nth;
      if (command.starts_with(start)) return nth;
    }
  }
  return -1;
}

class UpgradeFaults : public ::testing::TestWithParam<SchemaDialect> {};

TEST_P(UpgradeFaults, NumbersThatArePassedOverAndOthers) {
  // Nothing else in the script depends on this table.
  const int schedule = executionOf("create table Schedule", GetParam());
  struct Case {
    DatabaseCall call;
    int nth;
    std::int32_t number;
    bool ends;
  };
  // Each opening takes up the work that the one before left undone.
  const Case cases[] = {
      {DatabaseCall::kStore, 1, provider_number::kDataOverflow, true},
      {DatabaseCall::kOpen, 2, provider_number::kTypeMismatch, true},
      {DatabaseCall::kExecute, schedule, provider_number::kLoginFailed, true},
      {DatabaseCall::kExecute, schedule, provider_number::kSyntaxOrExists, false},
      {DatabaseCall::kExecute, schedule, provider_number::kErrorsOccurred, false},
      {DatabaseCall::kExecute, schedule, provider_number::kUnspecified, false},
      {DatabaseCall::kExecute, schedule, provider_number::kNoSuchTable, false},
      {DatabaseCall::kOpen, 1, provider_number::kNoSuchTable, false},
  };
  OldCompany company(GetParam());
  for (const Case& test : cases) {
    SCOPED_TRACE(test.number);
    company.faults().failAt(test.call, test.nth, test.number, "Failed.");
    EXPECT_EQ(company.upgrade(), test.ends ? std::vector<std::string>{"Failed."} : std::vector<std::string>{});
    if (test.ends) {
      EXPECT_THROW(company.rows("select * from RateMethodError"), ProviderError) << "the rest did not run";
    } else {
      EXPECT_EQ(company.rows("select * from RateMethodError"), "");
    }
  }
  EXPECT_THROW(company.run("create table Schedule (x int)"), ProviderError) << "made by the last openings";
  EXPECT_EQ(company.rows("select depcalperiod from parameter"), "D");
}

INSTANTIATE_TEST_SUITE_P(Dialects, UpgradeFaults, ::testing::Values(SchemaDialect::kAccess, SchemaDialect::kServer),
                         [](const auto& dialect) { return dialectName(dialect.param); });

}  // namespace
}  // namespace orva
