#include "platform/values/text.h"

#include <gtest/gtest.h>

#include <string>

namespace orva {
namespace {

TEST(Text, FoldsCaseAcrossScripts) {
  struct Case {
    const char* lower;
    const char* upper;
  };
  const Case kCases[] = {
      {"o'neil 9", "O'NEIL 9"}, {"straße", "STRAßE"},       {"élan ÿ", "ÉLAN Ÿ"}, {"ąćęł ž", "ĄĆĘŁ Ž"},
      {"αβγ ώ", "ΑΒΓ Ώ"},       {"привет ёж", "ПРИВЕТ ЁЖ"}, {"मुंबई", "मुंबई"},       {"÷×", "÷×"},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(toUpper(c.lower), c.upper);
    EXPECT_EQ(toLower(c.upper), toLower(c.lower));
    EXPECT_TRUE(equalsNoCase(c.lower, c.upper)) << c.lower;
  }
}

TEST(Text, InvalidBytesSurviveAndEqualNothingElse) {
  const std::string broken = "a\xFF\xC3(\xE2\x82";
  EXPECT_EQ(toUpper(broken), "A\xFF\xC3(\xE2\x82");
  EXPECT_EQ(characterCount(broken), 6U);
  EXPECT_TRUE(equalsNoCase(broken, broken));
  EXPECT_FALSE(equalsNoCase("\xFF", "ÿ"));
  EXPECT_FALSE(equalsNoCase("\xC0\xAF", "/"));
}

TEST(Text, OrderIsWithoutCaseAndShorterFirst) {
  EXPECT_TRUE(compareNoCase("abc", "ABD") < 0);
  EXPECT_TRUE(compareNoCase("ABC", "ab") > 0);
  EXPECT_TRUE(compareNoCase("", "a") < 0);
  EXPECT_TRUE(compareNoCase("zebra", "Ärger") < 0);
  EXPECT_TRUE(compareNoCase("_", "a") > 0) << "an underscore stands after the capitals";
}

TEST(Text, SizesCountCharacters) {
  EXPECT_EQ(characterCount("naïve"), 5U);
  EXPECT_EQ(characterCount("मुंबई"), 5U);
  EXPECT_EQ(characterCount("😀"), 1U);
}

TEST(Text, TrimsBlanksOnlyOrAllSpace) {
  EXPECT_EQ(trim("  a b \t"), "a b \t");
  EXPECT_EQ(trimSpace(" \t a b \r\n"), "a b");
  EXPECT_EQ(trim("   "), "");
  EXPECT_TRUE(endsWithNoCase("REGISTER.XLS", "xls"));
  EXPECT_FALSE(endsWithNoCase("ls", "xls"));
}

TEST(Text, NoValueEndsALiteral) {
  EXPECT_EQ(sqlQuote("O'Neil"), "'O''Neil'");
  EXPECT_EQ(sqlQuote("'; drop table Asset --"), "'''; drop table Asset --'");
  EXPECT_EQ(sqlEscape("''"), "''''");
  EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
}

}  // namespace
}  // namespace orva
