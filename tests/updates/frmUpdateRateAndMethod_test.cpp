#include "updates/frmUpdateRateAndMethod.h"

#include <gtest/gtest.h>

#include "updates/update_screen.h"

namespace orva {
namespace {

using Rates = UpdateScreen<frmUpdateRateAndMethod>;

constexpr const char* kErrors =
    "select AssetId, OVERRIDERATE, OVERRIDEMETHOD, ErrorCode, ErrorDesc from RateMethodError";
constexpr const char* kAssets = "select Assetid, FlgOverride, OverrideRate, OverrideMthd from Asset order by Assetid";

Rows sheet(const Rows& rows) {
  Rows all{{"OVERRIDEMETHOD", "Remarks", "assetid", "OverrideRate"}};
  for (const Texts& row : rows) all.push_back({row[2], "", row[0], row[1]});
  return all;
}

struct Case {
  /// Asset, rate, method.
  Texts row;
  std::string recorded;
  int errors;
};

const Case kCases[] = {
    {{"A1", "12.5", "wdv"}, "A1|12.5|wdv||", 0},
    {{"A1", "0", "SLM"}, "A1|0|SLM||", 0},
    {{"A1", "100", "Slm"}, "A1|100|Slm||", 0},
    {{"A1", "12.34", "SLM"}, "A1|12.34|SLM||", 0},
    {{"A1", "", "SLM"}, "A1||SLM||", 0},
    {{"A1", "12.00004", "SLM"}, "A1|12|SLM||", 0},
    {{"A1", "12.345", "SLM"}, "A1|12.345|SLM|E|OVERRIDERATE Should consist 2 digit decimals.", 1},
    {{"A1", "12.3456", "SLM"}, "A1|12.3456|SLM|E|OVERRIDERATE Should consist 2 digit decimals.", 1},
    {{"A1", "12.00996", "SLM"}, "A1|12.01|SLM||", 0},
    {{"A1", "-0.01", "SLM"}, "A1|-0.01|SLM|E|OVERRIDERATE Should be between 0 and 100", 1},
    {{"A1", "100.01", "SLM"}, "A1|100.01|SLM|E|OVERRIDERATE Should be between 0 and 100", 1},
    {{"A1", "-1", "DB"}, "A1|-1|DB|E|OVERRIDEMETHOD Should be SLM Or WDV", 2},
    {{"A1", "-1.2345", "DB"}, "A1|-1.2345|DB|E|OVERRIDEMETHOD Should be SLM Or WDV", 3},
    {{"A1", "5", ""}, "A1|5||E|OVERRIDEMETHOD Should be SLM Or WDV", 1},
    {{"A1", "5", "Straight Line"}, "A1|5||E|OVERRIDEMETHOD Should be SLM Or WDV", 1},
    {{"A1", "1e20", "SLM"}, "A1||SLM|E|The number 1e20 is too large for the field 'OVERRIDERATE'.", 1},
    {{"A1", "-999999999999999999", "DB"}, "A1||DB|E|OVERRIDEMETHOD Should be SLM Or WDV", 2},
    {{"A1", "#N/A", "SLM"}, "A1||SLM|E|'#N/A' is no value for the field 'OVERRIDERATE'.", 1},
    {{"A1", "ten", "SLM"}, "A1||SLM|E|'ten' is no value for the field 'OVERRIDERATE'.", 1},
    {{"A9", "-1", "DB"}, "A9|-1|DB|E|Asset Id : A9 does not exist in ORVA.", 1},
};

TEST(RateAndMethod, EachFailingCheckCountsAndTheLastOneShows) {
  for (const SqlDialect dialect : kBothDialects) {
    Rates update(dialect);
    for (const Case& c : kCases) {
      update.run(sheet({c.row}));
      EXPECT_EQ(update.rows(kErrors), Texts{c.recorded});
      EXPECT_EQ(update.screen.errorCount(), c.errors) << c.recorded;
    }
  }
}

TEST(RateAndMethod, WhatTheProviderCannotHoldIsNoBlank) {
  struct Refusal {
    const char* field;
    std::int32_t number;
    std::string recorded;
  };
  const Refusal kRefusals[] = {
      {"OVERRIDERATE", provider_number::kDataOverflow, "A1||SLM|E|It does not fit."},
      {"OVERRIDERATE", provider_number::kTypeMismatch, "A1||SLM|E|It does not fit."},
      {"OVERRIDEMETHOD", provider_number::kDataOverflow, "A1|5||E|OVERRIDEMETHOD Should be SLM Or WDV"},
  };
  for (const Refusal& refusal : kRefusals) {
    Rates update;
    update.adapter->plan().refuseField(refusal.field, refusal.number, "It does not fit.");
    update.run(sheet({{"A1", "5", "SLM"}}));
    EXPECT_EQ(update.rows(kErrors), Texts{refusal.recorded});
    EXPECT_EQ(update.screen.errorCount(), 1) << refusal.field;
    EXPECT_EQ(update.rows(kAssets)[0], "A1|||");
  }
}

TEST(RateAndMethod, IsStoredAsTypedWhenEveryRowIsGood) {
  for (const SqlDialect dialect : kBothDialects) {
    Rates update(dialect);
    update.run(sheet({{"O'Neil", "12.5", "wdv"}, {"A1", "5", "SLM"}, {"A2", "5", "NONE"}}));
    EXPECT_EQ(update.rows(kAssets), (Texts{"A1|||", "A2|||", "O'Neil|||"}));
    EXPECT_EQ(update.errorFile().at(0), "AssetId\tOVERRIDERATE\tOVERRIDEMETHOD\tErrorCode\tErrorDesc");
    EXPECT_EQ(update.errorFile().at(1), "O'Neil\t12.5\twdv\t\t");

    update.run(sheet({{"O'Neil", "12.5", "wdv"}, {"A1", "5", "SLM"}}));
    EXPECT_EQ(update.rows(kAssets), (Texts{"A1|Y|5|SLM", "A2|||", "O'Neil|Y|12.5|wdv"}));
    EXPECT_EQ(update.fakes.dialogs.lastText(), "2 - Records has been successfully Updated. ");
  }
}

}  // namespace
}  // namespace orva
