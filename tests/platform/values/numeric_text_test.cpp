#include "platform/values/numeric_text.h"

#include <gtest/gtest.h>

#include <string>

namespace orva {
namespace {

TEST(NumericText, OneCellUnderEveryTest) {
  struct Case {
    const char* text;
    bool isNumber;
    double value;
    bool overTwoDecimals;
    const char* twoDecimals;
  };
  const Case kCases[] = {
      {"", false, 0, false, ""},
      {"  ", false, 0, false, "  "},
      {"abc", false, 0, false, "abc"},
      {"12ab", false, 12, false, "12ab"},
      {"12", true, 12, false, "12.00"},
      {" 12 ", true, 12, false, "12.00"},
      {"-3.5", true, -3.5, false, "-3.50"},
      {"+4", true, 4, false, "4.00"},
      {"12.345", true, 12.345, true, "12.35"},
      {"12.344999", true, 12.344999, true, "12.34"},
      {"1.005", true, 1.005, true, "1.01"},
      {"-1.005", true, -1.005, true, "-1.01"},
      {"999.995", true, 999.995, true, "1000.00"},
      {"0.5", true, 0.5, false, ".50"},
      {"000.5", true, 0.5, false, ".50"},
      {"0", true, 0, false, ".00"},
      {"-0.001", true, -0.001, true, ".00"},
      {"12.", true, 12, false, "12.00"},
      {".5", true, 0.5, false, ".50"},
      {".", false, 0, false, "."},
      {"-", false, 0, false, "-"},
      {"1e3", true, 1000, false, "1e3"},
      {"1e", false, 1, false, "1e"},
      {"1,000", false, 1, false, "1,000"},
      {"1.2.3", false, 1.2, true, "1.2.3"},
      {"0x10", false, 0, false, "0x10"},
      {"inf", false, 0, false, "inf"},
      {"nan", false, 0, false, "nan"},
      {"123456789012345678", true, 123456789012345678.0, false, "123456789012345678.00"},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(isNumeric(c.text), c.isNumber) << '"' << c.text << '"';
    EXPECT_DOUBLE_EQ(val(c.text), c.value) << '"' << c.text << '"';
    EXPECT_EQ(hasMoreThanTwoDecimals(c.text), c.overTwoDecimals) << '"' << c.text << '"';
    EXPECT_EQ(formatTwoDecimals(c.text), c.twoDecimals) << '"' << c.text << '"';
  }
}

TEST(NumericText, DecimalPartCountsOnlyWhenItIsWorthSomething) {
  EXPECT_FALSE(hasDecimalPart("12"));
  EXPECT_FALSE(hasDecimalPart("12.00"));
  EXPECT_TRUE(hasDecimalPart("12.01"));
  EXPECT_TRUE(hasDecimalPart(".5"));
  EXPECT_FALSE(hasDecimalPart(""));
}

TEST(NumericText, PaddingNeverCuts) {
  EXPECT_EQ(zeroPadded(7, 4), "0007");
  EXPECT_EQ(zeroPadded(12345, 4), "12345");
  EXPECT_EQ(zeroPadded(0, 2), "00");
  EXPECT_EQ(zeroPadded(-7, 3), "-007");
}

}  // namespace
}  // namespace orva
