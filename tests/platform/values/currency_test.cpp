#include "platform/values/currency.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

namespace orva {
namespace {

TEST(Currency, ReadsTextExactly) {
  struct Case {
    const char* text;
    std::optional<std::int64_t> units;
  };
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  const Case kCases[] = {
      {"0", 0},
      {" 12.34 ", 123400},
      {"-7", -70000},
      {"+.5", 5000},
      {"12.", 120000},
      {"0.0001", 1},
      // Rounding happens at the fifth decimal, half to even.
      {"1.00005", 10000},
      {"1.00015", 10002},
      {"1.000050001", 10001},
      {"-1.00015", -10002},
      {"0.99995", 10000},
      {"922337203685477.5807", kMax},
      {"-922337203685477.5807", -kMax},
      {"922337203685477.5808", std::nullopt},
      {"922337203685477.58075", std::nullopt},
      {"99999999999999999999", std::nullopt},
      {"", std::nullopt},
      {"-", std::nullopt},
      {".", std::nullopt},
      {"1,000", std::nullopt},
      {"12 34", std::nullopt},
      {"1.2.3", std::nullopt},
      {"1e3", std::nullopt},
      {"--1", std::nullopt},
  };
  for (const Case& c : kCases) {
    const auto money = Currency::parse(c.text);
    EXPECT_EQ(money ? std::optional(money->units()) : std::nullopt, c.units) << '"' << c.text << '"';
  }
}

TEST(Currency, WritesWithoutTrailingZeros) {
  struct Case {
    std::int64_t units;
    const char* text;
  };
  const Case kCases[] = {
      {0, "0"},          {1, "0.0001"},
      {-1, "-0.0001"},   {-5000, "-0.5"},
      {123400, "12.34"}, {1000000, "100"},
      {10200, "1.02"},   {std::numeric_limits<std::int64_t>::min(), "-922337203685477.5808"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Currency::fromUnits(c.units).toText(), c.text);
}

TEST(Currency, FromDoubleRoundsAndSaturates) {
  EXPECT_EQ(Currency::fromDouble(0.1).units(), 1000);
  EXPECT_EQ(Currency::fromDouble(-2.00005).units(), -20000);
  EXPECT_EQ(Currency::fromDouble(1e300).units(), std::numeric_limits<std::int64_t>::max());
  EXPECT_LT(Currency::fromDouble(-1e300).units(), -9223372036854775000);
  EXPECT_EQ(Currency::fromDouble(std::numeric_limits<double>::quiet_NaN()).units(), 0);
}

TEST(Currency, AddsWithoutDrift) {
  Currency sum;
  for (int i = 0; i < 1000; ++i) sum += *Currency::parse("0.1");
  EXPECT_EQ(sum, Currency::fromWhole(100));
}

}  // namespace
}  // namespace orva
