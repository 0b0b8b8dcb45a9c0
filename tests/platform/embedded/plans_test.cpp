#include <gtest/gtest.h>

#include "fakes/case_file.h"
#include "platform/embedded/company_file.h"
#include "platform/embedded/session.h"
#include "platform/values/text.h"

namespace orva::test {
namespace {

constexpr SqlDialect kAccess = SqlDialect::kAccess;

constexpr const char* kAssetTable =
    "Asset (Assetid %t(30), PAssetId %t(20), PhyID %t(50), AcquiredAs %t(15), accyear %t(9))";
constexpr const char* kOtherTables[] = {"Dept (Deptcode %t(10), DeptName %t(30))",
                                        "Location (MainLocation %t(30), SubLocation %t(30), Recordid %t(10))",
                                        "Fadep (Assetid %t(30), docdt %d, flag %t(3), facode %t(10))"};

std::string inDialect(std::string text, SqlDialect dialect) {
  text = replaceAll(text, "%t", dialect == kAccess ? "text" : "nvarchar");
  return replaceAll(text, "%d", dialect == kAccess ? "date" : "datetime");
}

void createTables(CompanyFile& company, SqlDialect dialect) {
  std::string asset = kAssetTable;
  asset.insert(asset.size() - 1, ", primary key (Assetid)");
  company->execute(inDialect("create table " + asset, dialect));
  for (const char* table : kOtherTables) company->execute(inDialect("create table " + std::string(table), dialect));
}

/// A look-up that walks through a table, or sorts its rows, grows with the table.
TEST(Plans, EveryLookUpIsOnAnIndex) {
  for (const Engine& engine : kEngines) {
    CompanyFile company(engine);
    createTables(company, engine.dialect);
    const std::string dialect = engine.dialect == kAccess ? "access: " : "server: ";
    for (const ListedCase& one : listedCases("statements/plans.txt")) {
      if (!one.head.starts_with(dialect)) continue;
      const std::string plan = dynamic_cast<embedded::Session&>(*company).plan(one.head.substr(dialect.size()));
      const std::string& wanted = engine.kind == CompanyFileKind::kAccess ? one.lines.back() : one.lines.front();
      EXPECT_NE(plan.find(wanted), std::string::npos) << one.place << "\n" << plan;
      EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << one.place << "\n" << plan;
    }
  }
}

/// Hidden indexes are no part of the layout and stand in no one's way.
TEST(Plans, HiddenIndexesStayHidden) {
  for (const Engine& engine : kAccessEngines) {
    CompanyFile company(engine);
    createTables(company, kAccess);
    EXPECT_EQ(company.rows("select * from dept where deptname = 'Stores'"), "");
    EXPECT_EQ(company.outcome("create index DeptName on Dept(DeptName)"), "0 rows");
    EXPECT_EQ(company.outcome("drop index auto1 on Dept"), "80040E14");
    EXPECT_EQ(company.rows("select * from dept where trim(deptname) = 'Stores'"), "");
    EXPECT_EQ(company.outcome("drop index DeptName on Dept"), "0 rows");
    EXPECT_EQ(company.outcome("alter table Dept alter column Deptname currency"), "0 rows");
    EXPECT_EQ(company.outcome("alter table Dept drop column Deptname"), "0 rows");
  }
}

}  // namespace
}  // namespace orva::test
