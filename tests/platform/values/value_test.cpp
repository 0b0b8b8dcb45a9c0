#include "platform/values/value.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace orva {
namespace {

const Date kDay = *Date::fromParts(2026, 11, 5);

TEST(Value, TextForPeople) {
  struct Case {
    Value value;
    const char* text;
  };
  const Case kCases[] = {
      {Value(), ""},
      {true, "True"},
      {false, "False"},
      {-12, "-12"},
      {0.0, "0"},
      {-0.0, "0"},
      {0.1, "0.1"},
      {0.1 + 0.2, "0.3"},
      {1234567.89, "1234567.89"},
      {100.0, "100"},
      {-1.5, "-1.5"},
      {123456789012345.0, "123456789012345"},
      {0.00012, "0.00012"},
      {Currency::fromUnits(125000), "12.5"},
      {kDay, "05/11/2026"},
      {"O'Neil", "O'Neil"},
      {Value(""), ""},
  };
  for (const Case& c : kCases) EXPECT_EQ(nullToText(c.value), c.text);
}

TEST(Value, ConvertsWhatIsANumberOrADate) {
  struct Case {
    Value value;
    std::optional<std::int64_t> integer;
    std::optional<Currency> money;
  };
  const Case kCases[] = {
      {Value(), std::nullopt, std::nullopt},
      {"", std::nullopt, std::nullopt},
      {"abc", std::nullopt, std::nullopt},
      {" 12.75 ", 12, Currency::fromUnits(127500)},
      {"-0.5", 0, Currency::fromUnits(-5000)},
      {"1e2", 100, Currency::fromWhole(100)},
      {"1e300", std::nullopt, Currency::fromDouble(1e300)},
      {1e300, std::nullopt, Currency::fromDouble(1e300)},
      {std::int64_t{9'000'000'000'000'000}, 9'000'000'000'000'000, std::nullopt},
      {Currency::fromUnits(-19999), -1, Currency::fromUnits(-19999)},
      {true, 1, Currency::fromWhole(1)},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(c.value.toInteger(), c.integer) << c.value.toText();
    EXPECT_EQ(c.value.toCurrency(), c.money) << c.value.toText();
  }
}

TEST(Value, DatesComeFromDatesDayNumbersAndText) {
  EXPECT_EQ(Value(kDay).toDate(), kDay);
  EXPECT_EQ(Value(std::int64_t{kDay.dayNumber()}).toDate(), kDay);
  EXPECT_EQ(Value(kDay.dayNumber() + 0.75).toDate(), kDay);
  EXPECT_EQ(Value("5/11/2026").toDate(), kDay);
  EXPECT_EQ(Value("11/31/2026").toDate(), std::nullopt);
  EXPECT_EQ(Value(true).toDate(), std::nullopt);
  EXPECT_EQ(Value(std::int64_t{2'958'466}).toDate(), std::nullopt);
  EXPECT_EQ(Value().toDate(), std::nullopt);
}

TEST(Value, TruthOfEachType) {
  struct Case {
    Value value;
    bool truth;
  };
  const Case kCases[] = {{Value(), false}, {true, true},   {0, false},       {-1, true},
                         {0.5, true},      {"TRUE", true}, {" true ", true}, {"False", false},
                         {"0", false},     {"-1", true},   {"yes", false},   {Currency::fromUnits(1), true}};
  for (const Case& c : kCases) EXPECT_EQ(c.value.toBoolean(), c.truth) << c.value.toText();
}

}  // namespace
}  // namespace orva
