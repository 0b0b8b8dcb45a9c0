#include "updates/frmUpdateLEOD.h"

#include <gtest/gtest.h>

#include "updates/update_screen.h"

namespace orva {
namespace {

using LeaseEnds = UpdateScreen<frmUpdateLEOD>;

constexpr const char* kLeases = "select Assetid, LeaseDate from Asset order by Assetid";
constexpr const char* kErrors = "select AssetId, LEOD, ErrorCode, ErrorDesc from LEODError";

Rows sheet(const Rows& rows) {
  Rows all{{"Assetid", "LEOD"}};
  all.insert(all.end(), rows.begin(), rows.end());
  return all;
}

struct Case {
  Texts row;
  /// What stands in the error table.
  std::string recorded;
  int errors;
};

const std::string kLong(60, 'x');

/// Every character after the first has three bytes.
const std::string kDevanagari = "xमार्चमार्चमार्चमार्चमार्चमार्च";

const Case kCases[] = {
    {{"A1", "02/04/2005"}, "A1|02/04/2005||", 0},
    {{" a1 ", " 31/12/2020 "}, "a1|31/12/2020||", 0},
    {{"O'Neil", "01/01/1990"}, "O'Neil|01/01/1990||", 0},
    {{"A1", "01/04/2005"}, "A1|01/04/2005|E|LEOD Should not be equal to Date put to use date", 1},
    {{"A1", "31/03/2005"}, "A1|31/03/2005|E|LEOD Should be greater than Date put to use date", 1},
    {{"A9", "31/03/2025"}, "A9|31/03/2025|E|Asset Id : A9 does not exist in ORVA.", 1},
    {{"' or '1'='1", "31/03/2025"}, "' or '1'='1|31/03/2025|E|Asset Id : ' or '1'='1 does not exist in ORVA.", 1},
    {{"A1", "31/02/2025"}, "A1||E|'31/02/2025' is no value for the field 'LEOD'.", 1},
    {{"A1", ""}, "A1||E|'' is no value for the field 'LEOD'.", 1},
    {{"", "31/03/2025"}, "|31/03/2025|E|'' is no value for the field 'AssetId'.", 1},
    {{kLong, "31/03/2025"}, "|31/03/2025|E|Asset Id : " + kLong + " does not exist in ORVA.", 1},
    {{"O'Neil", kDevanagari}, "O'Neil||E|'x" + kDevanagari.substr(1, 57) + "' is no value for the field 'LEOD'.", 1},
    {{"A9", "soon"}, "A9||E|Asset Id : A9 does not exist in ORVA.", 2},
};

TEST(LeaseEnd, EveryRowIsCheckedAndRecordedInBothDialects) {
  for (const SqlDialect dialect : kBothDialects) {
    LeaseEnds update(dialect);
    for (const Case& c : kCases) {
      update.run(sheet({c.row}));
      EXPECT_EQ(update.rows(kErrors), Texts{c.recorded});
      EXPECT_EQ(update.screen.errorCount(), c.errors) << c.recorded;
    }
  }
}

TEST(LeaseEnd, ADateThatOnlyAServerCannotKeepIsAnErrorThere) {
  for (const SqlDialect dialect : kBothDialects) {
    for (const std::string date : {"31/12/1899", "01/01/1900"}) {
      const bool isKept = dialect == SqlDialect::kAccess || date == "01/01/1900";
      LeaseEnds update(dialect);
      update.run(sheet({{"O'Neil", date}}));
      EXPECT_EQ(update.rows(kErrors),
                Texts{isKept ? "O'Neil|" + date + "||" : "O'Neil||E|'" + date + "' is no value for the field 'LEOD'."});
      EXPECT_EQ(update.rows(kLeases)[2], isKept ? "O'Neil|" + date : "O'Neil|");
    }
  }
}

TEST(LeaseEnd, ADateThatTheProviderCannotHoldWipesOutNone) {
  LeaseEnds update;
  update.prepare({"update Asset set LeaseDate = #03/31/2028#"});
  update.adapter->plan().refuseField("LEOD", provider_number::kDataOverflow, "It does not fit.");
  update.run(sheet({{"A1", "31/03/2030"}}));
  EXPECT_EQ(update.rows(kErrors), Texts{"A1||E|It does not fit."});
  EXPECT_EQ(update.rows(kLeases)[0], "A1|31/03/2028");
}

TEST(LeaseEnd, GoodRowsAreStoredAndOfTwoRowsOfAnAssetTheLaterOneWins) {
  for (const SqlDialect dialect : kBothDialects) {
    LeaseEnds update(dialect);
    update.prepare({"insert into LEODError (AssetId, ErrorCode) values ('OLD', 'E')"});
    update.run(sheet({{"A2", "31/03/2030"}, {"O'Neil", "01/04/2031"}, {"a2", "31/03/2029"}, {"", " "}}));
    EXPECT_EQ(update.rows(kLeases), (Texts{"A1|", "A2|31/03/2029", "O'Neil|01/04/2031"}));
    EXPECT_EQ(update.fakes.dialogs.lastText(), "3 - Records has been successfully Updated. ");
    EXPECT_EQ(update.fakes.dialogs.messages.back().icon, MessageIcon::kInformation);
    EXPECT_EQ(update.rows(kErrors).size(), 3u) << "the last run's rows and no others";
  }
}

TEST(LeaseEnd, OneUnknownAssetAmongAHundredGoodRowsChangesNothing) {
  LeaseEnds update;
  Rows rows(100, {"A1", "31/03/2030"});
  rows.insert(rows.begin() + 40, {"A9", "31/03/2030"});
  update.run(sheet(rows));
  ASSERT_EQ(update.fakes.dialogs.messages.size(), 1u);
  const Message& question = update.fakes.dialogs.messages[0];
  EXPECT_EQ(question.text,
            "Error found in 1 entries.\nError descriptions are given in the Error file.\nDo you want to open the error "
            "file?");
  EXPECT_EQ(question.title, "ORVA ExcelImport");
  EXPECT_EQ(question.buttons, MessageButtons::kYesNo);
  const Texts lines = update.errorFile();
  ASSERT_EQ(lines.size(), 102u);
  EXPECT_EQ(lines[0], "AssetId\tLEOD\tErrorCode\tErrorDesc");
  EXPECT_EQ(lines[1], "A1\t31/03/2030\t\t");
  EXPECT_EQ(lines[41], "A9\t31/03/2030\tE\tAsset Id : A9 does not exist in ORVA.");
  EXPECT_EQ(update.fakes.shell.opened, Texts{"c:\\orva\\ExportOrva.xls"});
  EXPECT_EQ(update.rows(kLeases), (Texts{"A1|", "A2|", "O'Neil|"}));

  update.fakes.files.remove("c:\\orva\\ExportOrva.xls", true);
  update.fakes.dialogs.defaultAnswer = Answer::kNo;
  update.run(sheet({{"A9", "31/03/2030"}}));
  EXPECT_EQ(update.errorFile(), Texts()) << "No leaves the error file alone";
}

TEST(LeaseEnd, TheOldErrorFileIsReplacedUnlessItIsOpen) {
  LeaseEnds update;
  update.fakes.files.put("c:\\orva\\ExportOrva.xls", {"old"});
  update.fakes.files.lock("c:\\orva\\ExportOrva.xls");
  update.run(sheet({{"A9", "31/03/2030"}}));
  EXPECT_EQ(update.fakes.dialogs.lastText(), "Close 'ExportOrva.xls' Excel file and try again");
  EXPECT_EQ(update.screen.errorCount(), 1);
  update.fakes.files.unlock("c:\\orva\\ExportOrva.xls");
  update.run(sheet({{"A9", "31/03/2030"}}));
  EXPECT_EQ(update.errorFile().size(), 2u);
}

TEST(LeaseEnd, PathsSheetsAndColumnsThatCannotBeReadEndTheRun) {
  struct Fault {
    const char* path;
    const char* text;
    MessageIcon icon;
    const char* title;
  };
  const Fault kFaults[] = {
      {" ", "Please select an excel file", MessageIcon::kInformation, "ORVA Import"},
      {"c:\\books\\changes.xlsx", "Please select only an Excel file", MessageIcon::kInformation, "ORVA Import"},
      {"c:\\books\\changesxls", "Please select only an Excel file", MessageIcon::kInformation, "ORVA Import"},
      {"c:\\books\\gone.XLS", "c:\\books\\gone.XLS cannot be opened.", MessageIcon::kCritical, "ORVA"},
      {"c:\\books\\master.xls", "c:\\books\\master.xls has no sheet 'Asset', only 'Master'.", MessageIcon::kCritical,
       "ORVA"},
      {"c:\\books\\columns.xls", "The sheet 'Asset' has no column 'LEOD'.", MessageIcon::kCritical, "ORVA"},
      {"c:\\books\\empty.xls", "The sheet 'Asset' has no column 'Assetid'.", MessageIcon::kCritical, "ORVA"},
  };
  LeaseEnds update;
  update.fakes.workbooks.putTexts("c:\\books\\master.xls", "Master", sheet({}));
  update.fakes.workbooks.putTexts("c:\\books\\columns.xls", "Asset", {{"Assetid"}, {"A1"}});
  update.fakes.workbooks.putTexts("c:\\books\\empty.xls", "Asset", {});
  for (const Fault& fault : kFaults) {
    update.screen.txtExcel.setText(fault.path);
    update.screen.btnImport_Click();
    EXPECT_EQ(update.fakes.dialogs.lastText(), fault.text);
    EXPECT_EQ(update.fakes.dialogs.messages.back().icon, fault.icon) << fault.text;
    EXPECT_EQ(update.fakes.dialogs.messages.back().title, fault.title);
    EXPECT_FALSE(update.screen.errorCount().has_value());
  }
}

TEST(LeaseEnd, ClosingStopsTheCheckingButNotTheUpdating) {
  struct Moment {
    int yield;
    Texts leases;
  };
  // The start, each of the two rows and the end yield, first of the checking, then of the updating.
  const Moment kMoments[] = {{2, {"A1|", "A2|", "O'Neil|"}},
                             {4, {"A1|", "A2|", "O'Neil|"}},
                             {6, {"A1|31/03/2030", "A2|31/03/2030", "O'Neil|"}}};
  for (const Moment& moment : kMoments) {
    LeaseEnds update;
    int closed = 0;
    update.screen.onClose([&] { ++closed; });
    update.fakes.eventLoop.actAtYield(moment.yield, [&] {
      update.screen.btnImport_Click();
      update.screen.btnImportExit_Click();
      EXPECT_EQ(closed, 0);
    });
    update.run(sheet({{"A1", "31/03/2030"}, {"A2", "31/03/2030"}}));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(update.rows(kLeases), moment.leases);
  }
}

TEST(LeaseEnd, BrowsingPutsTheChosenPathIntoTheBox) {
  LeaseEnds update;
  update.screen.txtExcel.setText("c:\\old.xls");
  update.screen.btnBrowse_Click();
  EXPECT_EQ(update.screen.txtExcel.text(), "c:\\old.xls") << "cancelled";
  update.fakes.dialogs.file = "c:\\new.xls";
  update.screen.btnBrowse_Click();
  EXPECT_EQ(update.screen.txtExcel.text(), "c:\\new.xls");
  const FileQuestion& question = update.fakes.dialogs.fileQuestions.at(1);
  EXPECT_EQ(question.title, "Select Excel File");
  EXPECT_EQ(question.defaultPattern, "*.xls");
  EXPECT_EQ(question.filter, "Excel(*.xls)|*.xls|All Files(*.*)|*.*");
}

}  // namespace
}  // namespace orva
