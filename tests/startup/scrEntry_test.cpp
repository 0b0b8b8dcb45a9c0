#include "startup/scrEntry.h"

#include <deque>
#include <optional>

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/scripted_database.h"
#include "startup/company_context.h"
#include "startup/orva_ini.h"

namespace orva {
namespace {

/// A program folder C:\P with its data folder beside it; every Access file answers alike.
class StartScreen : public ::testing::Test {
 protected:
  StartScreen() {
    context.programFolder = "C:\\P";
    all.databases.add("Microsoft.Jet.OLEDB.4.0", adapter);
    all.databases.add("SQLOLEDB.1", adapter);
    all.files.put("C:\\P\\Orva.ini", {"C:\\P"});
    all.files.put("C:\\P\\SqlProviderConnection.ini", {"Provider=SQLOLEDB.1;"});
    all.files.put("C:\\P\\Orva.mdb", {"template"});
    companies = database->answer("", "Select * from Company", {{"cocd", "coname"}, {{"AB", "Alpha"}}});
    database->answer("", "select * from parameter", {{"autoassetid"}, {{true}}});
  }

  void load() {
    screen.emplace(all.services, context,
                   EntryExits{.showTransactionImport = [this] { shown += "T"; },
                              .showMasterImport = [this] { shown += "M"; },
                              .endProgram = [this] { shown += "X"; }});
    screen->Load();
  }
  void addCompanyFile(const std::string& code) { all.files.put("C:\\P\\" + code + "Orva.mdb", {"company"}); }
  std::vector<std::string> listed() const {
    std::vector<std::string> codes;
    for (int i = 0; i < screen->lstCompanies.count(); ++i) codes.push_back(screen->lstCompanies.item(i));
    return codes;
  }
  void enter(const std::string& code) {
    screen->cmdNew_Click();
    screen->cmbCocode.setText(code);
    screen->cmdNew_Click();
  }
  std::string lastOpened() const { return database->connections.back().get("Data Source"); }

  FakeServices all;
  std::shared_ptr<ScriptedDatabase> database = std::make_shared<ScriptedDatabase>();
  std::shared_ptr<FaultyAdapter> adapter = std::make_shared<FaultyAdapter>(database);
  std::shared_ptr<ScriptedTable> companies;
  CompanyContext context;
  std::optional<scrEntry> screen;
  std::string shown;
};

TEST_F(StartScreen, ListsAndSelectsTheFirst) {
  addCompanyFile("AB");
  addCompanyFile("XY");
  load();
  EXPECT_EQ(listed().size(), 2U);
  EXPECT_EQ(screen->cmbCocode.text(), listed()[0]);
  EXPECT_TRUE(screen->optTransaction.value());
  EXPECT_FALSE(screen->cmbCocode.visible());
  EXPECT_FALSE(screen->lblcode.visible());
  EXPECT_EQ(screen->lblDataBasePath.caption(), "Current DataBase Path : C:\\P");
  EXPECT_EQ(context.systemDatabase, "C:\\P\\Orva.mdb");
  EXPECT_EQ(context.dialect().upperCase, "Ucase");
  EXPECT_TRUE(all.dialogs.messages.empty());
}

TEST_F(StartScreen, ConfigurationFaults) {
  all.files.remove("C:\\P\\SqlProviderConnection.ini", true);
  addCompanyFile("AB");
  load();
  ASSERT_EQ(all.dialogs.messages.size(), 1U);
  EXPECT_EQ(all.dialogs.messages[0].text, "File [SqlProviderConnection.ini] not found !");
  EXPECT_EQ(all.dialogs.messages[0].title, "Orva");
  EXPECT_EQ(all.dialogs.messages[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(listed().size(), 1U);

  all.files.put("C:\\P\\Orva.ini", {"C:\\Missing"});
  load();
  EXPECT_NE(all.dialogs.lastText().find("C:\\Missing"), std::string::npos);
  EXPECT_TRUE(listed().empty());

  all.files.put("C:\\P\\Orva.ini");
  load();
  EXPECT_NE(all.dialogs.lastText().find("C:\\P\\Orva.ini"), std::string::npos);

  all.files.remove("C:\\P\\Orva.ini", true);
  load();
  EXPECT_EQ(all.dialogs.lastText(),
            "Please check if the Import is in same folder as Orva\n Or if Orva is installed properly");
  EXPECT_EQ(all.dialogs.messages.back().icon, MessageIcon::kNone);
  EXPECT_TRUE(listed().empty());
  EXPECT_FALSE(screen->cmdOpen.enabled());
  EXPECT_TRUE(screen->cmdExit.enabled());
}

TEST_F(StartScreen, ListingStopsAtTheFirstBadFile) {
  for (const char* code : {"A1", "A2", "A3"}) addCompanyFile(code);
  adapter->plan().failAt(DatabaseCall::kConnect, 2, provider_number::kLoginFailed, "Not a valid password.");
  load();
  EXPECT_EQ(listed().size(), 1U);
  ASSERT_EQ(all.dialogs.messages.size(), 1U);
  EXPECT_NE(all.dialogs.lastText().find("Not a valid password."), std::string::npos);
  EXPECT_NE(all.dialogs.lastText().find("Orva.mdb"), std::string::npos);
  EXPECT_EQ(all.dialogs.messages[0].icon, MessageIcon::kCritical);
}

TEST_F(StartScreen, OpensWithEitherImport) {
  addCompanyFile("AB");
  load();
  screen->cmdOpen_Click();
  screen->optTransaction.setValue(false);
  screen->optMaster.setValue(true);
  screen->lstCompanies_KeyPress(scrEntry::kEnterKey);
  screen->lstCompanies_KeyPress('x');
  EXPECT_EQ(shown, "TM");
  EXPECT_EQ(lastOpened(), "C:\\P\\ABOrva.mdb");
  EXPECT_EQ(context.companyName, "Alpha");
  screen->cmdExit_Click();
  EXPECT_EQ(shown, "TMX");
}

TEST_F(StartScreen, OpensNothingWithoutACode) {
  load();
  const std::size_t connections = database->connections.size();
  for (const char* code : {"", "  "}) {
    screen->cmbCocode.setText(code);
    screen->cmdOpen_Click();
    EXPECT_EQ(all.dialogs.lastText(), "Please Select the Company");
  }
  EXPECT_EQ(database->connections.size(), connections);
  EXPECT_EQ(shown, "");
}

TEST_F(StartScreen, CommandLineOpensOnce) {
  const std::pair<const char*, const char*> texts[] = {
      {"/Fabcorva", "abcorva"}, {"/f abc ", "abc"}, {"--x /FORVA1", "ORVA1"}, {"abc", ""}, {"", ""}};
  for (const auto& [line, company] : texts) EXPECT_EQ(commandLineCompany(line), company) << line;

  addCompanyFile("AB");
  addCompanyFile("ABC");
  context.commandLineCompany = "abcorva";
  load();
  screen->Activate();
  screen->Activate();
  EXPECT_EQ(screen->cmbCocode.text(), "ABC");
  EXPECT_EQ(screen->lstCompanies.text(), "ABC");
  EXPECT_EQ(lastOpened(), "C:\\P\\ABCOrva.mdb");
  EXPECT_EQ(shown, "T");
}

TEST_F(StartScreen, CommandLineOpensNothingWithoutAConfiguration) {
  all.files.remove("C:\\P\\Orva.ini", true);
  context.commandLineCompany = "abc";
  load();
  screen->Activate();
  EXPECT_EQ(all.dialogs.messages.size(), 1U);
  EXPECT_TRUE(database->connections.empty());
}

TEST_F(StartScreen, CommandLineCompanyNeedNotBeListed) {
  addCompanyFile("AB");
  context.commandLineCompany = "zz";
  load();
  screen->Activate();
  EXPECT_EQ(lastOpened(), "C:\\P\\ZZOrva.mdb");
}

TEST_F(StartScreen, EntryModeAndCancel) {
  addCompanyFile("AB");
  load();
  std::string focus;
  for (Control* control :
       std::vector<Control*>{&screen->cmdNew, &screen->cmdOpen, &screen->cmbCocode, &screen->lstCompanies}) {
    control->onFocusRequest([&focus, control] { focus = control->name(); });
  }
  screen->cmbCocode_KeyPress(scrEntry::kTabKey);
  EXPECT_EQ(focus, "cmdOpen");
  screen->cmdNew_Click();
  EXPECT_EQ(focus, "cmbCocode");
  EXPECT_EQ(screen->cmdNew.caption() + screen->cmdOpen.caption(), "Sa&ve&Cancel");
  EXPECT_FALSE(screen->cmdExit.enabled() || screen->cmdDelete.enabled());
  EXPECT_TRUE(screen->cmbCocode.visible() && screen->lblcode.visible());
  EXPECT_EQ(screen->cmbCocode.text(), "");
  screen->cmbCocode_KeyPress(scrEntry::kEnterKey);
  EXPECT_EQ(focus, "cmdNew");

  screen->cmdOpen_Click();
  EXPECT_EQ(focus, "lstCompanies");
  EXPECT_EQ(screen->cmdNew.caption() + screen->cmdOpen.caption(), "&New&Open");
  EXPECT_TRUE(screen->cmdExit.enabled() && screen->cmdDelete.enabled());
  EXPECT_FALSE(screen->cmbCocode.visible() || screen->lblcode.visible());
  EXPECT_EQ(screen->cmbCocode.text(), "AB");
}

TEST_F(StartScreen, NewCodesThatAreRefused) {
  addCompanyFile("AB");
  load();
  struct Case {
    const char* code;
    const char* text;
    MessageIcon icon = MessageIcon::kNone;
  };
  const std::string forbidden = "Company Code cannot contain blanks or any of \\ / : * ? \" < > | ; '";
  const Case cases[] = {
      {"", "Company Code Cannot be empty"},
      {" ", "Company Code Cannot be empty"},
      {"ab", "Company Already Exists.", MessageIcon::kInformation},
      {"orvaX", " Company Name Cannot be ORVA. Please Enter Some Other Name"},
      {"ABCDEFGHIJK", "Company Code cannot be longer than 10 characters"},
      {"A B", forbidden.c_str()},
      {"..\\A", forbidden.c_str()},
      {"A\nB", forbidden.c_str()},
      {"A\x7F", forbidden.c_str()},
      {"A\xFFZ", forbidden.c_str()},
      {".A", "Company Code cannot begin with a point"},
  };
  screen->cmdNew_Click();
  for (const Case& test : cases) {
    SCOPED_TRACE(test.code);
    screen->cmbCocode.setText(test.code);
    screen->cmdNew_Click();
    EXPECT_EQ(all.dialogs.lastText(), test.text);
    EXPECT_EQ(all.dialogs.messages.back().icon, test.icon);
    EXPECT_EQ(screen->cmdNew.caption(), "Sa&ve") << "entry mode stays";
  }
}

TEST_F(StartScreen, NewCompany) {
  load();
  enter(" XORVA ");
  EXPECT_EQ(all.dialogs.texts(), (std::vector<std::string>{"Company created Successfully"}));
  EXPECT_EQ(all.dialogs.messages[0].title, "ORVA");
  EXPECT_EQ(all.dialogs.messages[0].icon, MessageIcon::kInformation);
  EXPECT_TRUE(all.files.exists("C:\\P\\XORVAOrva.mdb"));
  EXPECT_EQ(companies->rows.back()[0], Value("XORVA"));
  EXPECT_EQ(listed(), (std::vector<std::string>{"XORVA"}));
  EXPECT_EQ(screen->cmdNew.caption(), "&New");
}

TEST_F(StartScreen, NewCompanyStandsInTheProgramFolder) {
  all.files.addFolder("C:\\D");
  all.files.put("C:\\P\\Orva.ini", {"C:\\D"});
  load();
  enter("AB");
  EXPECT_TRUE(all.files.exists("C:\\P\\ABOrva.mdb"));
  EXPECT_TRUE(listed().empty());
}

TEST_F(StartScreen, FailedCreationLeavesNoFile) {
  load();
  adapter->plan().failAt(DatabaseCall::kStore, 1, provider_number::kDataOverflow, "Too long.");
  enter("AB");
  EXPECT_EQ(all.dialogs.texts(), (std::vector<std::string>{"Too long.\nC:\\P\\ABOrva.MDB"}));
  EXPECT_FALSE(all.files.exists("C:\\P\\ABOrva.mdb"));

  all.files.remove("C:\\P\\Orva.mdb", true);
  enter("AB");
  EXPECT_EQ(all.dialogs.messages.size(), 2U);
  EXPECT_NE(all.dialogs.lastText().find("Orva.MDB"), std::string::npos);
  EXPECT_FALSE(all.files.exists("C:\\P\\ABOrva.mdb"));
}

TEST_F(StartScreen, Delete) {
  load();
  screen->cmdDelete_Click();
  EXPECT_EQ(all.dialogs.lastText(), "Please select any company from the list for Delete");
  EXPECT_EQ(all.dialogs.messages.back().icon, MessageIcon::kInformation);

  addCompanyFile("AB");
  all.files.setReadOnly("C:\\P\\ABOrva.mdb");
  load();
  const std::vector<std::deque<Answer>> noes = {{Answer::kNo}, {Answer::kYes, Answer::kNo}};
  for (const std::deque<Answer>& answers : noes) {
    all.dialogs.answers = answers;
    screen->cmdDelete_Click();
    EXPECT_TRUE(all.files.exists("C:\\P\\ABOrva.mdb"));
  }
  all.dialogs.messages.clear();
  screen->cmdDelete_Click();
  EXPECT_EQ(all.dialogs.texts(),
            (std::vector<std::string>{"Do you want to delete AB", "Are you sure you want to delete AB"}));
  EXPECT_EQ(all.dialogs.messages[0].icon, MessageIcon::kQuestion);
  EXPECT_FALSE(all.files.exists("C:\\P\\ABOrva.mdb"));
  EXPECT_TRUE(listed().empty());
}

TEST_F(StartScreen, DeleteLooksInTheProgramFolder) {
  all.files.put("C:\\P\\Orva.ini", {"C:\\D"});
  all.files.put("C:\\D\\ABOrva.mdb", {"company"});
  load();
  screen->cmdDelete_Click();
  EXPECT_EQ(all.dialogs.texts(), (std::vector<std::string>{"Company Does not Exist"}));
  EXPECT_TRUE(all.files.exists("C:\\D\\ABOrva.mdb"));
}

TEST_F(StartScreen, FailedDeletionIsShown) {
  addCompanyFile("AB");
  load();
  all.files.lock("C:\\P\\ABOrva.mdb");
  screen->cmdDelete_Click();
  EXPECT_NE(all.dialogs.lastText().find("ABOrva.mdb"), std::string::npos);
  EXPECT_EQ(listed(), (std::vector<std::string>{"AB"}));
}

TEST_F(StartScreen, OfAServer) {
  all.files.put("C:\\P\\Orva.ini", {scramble("SERVER=S"), scramble("A=SQL"), scramble("U=sa"), scramble("P=pw")});
  database->answer("master", "Select * from sysdatabases",
                   {{"Name", "FileName"}, {{"ABORVA", "x"}, {"ORVA", "D:\\Data\\Orva.mdf"}}});
  database->answer("ABORVA", "Select * from Company", {{"cocd", "coname"}, {{"AB", "Beta"}}});
  database->answer("ABORVA", "select * from parameter", {{"autoassetid"}, {{true}}});
  load();
  EXPECT_EQ(listed(), (std::vector<std::string>{"AB"}));
  EXPECT_EQ(screen->lblDataBasePath.caption(), "Current DataBase Path : \\\\S\\D\\Data\\");
  EXPECT_EQ(context.systemDatabase, "ORVA");
  EXPECT_EQ(context.dialect().integerConversion, "convert(int,");
  EXPECT_FALSE(screen->cmdNew.enabled() || screen->cmdDelete.enabled());
  screen->cmdOpen_Click();
  EXPECT_EQ(shown, "T");
  EXPECT_EQ(database->connections.back().get("Initial Catalog"), "ABORVA");
  EXPECT_EQ(database->connections.back().get("User ID"), "sa");
}

TEST_F(StartScreen, NothingRunsIntoAListingUnderWay) {
  addCompanyFile("AB");
  addCompanyFile("XY");
  load();
  bool usable = true;
  all.eventLoop.actAtYield(1, [&] { usable = screen->cmdNew.enabled() || screen->cmdOpen.enabled(); });
  screen->Load();
  EXPECT_FALSE(usable);
  EXPECT_TRUE(screen->cmdNew.enabled());
}

}  // namespace
}  // namespace orva
