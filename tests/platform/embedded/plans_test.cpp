#include <gtest/gtest.h>

#include "platform/embedded/company_file.h"
#include "platform/embedded/session.h"

namespace orva::test {
namespace {

struct PlanCase {
  SqlDialect dialect;
  const char* query;
  const char* access;                  ///< what the plan must say: the way to the rows
  const char* inAccessFile = nullptr;  ///< where it says something else there
};

constexpr SqlDialect kAccess = SqlDialect::kAccess;
constexpr SqlDialect kOnServer = SqlDialect::kSqlServer;

constexpr const char* kAssetTable =
    "Asset (Assetid %t(30), PAssetId %t(20), PhyID %t(50), AcquiredAs %t(15), accyear %t(9))";
constexpr const char* kOtherTables[] = {"Dept (Deptcode %t(10), DeptName %t(30))",
                                        "Location (MainLocation %t(30), SubLocation %t(30), Recordid %t(10))",
                                        "Fadep (Assetid %t(30), docdt %d, flag %t(3), facode %t(10))"};

std::string inDialect(std::string text, SqlDialect dialect) {
  const auto replace = [&text](const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from)) != std::string::npos;) text.replace(at, from.size(), to);
  };
  replace("%t", dialect == kAccess ? "text" : "nvarchar");
  replace("%d", dialect == kAccess ? "date" : "datetime");
  return text;
}

void createTables(CompanyFile& company, SqlDialect dialect) {
  std::string asset = kAssetTable;
  asset.insert(asset.size() - 1, ", primary key (Assetid)");
  company->execute(inDialect("create table " + asset, dialect));
  for (const char* table : kOtherTables) company->execute(inDialect("create table " + std::string(table), dialect));
}

/// A look-up that walks through a table, or sorts its rows, grows with the table.
TEST(Plans, EveryLookUpIsOnAnIndex) {
  const PlanCase kCases[] = {
      {kAccess, "Select * from Asset where assetid ='A1'", "(Assetid=?)"},
      {kAccess, "Select * from Asset where phyid ='A1' and acquiredas<>'O'", "(PhyID=?)",
       "(PhyID=? AND AcquiredAs<>?)"},
      {kAccess, "Select * from Dept where Ucase(deptname) ='STORES'", "(DeptName=?)"},
      {kOnServer, "Select * from Dept where Upper(deptname) ='STORES'", "(DeptName=?)"},
      {kAccess, "select * from dept where trim(deptname) = 'Stores'", "(<expr>=?)"},
      {kOnServer, "select * from dept where ltrim(rtrim(deptname)) = 'Stores'", "(<expr>=?)"},
      {kAccess, "select * from dept where trim(ucase(deptname)) = 'Stores'", "(<expr>=?)"},
      {kAccess, "select * from Location where Ucase(MainLocation) ='A' and Ucase(SubLocation) ='B'",
       "(MainLocation=? AND SubLocation=?)"},
      {kAccess,
       "Select assetid from asset where Mid (  asset.assetid  , 1, len('AB')) = 'AB' and "
       "len(asset.assetid)=len('AB') + 4  and val(Mid ( asset.assetid, 1 +  len('AB') , 4 )) > 0 and PAssetId is Null "
       "order by assetid desc",
       "(<expr>=? AND Assetid>? AND Assetid<?)"},
      {kAccess,
       "Select assetid from asset where Mid (  asset.assetid  , 1, len('')) = '' and len(asset.assetid)=len('') + 5  "
       "and val(Mid ( asset.assetid, 1 +  len('') , 5 )) > 0 and PAssetId is Null order by assetid desc",
       "(<expr>=?)"},
      {kAccess,
       "Select max(val(assetid)) as assetid from asset where  mid( asset.assetid, 1, len('')) = '' and "
       "val(mid( asset.assetid, 1 +  len('') , 4 )) > 0 and PAssetId is Null ",
       "USING INDEX auto1:Asset:orva_val"},
      {kOnServer,
       "Select assetid from asset where substring ( asset.assetid  , 1, len('AB')) = 'AB' and "
       "isnumeric(substring( asset.assetid, 1 +  len('AB') , 4 )) = 1 and PAssetId is Null order by assetid desc",
       "(Assetid>? AND Assetid<?)"},
      {kOnServer,
       "Select assetid from asset where substring ( asset.assetid  , 1, len('AB')) = 'AB' and "
       "len(asset.assetid)=len('AB') + 5  and convert(int, right ( asset.assetid, 5 )) > 0 and PAssetId is Null order "
       "by assetid desc",
       "(<expr>=? AND Assetid>? AND Assetid<?)"},
      {kAccess, "select assetid from asset where left(assetid, 2) = 'AB' order by assetid desc",
       "(Assetid>? AND Assetid<?)"},
      {kAccess, "Select * from dept  where isnumeric(Deptcode)=true order by val(Deptcode) desc",
       "USING INDEX auto1:Dept:orva_val"},
      {kOnServer, "Select * from dept  where isnumeric(Deptcode)=1 order by convert(integer,Deptcode) desc",
       "USING INDEX auto1:Dept:"},
      {kAccess, "select recordid from location order by recordid desc", "Recordid"},
      {kAccess, "Select * from Fadep where docdt > #01/01/2020# and ( flag <> 'O' or flag is null)", "(docdt>?)"},
      // Rows with the flag are in no way: the index has none of them.
      {kAccess, "Select accyear from asset where accyear='2020'  and Acquiredas<>'O'", "WHERE \"AcquiredAs\" <> 'O'",
       "(accyear=? AND AcquiredAs<>?)"},
      {kOnServer, "Select * from asset where accyear='2020'  and Acquiredas<>'O'", "WHERE \"AcquiredAs\" <> 'O'"},
      {kAccess, "Select * from asset where accyear='2020'  and Acquiredas<>'Purchased'", "(accyear=?)",
       "(accyear=? AND AcquiredAs<>?)"},
      {kAccess, "Select * from Asset where Assetid='A' and AcquiredAs <> 'O'", "(Assetid=?)"},
      {kAccess, "select docdt from fadep where assetid='A1' order by docdt", "(Assetid=?)"},
      {kAccess,
       "Select max(docdt) as docdt from fadep where ((flag <> 'S' and flag <>'O' or flag is Null) and facode = 'F1')",
       "(facode=?)"},
      {kAccess, "Select (Max(DocDt)+1) as Docdate from Fadep where flag is Null group by assetId having AssetId ='A1'",
       "(Assetid=?)"},
      {kAccess, "select assetid from asset where Ucase(PAssetId) ='A1' order by assetid desc", "(PAssetId=?)"},
  };
  for (const Engine& engine : kEngines) {
    CompanyFile company(engine);
    createTables(company, engine.dialect);
    for (const PlanCase& c : kCases) {
      if (c.dialect != engine.dialect) continue;
      const std::string plan = dynamic_cast<embedded::Session&>(*company).plan(c.query);
      const bool isAccessFile = engine.kind == CompanyFileKind::kAccess;
      const char* const wanted = isAccessFile && c.inAccessFile ? c.inAccessFile : c.access;
      EXPECT_NE(plan.find(wanted), std::string::npos) << c.query << "\n" << plan;
      EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << c.query << "\n" << plan;
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
