#include <gtest/gtest.h>

#include "platform/embedded/company_file.h"

namespace orva::test {
namespace {

struct Case {
  const char* statement;
  const char* outcome;
};

/// Assets, depreciation and masters as the queries of the program meet them.
constexpr const char* kTables =
    "create table Asset (Assetid text(30), PAssetId text(20), PhyID text(50), AcquiredAs text(15), defcode text(10),"
    " classcode text(30), usedby text(50), [Desc] memo, Cost currency, Qty number, docdt date, UseDate date,"
    " LeaseDate date, FaAge number, facode1 text(10), constraint pk primary key (Assetid));"
    "create table Fadep (Assetid text(30), docdt date, Method text(3), defcode text(10), facode text(10),"
    " flag text(3), reclass text(1));"
    "create table Users (Usedby text(50), Username text(50));"
    "create table accyear (accyear text(9), accopdt date, acccldt date, closed yesno);"
    "create table shift (docno text(10), assetid text(30), DocDt date, tfrout yesno, sameloc yesno);"
    "create table Dept (Deptcode text(10), DeptName text(30));"
    "create table FADefinition (DefCode text(10), Description text(50), FACode text(10));"
    "create table Classification (DefCode text(10), ClassCode text(30), ClassDesc text(50));"
    "create table SubClass (DefCode text(10), ClassCode text(30), SubClassCode text(30), subClassDesc text(50));"
    "create table Addition (Assetid text(30), PAssetId text(30), Cost currency);"
    "create table TmpAstCostBrkup (AssetId text(30), Cost currency, Amount currency, Status text(1) default 'N');"
    "insert into Asset (Assetid, AcquiredAs, defcode, usedby, Cost, Qty, docdt, UseDate) values"
    " ('AB\\PM0007', 'Purchased', 'D1', 'Ravi', 12.34, 1, #05/31/2020#, '05/31/2020');"
    "insert into Asset (Assetid, AcquiredAs, defcode, usedby, Cost, Qty, docdt) values"
    " ('AB\\PM0012', 'Purchased', 'D1', 'O''Neil', 1000000.05, 2.5, #2021/01/15#);"
    "insert into Asset (Assetid, PAssetId, AcquiredAs, Cost) values ('AB\\PM0012X', 'P', 'O', 0.0001);"
    "insert into Asset (Assetid, PhyID, Cost) values ('0042', 'Tag 1', -5);"
    "insert into Fadep values ('AB\\PM0007', #03/31/2020#, 'SLM', 'D1', 'F1', null, null);"
    "insert into Fadep values ('AB\\PM0007', #03/31/2021#, 'WDV', 'D1', 'F1', 'S', null);"
    "insert into Fadep values ('AB\\PM0012', #03/31/2019#, 'SLM', 'D2', 'F2', 'O', 'Y');"
    "insert into Users values ('0001', 'RAVI'); insert into Users values ('0002', 'o''neil');"
    "insert into accyear values ('2019-2020', #04/01/2019#, #03/31/2020#, true);"
    "insert into accyear values ('2020-2021', #04/01/2020#, #03/31/2021#, false);"
    "insert into shift values ('0001', 'AB\\PM0007', #06/01/2020#, true, false);"
    "insert into Dept values ('0009', 'Stores'); insert into Dept values ('NONE', 'None');"
    "insert into Dept values ('0010', 'R & D'); insert into FADefinition values ('D1', 'Machines', 'F1');"
    "insert into Classification values ('D1', 'D1-01', 'Lathes');"
    "insert into SubClass values ('D1', 'D1-01', 'D1-01-01', 'Small lathes');"
    "insert into Addition values ('A1-07', 'A1', 5); insert into Addition values ('A1-12', 'a1', 6.5)";

std::string onServer(std::string text) {
  const std::pair<const char*, const char*> kNames[] = {
      {" text(", " nvarchar("}, {" memo", " ntext"},      {" currency", " money"}, {" yesno", " bit"},
      {" date,", " datetime,"}, {" date)", " datetime)"}, {" number", " float"},   {"#", "'"},
      {", true", ", 1"},        {", false", ", 0"}};
  for (const auto& [from, to] : kNames) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += std::string(to).size()) {
      text.replace(at, std::string(from).size(), to);
    }
  }
  return text;
}

class AccessStatements : public testing::TestWithParam<Engine> {
 protected:
  AccessStatements() { company_.run(kTables); }
  template <std::size_t N>
  void check(const Case (&cases)[N]) {
    for (const Case& c : cases) EXPECT_EQ(company_.outcome(c.statement), c.outcome) << c.statement;
  }
  CompanyFile company_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(InBothFiles, AccessStatements, testing::ValuesIn(kAccessEngines), kEngineName);

class ServerStatements : public testing::Test {
 protected:
  ServerStatements() { company_.run(onServer(kTables)); }
  template <std::size_t N>
  void check(const Case (&cases)[N]) {
    for (const Case& c : cases) EXPECT_EQ(company_.outcome(c.statement), c.outcome) << c.statement;
  }
  CompanyFile company_{kServer};
};

TEST_P(AccessStatements, LookUpsIgnoreLetterCase) {
  check({
      {"select cost from ASSET where ASSETID = 'ab\\pm0007'", "12.34"},
      {"Select DeptCode from dept where Ucase(deptname) ='STORES'", "0009"},
      {"Select Deptcode from Dept where Ucase (deptname) = 'stores'", "0009"},
      {"select usedby from users where username = 'O''NEIL'", "0002"},
      {"select usedby from users where username = \"o'Neil\"", "0002"},
      {"select usedby from users where trim(username) = 'ravi'", "0001"},
      {"select deptname from Dept where deptname = 'Stores '", ""},
      {"select count(*) from asset where acquiredas <> 'o'", "2"},
      {"select deptname from Dept where deptname in ('STORES', 'x') or deptname like 'r%' order by deptname",
       "R & D/Stores"},
      {"select phyid from asset where left(phyid, 3) = 'TAG'", "Tag 1"},
      {"select asset.[desc],docdt from asset where assetid = 'AB\\PM0007'", "~|31/05/2020"},
  });
}

TEST_P(AccessStatements, IdentifiersAndCodes) {
  check({
      {"Select assetid from asset where Mid (  asset.assetid  , 1, len('AB\\PM')) = 'AB\\PM' and "
       "len(asset.assetid)=len('AB\\PM') + 4  "
       "and val(Mid ( asset.assetid, 1 +  len('AB\\PM') , 4 )) > 0 and PAssetId is Null order by assetid desc",
       "AB\\PM0012/AB\\PM0007"},
      {"Select max(val(assetid)) as assetid from asset where  mid( asset.assetid, 1, len('')) = '' and "
       "val(mid( asset.assetid, 1 +  len('') , 4 )) > 0 and PAssetId is Null ",
       "42"},
      {"Select * from dept  where isnumeric(Deptcode)=true order by val(Deptcode) desc", "0010|R & D/0009|Stores"},
      {"Select max(val(mid(assetid,len(assetid)-(len(assetid)-len(passetid))+2,len(assetid)))) As MaxAssetID  from "
       "addition "
       "where Ucase(PAssetId) ='A1'",
       "12"},
      {"select iif(isnull(usedby), 'none', usedby) as who from asset where assetid = '0042'", "none"},
      {"select docno from shift order by docno desc", "0001"},
      {"select right(assetid, 4) from asset where assetid = 'AB\\PM0007'", "0007"},
  });
}

TEST_P(AccessStatements, Dates) {
  check({
      {"Select accyear from accyear where accopdt<=#05/31/2020# and acccldt >= #05/31/2020#", "2020-2021"},
      {"select accyear from accyear where #2019/12/31# between accopdt and acccldt", "2019-2020"},
      {"select docdt from asset where docdt ='05/31/2020'", "31/05/2020"},
      {"select docdt from asset where docdt = #31/05/2020#", "31/05/2020"},
      {"Select (Max(DocDt)+1) as Docdate from Fadep where  (reclass is Null or (reclass <>'Y' and reclass <>'R' and "
       "reclass <>'M' )) "
       "and ((flag <> 'S' ) or flag is Null) group by assetId having AssetId ='ab\\pm0007'",
       "01/04/2020"},
      {"Select docdt from Fadep where docdt >= #03/31/2020# and ( flag <> 'O' and flag <>'S' or flag is null) and "
       "((reclass <>'Y' and reclass <>'R' and reclass <>'M') or reclass is Null)",
       "31/03/2020"},
      {"Select max(docdt) as docdt from fadep where facode = 'nothing'", "~"},
      {"Select distinct (docdt) from Fadep where Flag <> 'O' or flag = 'S' or Flag is Null order by docdt desc",
       "31/03/2021/31/03/2020"},
      {"Select docdt from Fadep where Flag = 'O' group by docdt ", "31/03/2019"},
      {"select docdt from fadep where docdt = 'soon'", "80040E07"},
      {"select docdt from fadep where docdt = #13/32/2020#", "80040E14"},
  });
}

TEST_P(AccessStatements, BooleansAndMoney) {
  check({
      {"select accyear from accyear where closed=true", "2019-2020"},
      {"select accyear from accyear where closed=-1", "2019-2020"},
      {"select accyear from accyear where closed=1", ""},
      {"select accyear, closed from accyear where not closed", "2020-2021|False"},
      {"Select * from shift where assetid ='AB\\PM0007' and tfrout = true and  sameloc = false",
       "0001|AB\\PM0007|01/06/2020|True|False"},
      {"select assetid from asset where cost = 12.34", "AB\\PM0007"},
      {"select assetid from asset where cost = -5", "0042"},
      {"select assetid from asset where cost > 12.33999 and cost < 12.34001", "AB\\PM0007"},
      {"select sum(cost) as total, count(*), max(cost) from asset", "1000007.3901|4|1000000.05"},
      {"select cost * 3 from asset where assetid = 'AB\\PM0007'", "37.02"},
      {"select cost + 0.5 from asset where assetid = 'AB\\PM0007'", "12.84"},
      {"select qty * 2 from asset where assetid = 'AB\\PM0012'", "5"},
      {"insert into TmpAstCostBrkup (assetid, cost, amount) values ('A', 0.3, 0.3)", "1 rows"},
      {"update TmpAstCostBrkup set Status ='Y' where Cost=Amount", "1 rows"},
      {"select * from TmpAstCostBrkup where status='Y'", "A|0.3|0.3|Y"},
      {"delete from TmpAstCostBrkup", "1 rows"},
  });
}

TEST_P(AccessStatements, JoinsAndQueriesInside) {
  check({
      {"SELECT F.Description, C.ClassDesc,'' as subclassDesc  FROM Classification as C INNER JOIN FADefinition F ON "
       "C.Defcode = F.DefCode "
       "where C.DefCode='D1' and C.Classcode='d1-01'",
       "Machines|Lathes|"},
      {"SELECT F.Description, C.ClassDesc, S.subclassDesc FROM (SubClass as S INNER JOIN Classification as C ON "
       "S.classcode = C.Classcode) "
       "INNER JOIN FADefinition as F ON S.defcode = F.DefCode where S.DefCode ='D1' and S.Classcode ='D1-01' and "
       "S.Subclasscode= 'D1-01-01'",
       "Machines|Lathes|Small lathes"},
      {"Select f.* From FADefinition f, Asset a Where f.defcode = a.defcode and a.assetId ='AB\\PM0007'",
       "D1|Machines|F1"},
      {"select * from Fadep where FACode in (select Distinct FACode from FADefinition where DefCode= 'd1') and flag is "
       "null",
       "AB\\PM0007|31/03/2020|SLM|D1|F1|~|~"},
      {"select docno from shift where assetid = (select assetid from asset where cost = 12.34)", "0001"},
      {"select a.assetid from asset a left join users u on a.usedby = u.username where u.usedby is null order by "
       "a.assetid",
       "0042/AB\\PM0012X"},
  });
}

TEST_P(AccessStatements, Changes) {
  check({
      {"update asset,users set asset.usedby=users.usedby where ucase(asset.usedby)=ucase(users.username)", "2 rows"},
      {"select usedby from asset where usedby is not null order by usedby", "0001/0002"},
      {"update asset inner join users on asset.usedby = users.usedby set asset.usedby = users.username", "2 rows"},
      {"update asset set usedby=null where trim(usedby)='ravi'", "1 rows"},
      {"update fadep set flag = 'S', docdt = docdt + 1 where assetid = 'AB\\PM0012'", "1 rows"},
      {"select docdt from fadep where assetid = 'AB\\PM0012'", "01/04/2019"},
      {"update Asset set FaAge=60,LeaseDate='05/31/2025' where AssetId='AB\\PM0007' and FaAge is null and  FaAge is "
       "null and "
       "LeaseDate is null",
       "1 rows"},
      {"select FaAge, LeaseDate from Asset where FaAge is not null", "60|31/05/2025"},
      {"update asset, fadep set asset.facode1 = fadep.facode where (asset.facode1 is null or asset.facode1 = '') and "
       "(fadep.facode is not null or fadep.facode <> '')",
       "4 rows"},
      {"select distinct facode1 from asset", "F2"},
      {"insert into users (usedby, username) select deptcode, deptname from dept where isnumeric(deptcode)=false",
       "1 rows"},
      {"select username from users where usedby = 'none'", "None"},
      {"delete from users where usedby = 'NONE'", "1 rows"},
      {"insert into asset (assetid) values ('ab\\PM0007')", "80004005"},
      {"insert into asset (cost) values (1)", "80040E2F"},
      {"insert into dept values ('12345678901', 'x')", "80040E57"},
      {"insert into dept values ('1', 'x', 'y')", "80040E14"},
      {"insert into dept (code) values ('1')", "80040E14"},
      {"insert into asset (assetid, cost) values ('N', 'dear')", "80040E07"},
      {"update asset set cost = 'dear'", "80040E07"},
      {"update asset set assetid = null", "80040E2F"},
      {"update dept set deptcode = deptcode & '-12345678'", "80040E57"},
      {"select count(*) from dept", "3"},
  });
}

TEST_P(AccessStatements, Failures) {
  check({
      {"selec * from asset", "80040E14"},
      {"select * frm asset", "80040E14"},
      {"select * from asset where", "80040E14"},
      {"select * from asset where assetid = 'open", "80040E14"},
      {"select upper(assetid) from asset", "80040E14"},
      {"select * from nowhere", "80040E37"},
      {"update nowhere set a = 1", "80040E37"},
      {"delete from nowhere", "80040E37"},
      {"drop table nowhere", "80040E37"},
      {"alter table nowhere add a text(1)", "80040E37"},
      {"select nothing from asset", "80040E10"},
      {"update asset,users set classification.wopercent.fadefiniton.wopercent where asset.cost = 1", "80040E14"},
      {"update asset set nothing = 1", "80040E10"},
  });
}

TEST_P(AccessStatements, Definitions) {
  check({
      {"create table Asset (a text(1))", "80040E14"},
      {"alter table Asset add Batch text(30), Qty2 number", "0 rows"},
      {"alter table asset add BATCH text(30)", "80004005"},
      {"alter table asset add Other text(30), batch text(30)", "80004005"},
      {"select other from asset", "80040E10"},
      {"alter table Asset add column Backdated yesno", "0 rows"},
      {"select count(*) from asset where backdated = false", "4"},
      {"alter table asset alter column assetid text(40)", "0 rows"},
      {"alter table asset alter column usedby currency", "80040E21"},
      {"alter table asset alter column qty text(10)", "0 rows"},
      {"select qty from asset where qty is not null order by qty", "1/2.5"},
      {"alter table asset drop column qty2", "0 rows"},
      {"alter table asset drop column qty2", "80040E21"},
      {"create index phy on asset(PhyID)", "0 rows"},
      {"create index PHY on asset(PhyID)", "80040E14"},
      {"create unique index u on asset(defcode)", "80004005"},
      {"drop index phy on asset", "0 rows"},
      {"alter table Addition add constraint pk_id primary key (assetid)", "0 rows"},
      {"alter table Addition add constraint pk_id primary key (assetid)", "80040E14"},
      {"insert into addition (assetid) values ('A1-07')", "80004005"},
      {"drop table AddntoAsset", "80040E37"},
      {"create table Schedule (RecordId number, FADesc text(255), SortOrder number)", "0 rows"},
      {"create table U (Usedby text(50) constraint pk_id primary key, Flag text(1) default 'N' not null, ok yesno "
       "default Yes)",
       "0 rows"},
      {"insert into U (usedby) values ('a')", "1 rows"},
      {"select * from U", "a|N|True"},
      {"drop table U", "0 rows"},
      {"select * from U", "80040E37"},
      {"create table Bad (a nothing(10))", "80040E14"},
  });
}

TEST_F(ServerStatements, TheServersOwnForms) {
  check({
      {"Select Deptcode from Dept where Upper(deptname) ='STORES'", "0009"},
      {"select deptname from Dept where deptname = 'STORES  '", "Stores"},
      {"Select assetid from asset where substring ( asset.assetid  , 1, len('AB\\PM')) = 'AB\\PM' and "
       "isnumeric(substring( asset.assetid, 1 +  len('AB\\PM') , 4 )) = 1 and PAssetId is Null order by assetid desc",
       "AB\\PM0012/AB\\PM0007"},
      {"Select assetid from asset where substring ( asset.assetid  , 1, len('AB\\P')) = 'AB\\P' and "
       "len(asset.assetid)=len('AB\\P') + 5  "
       "and convert(int, right ( asset.assetid, 4 )) > 0 and PAssetId is Null order by assetid desc",
       "AB\\PM0012/AB\\PM0007"},
      {"Select * from dept  where isnumeric(Deptcode)=1 order by convert(integer,Deptcode) desc",
       "0010|R & D/0009|Stores"},
      {"Select max(cast(substring(assetid,len(assetid)-(len(assetid)-len(passetid))+2,len(assetid))as int)) As "
       "MaxAssetID "
       "from addition where Upper(PAssetId) ='A1'",
       "12"},
      {"select accyear from accyear where closed=1", "2019-2020"},
      {"Select * from shift where assetid ='AB\\PM0007' and tfrout = 1 and  sameloc = 0",
       "0001|AB\\PM0007|01/06/2020|True|False"},
      {"Select accyear from accyear where accopdt<='05/31/2020' and acccldt >= '2020/05/31'", "2020-2021"},
      {"select case when phyid is null then 'none' else phyid end as p, isnull(usedby, 'x') from asset where assetid = "
       "'0042'",
       "Tag 1|x"},
      {"update asset set usedby=u.usedby from users u where upper(asset.usedby)=upper(u.username)", "2 rows"},
      {"update asset set asset.usedby=users.username from asset inner join users on asset.usedby = users.usedby",
       "2 rows"},
      {"update asset set usedby=null where ltrim(rtrim(usedby))='ravi'", "1 rows"},
  });
}

TEST_F(ServerStatements, RefusesTheOtherDialect) {
  check({
      {"update asset set usedby=null where trim(usedby)=''", "80040E14"},
      {"update asset set usedby=null where ucase(usedby)=''", "80040E14"},
      {"select * from dept where isnumeric(deptcode)=false", "80040E14"},
      {"select * from asset where docdt = #05/31/2020#", "80040E14"},
      {"select nothing from asset", "80040E14"},
      {"select val(assetid) from asset", "80040E14"},
      {"update asset,users set asset.usedby=users.usedby where asset.usedby=users.username", "80040E14"},
      {"create table t (a yesno)", "80040E14"},
      {"alter table asset add cost money", "80040E21"},
      {"alter table asset alter column usedby money", "80040E21"},
      {"alter table accyear alter column closed bit Null", "0 rows"},
      {"create table n (a nvarchar)", "0 rows"},
      {"insert into n values ('ab')", "80040E57"},
      {"select convert(int, deptcode) from dept where deptcode = 'none'", "80040E07"},
  });
}

}  // namespace
}  // namespace orva::test
