#include <gtest/gtest.h>

#include "imports/asset/company_fixture.h"

namespace orva {
namespace {

using Lines = std::vector<std::string>;

/// A small run that is disturbed at one call after the other.
struct SmallRun {
  const char* name;
  Selection selection;
  Lines books;
  std::vector<SheetRow> rows;
  /// What must be the same after the failure and a second attempt as after an undisturbed run.
  const char* outcome;
};

constexpr ParameterFlags kBooksKept{.additionalBook1 = true, .automaticIdentifiers = true, .users = true};

constexpr const char* kNothing[] = {"delete from Asset",    "delete from Fadep",    "delete from FADep1",
                                    "delete from Shift",    "delete from Addition", "delete from UDValues",
                                    "delete from UDFields", "delete from Dept",     "delete from Users"};

constexpr const char* kParent =
    "insert into Asset (Cocd, Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, SubClassCode, Cost, "
    "UseDate, Docdt, Facode, FAAge) values ('K1', 'PM\\PU\\CE0004', 'A', 'Purchased', '2005-06', '2005-06', 'PM', "
    "'PM-01', 'PM-01-01', 1000, #05/01/2005#, #05/01/2005#, 'F2', 60)";
constexpr const char* kOther =
    "insert into Asset (Cocd, Assetid, PhyID, AcquiredAs, Accyear, Finyear, DefCode, ClassCode, Cost, UseDate, Docdt, "
    "FAAge) values ('K1', 'PM0001', 'B', 'Purchased', '2005-06', '2005-06', 'PM', 'PM-02', 500, #05/01/2005#, "
    "#05/01/2005#, 60)";
constexpr const char* kChild =
    "insert into Addition (AssetId, PAssetId, ClassCode, SubClassCode) "
    "values ('PM\\PU\\CE0004-01', 'PM\\PU\\CE0004', 'PM-01', 'PM-01-01')";

// On the last day of the year, so that entries of a failed run do not stand in the way of the rest.
SheetRow onLastDay(SheetRow cells) {
  cells.emplace_back("USEDATE", "31/03/2005");
  cells.emplace_back("VCHRDATE", "31/03/2005");
  return takenOver(cells);
}

const SmallRun kAdding[] = {
    {"closing balances of several units",
     {.kind = ImportKindId::kClosing, .multipleAssetIds = true},
     {},
     {onLastDay({{"PHYID", "A"}, {"QTY", "2"}, {"DEPT", "Packing"}, {"ACCDEP1", "5"}}),
      onLastDay({{"PHYID", "B"}, {"ACCDEP1", "6"}})},
     "select Assetid, PhyID, Cost, AccDep, Accdep1, DeptCode from Asset order by Assetid"},
    {"shifted in, with fields of the company's own",
     {.shiftedIn = true},
     {"insert into UDFields (UDF1) values ('Colour')"},
     {purchase({{"PHYID", "A"}, {"ACCDEP", "1"}, {"ShiftedFrom", "Nagpur"}, {"UDV1", "red"}, {"USER", "Roy"}}),
      purchase({{"PHYID", "B"}, {"ACCDEP", "2"}, {"ShiftedFrom", "Nagpur"}, {"UDV1", "blue"}, {"USER", "Roy"}})},
     "select Assetid, PhyID, Cost, AccDep, UsedBY from Asset order by Assetid"},
};

const SmallRun kChanging[] = {
    {"by asset identifier",
     {.mode = AssetMode::kModifyByAssetId},
     {kParent, kOther, kChild},
     {{{"ASSETID", "PM\\PU\\CE0004"}, {"CAT2", "Presses"}, {"DEPT", "Packing"}, {"COST", "900"}},
      {{"ASSETID", "PM0001"}, {"CAT2", "Pumps"}, {"DEPT", "Stores"}, {"COST", "800"}}},
     "select a.Assetid, a.ClassCode, a.Cost, a.DeptCode, c.ClassCode as ChildClass from Asset a, Addition c order by "
     "a.Assetid"},
    {"by physical identifier",
     {.mode = AssetMode::kModifyByPhysicalId},
     {kParent, kOther, kChild, "insert into Fadep (Assetid, DocDt) values ('PM0001', #03/31/2005#)"},
     {{{"PHYID", "A"}, {"DEPT", "Packing"}}, {{"PHYID", "B"}, {"DEPT", "Stores"}}},
     "select PhyID, DeptCode, Cost from Asset order by PhyID"},
};

/// One company for a whole series: a run starts from the same books each time.
class Series {
 public:
  explicit Series(const SmallRun& run) : run_(run) {
    company.selection = run.selection;
    company.company.flags = kBooksKept;
    start();
    EXPECT_EQ(company.import(run.rows).text, "Imported successfully") << run.name;
    undisturbed = outcome();
  }

  Lines outcome() { return company.rows(run_.outcome); }
  void start() {
    company.prepare({std::begin(kNothing), std::end(kNothing)});
    company.prepare({"insert into Dept (Deptcode, DeptName) values ('0007', 'Stores')"});
    company.prepare(run_.books);
    company.stage(run_.rows);
    company.validate();
  }
  /// Posts with the `nth` call failing.
  PostResult post(int nth) {
    start();
    company.adapter->plan().failAtCall(nth, provider_number::kDataOverflow);
    return company.post();
  }
  /// Some call was the failing one.
  static bool isDisturbed(const PostResult& result) { return !result.finished || !result.controlTotals; }
  std::size_t count(const std::string& query) { return company.rows(query).size(); }

  AssetCompany company;
  Lines undisturbed;

 private:
  const SmallRun& run_;
};

TEST(FailureAtEveryCall, ARowIsAddedWholeOrNotAtAll) {
  for (const SmallRun& run : kAdding) {
    Series series(run);
    int nth = 1;
    for (PostResult result = series.post(nth); Series::isDisturbed(result); result = series.post(++nth)) {
      const std::string place = std::string(run.name) + ", call " + std::to_string(nth);
      EXPECT_EQ(result.text, result.finished ? "Imported successfully" : "The provider failed.") << place;
      EXPECT_EQ(series.count("select distinct (PhyID) from Asset"), static_cast<std::size_t>(result.rowsPosted))
          << place;
      EXPECT_EQ(series.count("select Assetid from Asset"), static_cast<std::size_t>(result.recordsStored)) << place;
      const Lines assets = series.company.rows("select Assetid from Asset order by Assetid");
      for (const char* table : {"Fadep", "FADep1", "Shift", "UDValues"}) {
        const bool isOfRun = run.selection.isClosing() == std::string(table).starts_with("F");
        const Lines entries = series.company.rows(std::string("select Assetid from ") + table + " order by Assetid");
        EXPECT_EQ(entries, isOfRun ? assets : Lines()) << table << ", " << place;
      }
      const std::vector<SheetRow> rest(run.rows.begin() + result.rowsPosted, run.rows.end());
      if (rest.empty()) continue;
      EXPECT_TRUE(series.company.import(rest).finished) << place;
      EXPECT_EQ(series.outcome(), series.undisturbed) << place;
    }
    EXPECT_GT(nth, 40) << run.name;
  }
}

TEST(FailureAtEveryCall, ASecondAttemptFinishesTheChanges) {
  for (const SmallRun& run : kChanging) {
    Series series(run);
    int nth = 1;
    for (PostResult result = series.post(nth); Series::isDisturbed(result); result = series.post(++nth)) {
      const std::string place = std::string(run.name) + ", call " + std::to_string(nth);
      const std::size_t kept = series.count("select a.Assetid from Asset a, Addition c where a.Assetid = c.PAssetId");
      EXPECT_EQ(kept, 1U) << "the child has lost its parent, " << place;
      EXPECT_EQ(series.count("select a.Assetid from Asset a, Fadep f where a.Assetid = f.Assetid"),
                series.count("select Assetid from Fadep"))
          << place;
      EXPECT_TRUE(series.company.import(run.rows).finished) << place;
      EXPECT_EQ(series.outcome(), series.undisturbed) << place;
    }
    EXPECT_GT(nth, 20) << run.name;
  }
}

/// Everything stored belongs together: a lost connection leaves whole assets, and no opening entry is
/// doubled by the next attempt.
TEST(LostConnection, LeavesWholeAssets) {
  const std::vector<SheetRow> sheet{
      onLastDay({{"PHYID", "A"}, {"DEPT", "Packing"}, {"USER", "Roy"}, {"ACCDEP1", "5"}, {"CAT3", "Centrifugal"}}),
      onLastDay({{"PHYID", "B"}, {"DEPT", "Packing"}, {"USER", "Rao"}, {"ACCDEP1", "6"}, {"CAT3", ""}})};
  for (int nth = 1;; ++nth) {
    AssetCompany company;
    company.selection.kind = ImportKindId::kClosing;
    company.company.flags = {.additionalBook1 = true, .automaticIdentifiers = true, .users = true};
    company.stage(sheet);
    company.validate();
    company.adapter->plan().loseConnectionAt(nth);
    const PostResult result = company.post();
    if (result.finished) {
      EXPECT_GT(nth, 40);
      break;
    }
    EXPECT_FALSE(result.text.empty()) << nth;
    company.company.connection =
        company.fakes.databases.connect("Provider=Books;Data Source=" + company.folder.file("company.mdb"));
    const int stored = static_cast<int>(company.rows("select Assetid from Asset").size());
    EXPECT_GE(stored, result.rowsPosted) << nth;
    EXPECT_LE(stored, result.rowsPosted + 1) << nth;
    EXPECT_EQ(company.rows("select a.Assetid from Asset a, Fadep f where a.Assetid = f.Assetid").size(),
              company.rows("select Assetid from Asset").size())
        << "an asset without its entry " << nth;
    // What is left of the sheet is imported again.
    const std::vector<SheetRow> rest(sheet.begin() + stored, sheet.end());
    if (rest.empty()) continue;
    EXPECT_TRUE(company.import(rest).finished) << nth;
    EXPECT_EQ(company.rows("select Assetid, PhyID from Asset order by Assetid"),
              (Lines{"PM\\PU0001|B", "PM\\PU\\CE0001|A"}))
        << nth;
    EXPECT_EQ(company.rows("select Assetid, AccDep from Fadep order by Assetid").size(), 2U) << nth;
    EXPECT_EQ(company.rows("select Assetid, AccDep from FADep1 order by Assetid").size(), 2U) << nth;
    EXPECT_EQ(company.rows("select DeptName from Dept where DeptName='Packing'").size(), 1U) << nth;
  }
}

}  // namespace
}  // namespace orva
