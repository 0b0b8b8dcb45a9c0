#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"
#include "imports/asset/posting/after_posting.h"
#include "imports/asset/posting/code_gaps.h"

namespace orva {
namespace {

std::string quoted(const char* text) { return text ? "'" + std::string(text) + "'" : "null"; }

/// Whatever a walk leaves out, a row is filled when the statement would fill it, and else no statement is run.
TEST(CleanUp, AnEntryTakesTheCodeOfItsAsset) {
  struct Case {
    const char* entry;
    const char* entryCode;
    const char* asset;
    const char* assetCode;
    const char* after;
    int statements;
  };
  const Case kCases[] = {
      {"A-1", nullptr, "A-1", "C", "C", 1},
      {"A-1", "", "A-1", "C", "C", 1},
      {"A-1", "X", "A-1", "C", "X", 0},
      {"A-1", nullptr, "A-1", nullptr, "~", 0},
      {"A-1", nullptr, "A-1", "", "", 1},
      {"A-1", "", "A-1", "", "", 0},
      {"A-1", "", "A-1", nullptr, "", 0},
      {"A-1", nullptr, "B-1", "C", "~", 0},
      {nullptr, nullptr, "A-1", "C", "~", 0},
      // Equal without regard to case, also of letters with an accent.
      {"pm\\pu1", nullptr, "PM\\PU1", "C", "C", 1},
      {"\xC3\xA9t\xC3\xA9", nullptr, "\xC3\x89T\xC3\x89", "C", "C", 1},
      // Not equal, but near enough to leave it to the database.
      {"A1", nullptr, "A-1", "C", "~", 1},
      {"A1 ", nullptr, "A1", "C", "~", 1},
      {"O''B", nullptr, "OB", "C", "~", 1},
      {"\xC3\xA9", nullptr, "E", "C", "~", 1},
      {"E", nullptr, "\xC3\xA9", "C", "~", 1},
  };
  AssetCompany company;
  for (const Case& one : kCases) {
    SCOPED_TRACE(testing::Message() << one.entry << ", " << quoted(one.entryCode) << " of " << one.asset << ", "
                                    << quoted(one.assetCode));
    company.prepare(
        {"delete from Fadep", "delete from Asset",
         "insert into Asset (Assetid, DefCode, ClassCode) values ('Other', 'PM', 'PM-01')",
         "insert into Asset (Assetid, SubClassCode) values (" + quoted(one.asset) + ", " + quoted(one.assetCode) + ")",
         "insert into Fadep (Assetid, DefCode, ClassCode, SubClassCode) values (" + quoted(one.entry) + ", 'D', 'C', " +
             quoted(one.entryCode) + ")"});
    const int before = company.adapter->plan().count(DatabaseCall::kExecute);
    cleanUpCodes(company.company);
    EXPECT_EQ(company.row("select iif(SubClassCode is null, '~', SubClassCode) as c from Fadep"), one.after);
    EXPECT_EQ(company.adapter->plan().count(DatabaseCall::kExecute) - before, one.statements);
  }
}

/// Each of many assets is told from all others, and has what its rows lack together.
TEST(CleanUp, RowsAreKnownByTheirAssets) {
  LackingRows rows;
  EXPECT_EQ(rows.lackedBy("A"), 0u);
  constexpr int kRows = 5000;
  const auto lacked = [](int i) { return lackedCode(static_cast<std::size_t>(i % 4), std::nullopt); };
  for (int i = 0; i < kRows; ++i) {
    rows.add("PM\\" + std::to_string(i), lacked(i));
    if (i % 3 == 0) rows.add("pm\\" + std::to_string(i), lackedCode(4, ""));
  }
  for (int i = 0; i < kRows; ++i) {
    const Codes more = i % 3 == 0 ? lackedCode(4, "") : 0;
    EXPECT_EQ(rows.lackedBy("PM\\" + std::to_string(i)), lacked(i) | more) << i;
    EXPECT_EQ(rows.lackedBy("PN\\" + std::to_string(i)), 0u) << i;
  }
  EXPECT_EQ(rows.lackedBy("\xC3\xA9"), rows.lacked()) << "may be any";
  rows.add("\xC3\xA9", lackedCode(1, ""));
  EXPECT_EQ(rows.lackedBy("none"), lackedCode(1, ""));
}

}  // namespace
}  // namespace orva
