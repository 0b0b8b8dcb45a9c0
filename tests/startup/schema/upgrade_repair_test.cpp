#include "startup/schema/old_company.h"

namespace orva {
namespace {

class UpgradeRepair : public ::testing::TestWithParam<SchemaDialect> {
 protected:
  /// Upgrades, runs the statements, and upgrades again as the next opening does.
  void reopenAfter(const std::vector<std::string>& statements) {
    if (!upgraded_) company.upgrade();
    upgraded_ = true;
    for (const std::string& statement : statements) company.run(statement);
    EXPECT_EQ(company.upgrade(), std::vector<std::string>{});
  }
  bool isServer() const { return GetParam() == SchemaDialect::kServer; }

  OldCompany company{GetParam()};

 private:
  bool upgraded_ = false;
};

constexpr const char* kPeriods =
    "select DepCalPeriod, DepPurIncl, DepSaleIncl, autoAssetid, excel, days from parameter";

TEST_P(UpgradeRepair, ParameterRow) {
  EXPECT_EQ(company.upgrade(), std::vector<std::string>{});
  EXPECT_EQ(company.rows(kPeriods), "D|I|I|True|True|True");
  EXPECT_EQ(company.rows("select conntimeout, addnalmthd1, addnalmthd2, flguser from parameter"),
            "15|Additional Book 1|Additional Book 2|U");

  reopenAfter({"update parameter set depcalperiod='M', deppurincl='X'", "update parameter set conntimeout=30",
               "update parameter set addnalmthd1='Group', addnalmthd2=''"});
  EXPECT_EQ(company.rows(kPeriods), "M|X|I|True|True|True");
  EXPECT_EQ(company.rows("select conntimeout, addnalmthd1, addnalmthd2 from parameter"), "30|Group|Additional Book 2");

  reopenAfter({"update parameter set depcalperiod=null"});
  EXPECT_EQ(company.rows(kPeriods), "D|I|I|True|True|True");
}

TEST_P(UpgradeRepair, SwitchesOnWhatTheImporterNeeds) {
  const std::string off = isServer() ? "0" : "false";
  reopenAfter(
      {"update parameter set autoassetid=" + off + ", validation=" + off + ", modvat=" + off + ", days=" + off});
  EXPECT_EQ(company.rows("select autoassetid, validation, modvat, days from parameter"),
            isServer() ? "False|True|True|True" : "False|False|False|False")
      << "an Access company is looked at only through excel";
  reopenAfter({"update parameter set excel=" + off});
  EXPECT_EQ(company.rows("select excel, days from parameter"), "True|True");
}

TEST_P(UpgradeRepair, BlanksAtTheEndOfLocations) {
  const std::string places = " (assetid, mainlocation, sublocation, physicallocation) values ('A','Main ','Sub','P  ')";
  reopenAfter(
      {"insert into location (recordid, mainlocation, sublocation, physicallocation) values (1,'Main ','S','P')",
       "insert into location (recordid, mainlocation, sublocation) values (2,' In','S ')",
       "insert into location (recordid, mainlocation) values (3,' Front')", "insert into asset" + places,
       "insert into addition" + places,
       "insert into shift (mainlocation, sublocation, phylocation, oldphylocation) values ('M','S ','P','O ')"});
  EXPECT_EQ(company.rows("select mainlocation, sublocation, physicallocation from location order by recordid"),
            "Main|S|P/In|S|/ Front||");
  EXPECT_EQ(company.rows("select mainlocation, sublocation, physicallocation from asset"), "Main|Sub|P");
  EXPECT_EQ(company.rows("select mainlocation, sublocation, physicallocation from addition"), "Main|Sub|P");
  EXPECT_EQ(company.rows("select mainlocation, sublocation, phylocation, oldphylocation from shift"), "M|S|P|O");
}

TEST_P(UpgradeRepair, UserNamesBecomeCodesOnce) {
  reopenAfter({"update parameter set flguser=null", "insert into users (usedby, username) values ('0007','Ravi Kumar')",
               "insert into asset (assetid, usedby) values ('A1','ravi kumar')",
               "insert into asset (assetid, usedby) values ('A2','O''Neil')",
               "insert into asset (assetid, usedby) values ('A3','O''NEIL')",
               "insert into asset (assetid, usedby) values ('A4',' 12 ')",
               "insert into asset (assetid, usedby) values ('A5','  ')",
               "insert into shift (newuser, olduser) values ('Mina','')", "insert into split (user1) values ('Zed')"});
  EXPECT_EQ(company.rows("select usedby, username from users order by usedby"),
            "0007|Ravi Kumar/Mina|Mina/O'Neil|O'Neil/Zed|Zed");
  EXPECT_EQ(company.rows("select usedby from asset order by assetid"), "0007/O'Neil/O'Neil/ 12 /");
  EXPECT_EQ(company.rows("select assetid from asset where usedby is null"), "A5");
  EXPECT_EQ(company.rows("select newuser from shift where olduser is null"), "Mina");

  reopenAfter({"insert into asset (assetid, usedby) values ('A6','Newcomer')"});
  EXPECT_EQ(company.rows("select count(*) from users where usedby='Newcomer'"), "0") << "once in a company's life";
}

TEST_P(UpgradeRepair, UserNamesOfChildAssetsAtEveryOpening) {
  reopenAfter({"insert into users (usedby, username) values ('0007','Ravi')",
               "insert into addition (assetid, usedby) values ('A-01','RAVI')",
               "insert into addition (assetid, usedby) values ('A-02','NONE')",
               "insert into addition (assetid, usedby) values ('A-03',' ')"});
  EXPECT_EQ(company.rows("select usedby from addition order by assetid"), "0007/NONE/ ");
  reopenAfter({"update addition set usedby='ravi' where assetid='A-02'"});
  EXPECT_EQ(company.rows("select usedby from addition order by assetid"), "0007/0007/ ");
  EXPECT_EQ(company.rows("select usedby from users order by usedby"), "0007/NONE");
}

TEST_P(UpgradeRepair, LongNamesStayOnAServerWhoseCodesAreShort) {
  reopenAfter(
      {"update parameter set flguser=null", "insert into asset (assetid, usedby) values ('A1','Alexandra Longname')"});
  EXPECT_EQ(company.rows("select count(*) from users"), isServer() ? "0" : "1");
  EXPECT_EQ(company.rows("select usedby from asset"), "Alexandra Longname");
}

TEST_P(UpgradeRepair, LowerLevelsTakeTheCodesOfUpperLevels) {
  reopenAfter(
      {"insert into fadefinition (defcode, facode, facode1, facode2, blockcode, wdv, wopercent) values "
       "('B','F0','F1','F2','K',1,95)",
       "insert into classification (defcode, classcode) values ('B','B-01')",
       "insert into classification (defcode, classcode, facode, facode1) values ('B','B-02','OWN','OWN1')",
       "insert into subclass (defcode, classcode, subclasscode) values ('B','B-02','B-02-01')",
       "insert into asset (assetid, defcode, classcode, subclasscode, facode1) values ('A1','B','B-02','B-02-01','')",
       "insert into asset (assetid, defcode, classcode) values ('A2','B','B-01')",
       "insert into asset (assetid, defcode, facode1) values ('A3','Z','KEEP')",
       "insert into fadep (assetid) values ('A1')", "insert into fadep1 (assetid) values ('A1')",
       "insert into fadep2 (assetid, defcode, facode) values ('A2','OLD','')"});
  EXPECT_EQ(company.rows("select facode, facode1, facode2, blockcode, wdv, wopercent, wopercent1 from classification "
                         "order by classcode"),
            "F0|F1|F2|K|1|95|95/OWN|OWN1|F2||||")
      << "a level with a code of its own keeps the rest as it is";
  EXPECT_EQ(company.rows("select facode, facode1, facode2, blockcode from subclass"), "F0|OWN1|F2|K");
  EXPECT_EQ(company.rows("select facode1, facode2 from asset order by assetid"), "OWN1|F2/F1|F2/KEEP|");
  EXPECT_EQ(company.rows("select defcode, classcode, subclasscode from fadep"), "B|B-02|B-02-01");
  EXPECT_EQ(company.rows("select defcode, facode from fadep1"), "B|OWN1");
  EXPECT_EQ(company.rows("select defcode, facode from fadep2"), "OLD|F2");
}

INSTANTIATE_TEST_SUITE_P(Dialects, UpgradeRepair, ::testing::Values(SchemaDialect::kAccess, SchemaDialect::kServer),
                         [](const auto& dialect) { return dialectName(dialect.param); });

/// Which execution of an upgrade sends the command that starts so (before the first
/// procedure that executes anything); 1 is the first.
int executionOf(const std::string& start, SchemaDialect dialect) {
  int nth = 0;
  for (const UpgradeRow& row : upgradeRows()) {
    for (const std::string& command : upgradeCommands(row, dialect)) {
      ++nth;
      if (command.starts_with(start)) return nth;
    }
  }
  return -1;
}

class UpgradeFaults : public ::testing::TestWithParam<SchemaDialect> {};

TEST_P(UpgradeFaults, NumbersThatArePassedOverAndOthers) {
  // Nothing else in the script depends on this table.
  const int schedule = executionOf("create table Schedule", GetParam());
  struct Case {
    DatabaseCall call;
    int nth;
    std::int32_t number;
    bool ends;
  };
  // Each opening takes up the work that the one before left undone.
  const Case cases[] = {
      {DatabaseCall::kStore, 1, provider_number::kDataOverflow, true},
      {DatabaseCall::kOpen, 2, provider_number::kTypeMismatch, true},
      {DatabaseCall::kExecute, schedule, provider_number::kLoginFailed, true},
      {DatabaseCall::kExecute, schedule, provider_number::kSyntaxOrExists, false},
      {DatabaseCall::kExecute, schedule, provider_number::kErrorsOccurred, false},
      {DatabaseCall::kExecute, schedule, provider_number::kUnspecified, false},
      {DatabaseCall::kExecute, schedule, provider_number::kNoSuchTable, false},
      {DatabaseCall::kOpen, 1, provider_number::kNoSuchTable, false},
  };
  OldCompany company(GetParam());
  for (const Case& test : cases) {
    SCOPED_TRACE(test.number);
    company.faults().failAt(test.call, test.nth, test.number, "Failed.");
    EXPECT_EQ(company.upgrade(), test.ends ? std::vector<std::string>{"Failed."} : std::vector<std::string>{});
    if (test.ends) {
      EXPECT_THROW(company.rows("select * from RateMethodError"), ProviderError) << "the rest did not run";
    } else {
      EXPECT_EQ(company.rows("select * from RateMethodError"), "");
    }
  }
  EXPECT_THROW(company.run("create table Schedule (x int)"), ProviderError) << "made by the last openings";
  EXPECT_EQ(company.rows("select depcalperiod from parameter"), "D");
}

INSTANTIATE_TEST_SUITE_P(Dialects, UpgradeFaults, ::testing::Values(SchemaDialect::kAccess, SchemaDialect::kServer),
                         [](const auto& dialect) { return dialectName(dialect.param); });

}  // namespace
}  // namespace orva
