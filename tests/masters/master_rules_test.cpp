#include "masters/master_rules.h"

#include <gtest/gtest.h>

#include "fakes/case_file.h"
#include "masters/master_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;
using Kind = MasterKindId;

TEST(MasterRules, FindWhatIsListedInBothDialects) {
  for (const SqlDialect dialect : kBothDialects) {
    MasterScreen master(dialect);
    for (const ListedCase& one : listedCases("masters/rules.txt")) {
      const Texts named = splitAt(one.head, ": ");
      Sheet2D sheet{splitAt(named.at(1), " | ")};
      Texts findings;
      for (const std::string& line : one.lines) {
        const std::size_t end = line.find(" =>");
        sheet.push_back(splitAt(line.substr(0, end), " | "));
        findings.push_back(line.substr(std::min(end + 4, line.size())));
      }
      EXPECT_EQ(master.findings(masterKindByBatchName(named[0]).value(), sheet), findings) << one.place;
    }
  }
}

TEST(MasterRules, ACodeBelongsToItsMiscellaneousMaster) {
  MasterScreen master;
  const Sheet2D sheet = {{"Code", "MName"}, {"0007", "Grant"}};
  EXPECT_EQ(master.findings(Kind::kMiscellaneous, sheet, "Funding"), Texts{""});
  EXPECT_EQ(master.findings(Kind::kMiscellaneous, sheet, "Project"), Texts{"E|Code| Duplicate Values Not Allowed "});
}

TEST(MasterRules, NamesWithQuotesAndOfAnyScriptAreLookedUpAsTheyStand) {
  for (const SqlDialect dialect : kBothDialects) {
    MasterScreen master(dialect);
    master.prepare({"insert into Dept (Deptcode, DeptName) values ('Ü1', 'Größe')",
                    "insert into Dept (Deptcode, DeptName) values ('H1', 'लेखा')"});
    EXPECT_EQ(master.findings(Kind::kDepartment, {{"DeptCode", "DeptName"},
                                                  {"ü1", "größe"},
                                                  {"X'1", "लेखा"},
                                                  {"x'1", "'; drop table Dept; --"},
                                                  {"{value}", "{DEPTCODE}"}}),
              (Texts{"E|DeptCode,DeptName| Duplicate Values Not Allowed  ,  Duplicate Values Not Allowed ",
                     "E|DeptName| Duplicate Values Not Allowed ", "E|DeptCode| Duplicate Values Not Allowed ", ""}));
    EXPECT_EQ(master.rows("select Deptcode from Dept").size(), 3u);
  }
}

TEST(MasterRules, PanPattern) {
  struct PanCase {
    const char* pan;
    bool isValid;
  };
  const PanCase kPans[] = {{"AAAPL1234C", true},  {" AAAPL1234C ", true}, {"AAATZ9999z", true},  {"AAADL1234C", false},
                           {"aaapl1234c", false}, {"AAAPL123C", false},   {"AAAPL12345", false}, {"AAAPL1234CD", false},
                           {"AA1PL1234C", false}, {"AAAPLO234C", false},  {"", false},           {"ÄAAPL1234C", false}};
  for (const PanCase& c : kPans) EXPECT_EQ(ValidPanPattern(c.pan), c.isValid) << c.pan;
}

}  // namespace
}  // namespace orva
