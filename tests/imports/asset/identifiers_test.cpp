#include "imports/asset/identifiers.h"

#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"
#include "platform/values/text.h"

namespace orva {
namespace {

/// Identifiers in the company, and the one that follows for a prefix.
struct Case {
  const char* prefix;
  int digits;
  std::vector<std::string> existing;
  const char* access;
  const char* server;
};

const Case kCases[] = {
    {"AB\\PM", 4, {}, "AB\\PM0001", "AB\\PM0001"},
    {"AB\\PM", 4, {"AB\\PM0007", "AB\\PM0012"}, "AB\\PM0013", "AB\\PM0013"},
    {"AB\\PM", 4, {"ab\\pm0007"}, "AB\\PM0008", "AB\\PM0008"},
    // A longer identifier competes on the server only, where no condition is on the length.
    {"AB\\PM", 4, {"AB\\PM0007", "AB\\PM00012X"}, "AB\\PM0008", "AB\\PM0008"},
    {"AB\\PM", 4, {"AB\\PM0007", "AB\\PM01200"}, "AB\\PM0008", "AB\\PM1201"},
    {"AB\\PM", 4, {"AB\\PMX007", "AB\\P0009", "AB\\PN0009"}, "AB\\PM0001", "AB\\PM0001"},
    {"AB\\PM", 4, {"AB\\PM9998"}, "AB\\PM9999", "AB\\PM9999"},
    {"O'N", 4, {"O'N0001"}, "O'N0002", "O'N0002"},
    {"", 4, {"0099", "0003"}, "0100", "0100"},
    {"AB\\PM", 5, {}, "AB\\PM00001", "AB\\PM00001"},
    {"AB\\PM", 5, {"AB\\PM00099", "AB\\PM0500"}, "AB\\PM00100", "AB\\PM00100"},
    {"", 5, {"00099"}, "00100", "00100"},
};

TEST(NextAssetIdentifier, FollowsTheHighestOfItsPrefix) {
  for (const SqlDialect dialect : {SqlDialect::kAccess, SqlDialect::kSqlServer}) {
    AssetCompany company(dialect);
    for (const Case& one : kCases) {
      std::vector<std::string> books{"delete from Asset"};
      for (const std::string& identifier : one.existing) {
        books.push_back("insert into Asset (Assetid) values (" + sqlQuote(identifier) + ")");
      }
      company.prepare(books);
      EXPECT_EQ(nextAssetIdentifier(company.run(), one.prefix, one.digits),
                dialect == SqlDialect::kAccess ? one.access : one.server)
          << one.prefix << " " << one.digits;
    }
  }
}

TEST(NextAssetIdentifier, ChildrenDoNotCount) {
  AssetCompany company;
  company.prepare({"insert into Asset (Assetid) values ('PM0001')",
                   "insert into Asset (Assetid, PAssetId) values ('PM0009', 'PM0001')"});
  EXPECT_EQ(nextAssetIdentifier(company.run(), "PM", 4), "PM0002");
}

TEST(CategoryPrefix, SkipsWhatIsEmpty) {
  AssetCategory category;
  category.level(CategoryDepth::kOne).prefix = "PM";
  category.level(CategoryDepth::kThree).prefix = "CE";
  EXPECT_EQ(categoryPrefix({.regionCode = "MH"}, category), "MH\\PM\\CE");
  EXPECT_EQ(categoryPrefix({}, category), "PM\\CE");
  EXPECT_EQ(categoryPrefix({}, AssetCategory()), "");
}

TEST(Numbering, FiveDigitsUnlessFour) {
  AssetCompany company;
  for (const auto& [setting, digits] :
       {std::pair("4", 4), std::pair("5", 5), std::pair("null", 5), std::pair("4.4", 5)}) {
    company.prepare({std::string("update parameter set digits=") + setting});
    EXPECT_EQ(readNumbering(company.run()).digits, digits) << setting;
  }
  company.prepare({"delete from parameter"});
  EXPECT_EQ(readNumbering(company.run()).regionCode, "");
}

TEST(LevelCodes, FollowTheHighestInTextOrder) {
  AssetCompany company;
  EXPECT_EQ(nextClassificationCode(company.run(), "PM"), "PM-03");
  EXPECT_EQ(nextClassificationCode(company.run(), "NEW"), "NEW-01");
  EXPECT_EQ(nextSubclassCode(company.run(), "PM", "PM-01"), "PM-01-02");
  EXPECT_EQ(nextSubclassCode(company.run(), "PM", "PM-02"), "PM-02-01");
  company.prepare({"insert into Classification (DefCode, ClassCode) values ('PM', 'PM-99')"});
  EXPECT_EQ(nextClassificationCode(company.run(), "PM"), "PM-100");
}

TEST(CategoryCodes, TheMostDetailedLevelWinsBookByBook) {
  AssetCompany company;
  const ImportRun run = company.run();
  AssetCategory category;
  category.level(CategoryDepth::kOne) = findLevel(run, category, CategoryDepth::kOne, "plant AND machinery");
  category.level(CategoryDepth::kTwo) = readLevel(run, category, CategoryDepth::kTwo, "PM-01");
  category.level(CategoryDepth::kThree) = findLevel(run, category, CategoryDepth::kThree, "Centrifugal");
  const BookCodes codes = category.bookCodes();
  EXPECT_EQ(codes.books + codes.additional1 + codes.additional2 + codes.incomeTax, "F2A1B1T1");
  EXPECT_EQ(depreciationRate(run, category, "2005-06")->method, "WDV");
  category.level(CategoryDepth::kThree) = {};
  EXPECT_EQ(depreciationRate(run, category, "2005-06")->method, "SLM");
  EXPECT_FALSE(depreciationRate(run, category, "1999-00"));
}

}  // namespace
}  // namespace orva
