#include <fstream>
#include <sstream>

#include "app/batch_test.h"

namespace orva {
namespace {

struct Demonstration {
  const char* kind;
  const char* workbook;
  /// Rows in error of the workbook with mistakes; rows that the clean one posts.
  int mistakes = 0;
  int rows = 0;
  /// What the clean workbook leaves.
  const char* query = "";
  const char* result = "";
  std::vector<std::string> options = {};
};

class TransactionWorkbooks : public BatchTest {
 protected:
  TransactionWorkbooks() {
    std::ifstream script(std::string(ORVA_DEMO) + "/transactions/assets.sql");
    std::ostringstream text;
    text << script.rdbuf();
    EXPECT_EQ(run({"sql", "--company", "DEMO"}, text.str()).status, 0);
  }

  Ran importKind(const Demonstration& one, const std::string& suffix) const {
    std::vector<std::string> arguments{"import", "--company", "DEMO", "--kind", one.kind};
    arguments.insert(arguments.end(), one.options.begin(), one.options.end());
    arguments.push_back(std::string(ORVA_DEMO) + "/transactions/" + one.workbook + suffix + ".xls");
    return run(arguments);
  }
};

/// The demonstration as its text tells it: in this order on one company.
TEST_F(TransactionWorkbooks, EachKindRefusesMistakesAndPostsTheCleanSheet) {
  const std::vector<std::string> byId{"--mode", "modify-by-asset-id"};
  const Demonstration kDemonstrations[] = {
      {"sale", "sales", 10, 2, "select AssetId, SaleValue, Batch from AssetOut where SrNo > 'S-100'",
       "SPI-006\t18500\tA2\nSPI-008\t21000.5\t\n"},
      {"amc", "amc-details", 6, 2, "select AssetId, VendorCode, Amount from AMC where DocNo > 'AMC/1'",
       "SPI-001\t0001\t96000\nSPI-003\t0003\t3500.75\n"},
      {"insurance", "insurance-details", 4, 2,
       "select AssetId, InsuranceName, Amount from Insurance where InsuranceCode > 'INS/1'",
       "SPI-001\tFire and burglary\t18200\nSPI-002\t\t6450.5\n"},
      {"change-category", "change-of-category", 6, 2,
       "select Assetid, ClassCode, SubClassCode from Asset where Assetid in ('SPI-003', 'SPI-007') order by Assetid",
       "SPI-003\tCO-01\tCO-01-02\nSPI-007\tFF-02\t\n"},
      {"dep-child", "child-assets", 7, 3, "select AssetId, Cost from Addition where Acquiredas='Purchased'",
       "SPI-004-01\t35000\nSPI-001-01\t-20000\nSPI-002-01\t118000.5\n"},
      {"dep-child-fx", "child-assets", 7, 3, "select AssetId, Cost from Addition where Acquiredas='F'",
       "SPI-004-02\t35000\nSPI-001-02\t-20000\nSPI-002-02\t118000.5\n"},
      {"cost-breakup", "cost-breakup", 6, 5,
       "select assetid, sum(Amount) as Total from CostBreakup group by assetid order by assetid",
       "SPI-005\t1450000\nSPI-007\t95000\n", byId},
      {"udf", "user-defined-fields", 4, 2, "select Assetid, UDV1, UDV11 from UDValues order by Assetid",
       "SPI-001\tTC-2025-0417\t19/05/2025\nSPI-002\tKAS/37/1182\t\n"},
  };
  for (const Demonstration& one : kDemonstrations) {
    const std::string errors = "Total Records with Errors : " + std::to_string(one.mistakes) + "\n";
    const Ran refused = importKind(one, "-with-mistakes");
    EXPECT_EQ(refused.status, 1) << one.kind << refused.err;
    EXPECT_NE(refused.out.find(errors), std::string::npos) << one.kind << refused.out;
    EXPECT_EQ(refused.out.find("Rows posted"), std::string::npos) << one.kind;
    const Ran posted = importKind(one, "");
    EXPECT_EQ(posted.status, 0) << one.kind << posted.out << posted.err;
    EXPECT_NE(posted.out.find("Rows posted : " + std::to_string(one.rows) + "\nImported successfully\n"),
              std::string::npos)
        << one.kind << posted.out;
    const std::string lines = query(one.query);
    EXPECT_EQ(lines.substr(lines.find('\n') + 1), one.result) << one.kind;
  }
}

/// The catalogue of assets that are added names no identifier; the sheet does.
TEST_F(TransactionWorkbooks, ACostBreakupInAddModeReadsTheIdentifiersOfTheSheet) {
  EXPECT_NE(importKind({.kind = "cost-breakup", .workbook = "cost-breakup"}, "").out.find("Rows posted : 5\n"),
            std::string::npos);
  const std::string nameless = workbook("nameless.xls", {{"VCHRDATE", "BILLDATE", "AMOUNT", "COSTCATEGORY", "VENDOR"},
                                                         {"01/05/2025", "01/05/2025", "95000", "BASIC", ""}});
  const Ran ran =
      run({"import", "--company", "DEMO", "--kind", "cost-breakup", "--results", folder.file("results.txt"), nameless});
  EXPECT_EQ(ran.status, 1);
  EXPECT_NE(folder.read("results.txt").find("\tE\tASSETID\tAssetID should not be blank\n"), std::string::npos)
      << folder.read("results.txt");
}

}  // namespace
}  // namespace orva
