#include <fstream>
#include <sstream>

#include "app/batch_test.h"

namespace orva {
namespace {

using Transactions = BatchTest;

/// The demonstration workbooks of one kind: rows that the good one posts, errors in the other.
struct Kind {
  const char* name;
  int posted;
  int errors;
};

TEST_F(Transactions, DemonstrationWorkbooksOfEveryKind) {
  const std::string demo = ORVA_DEMO;
  ASSERT_EQ(import(demo + "/acquired-assets.xls").status, 0);
  std::ifstream script(demo + "/transactions/company.sql");
  std::stringstream statements;
  statements << script.rdbuf();
  ASSERT_EQ(run({"sql", "--company", "DEMO"}, statements.str()).status, 0);

  const Kind kinds[] = {{"udf", 2, 3},       {"cost-breakup", 3, 3}, {"dep-child", 2, 4},      {"amc", 2, 4},
                        {"insurance", 2, 3}, {"sale", 3, 5},         {"change-category", 2, 3}};
  for (const Kind& kind : kinds) {
    const std::string workbook = demo + "/transactions/" + kind.name;
    const auto imported = [&](const std::string& file) {
      return run({"import", "--company", "DEMO", "--kind", kind.name, file});
    };
    const Ran bad = imported(workbook + "-with-mistakes.xls");
    EXPECT_EQ(bad.status, 1) << kind.name << bad.err;
    EXPECT_NE(bad.out.find("Total Records with Errors : " + std::to_string(kind.errors) + "\n"), std::string::npos)
        << kind.name << bad.out;
    const Ran good = imported(workbook + ".xls");
    EXPECT_EQ(good.status, 0) << kind.name << good.err;
    EXPECT_NE(good.out.find("Rows posted : " + std::to_string(kind.posted) + "\n"), std::string::npos)
        << kind.name << good.out;
  }
  EXPECT_EQ(query("select sum(Amount) as Parts from CostBreakup where assetid = 'MH\\PM\\UT\\CM0006'"),
            "Parts\n768300\n");
}

}  // namespace
}  // namespace orva
