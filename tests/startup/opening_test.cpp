#include "startup/opening.h"

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/scripted_database.h"
#include "startup/contexts.h"

namespace orva {
namespace {

constexpr std::int32_t kOther = provider_number::kTypeMismatch;

/// A server with the company "AB"; its answers can be changed.
class Opening : public ::testing::Test {
 protected:
  Opening() {
    all.databases.add("SQLOLEDB.1", adapter);
    addCompany("ABORVA", parameters);
  }

  void addCompany(const std::string& catalog, const ScriptedTable& parameterRows) {
    company = database->answer(catalog, "Select * from Company", {{"coname"}, {{"Alpha & Co"}}});
    database->answer(catalog, "select * from parameter", parameterRows);
  }

  OpenResult open(const std::string& code = "AB") { return openCompany(context, all.services, code); }

  FakeServices all;
  std::shared_ptr<ScriptedDatabase> database = std::make_shared<ScriptedDatabase>();
  std::shared_ptr<FaultyAdapter> adapter = std::make_shared<FaultyAdapter>(database);
  std::shared_ptr<ScriptedTable> company;
  ScriptedTable parameters{{"autoassetid", "FARATE1", "farate2", "centre", "users", "validation", "asperrbi"},
                           {{true, true, Value(), false, Value(), true, true}}};
  CompanyContext context = serverContext("WINNT");
};

TEST_F(Opening, FillsTheContext) {
  EXPECT_EQ(open(" AB "), OpenResult::kOpened);
  EXPECT_EQ(context.companyCode, "AB");
  EXPECT_EQ(context.databaseReference, "ABORVA");
  EXPECT_EQ(context.companyName, "Alpha & Co");
  EXPECT_TRUE(context.flags.additionalBook1);
  EXPECT_FALSE(context.flags.additionalBook2);
  EXPECT_FALSE(context.flags.costCentres);
  EXPECT_TRUE(context.flags.users);
  EXPECT_TRUE(context.flags.validation);
  EXPECT_TRUE(context.flags.regulatoryClassification);
  EXPECT_TRUE(all.dialogs.messages.empty());
}

TEST_F(Opening, NullNameBecomesEmpty) {
  company->rows[0][0] = Value();
  context.companyName = "Before";
  EXPECT_EQ(open(), OpenResult::kOpened);
  EXPECT_EQ(context.companyName, "");
}

TEST_F(Opening, FlagsFromOneCompanyToTheNext) {
  addCompany("CDORVA", {parameters.columns, {{Value(), false, true, Value(), false, false, Value()}}});
  addCompany("EFORVA", {{"autoassetid"}, {}});
  addCompany("GHORVA", {{"autoassetid"}, {{false}}});
  EXPECT_EQ(open("AB"), OpenResult::kOpened);
  EXPECT_EQ(open("CD"), OpenResult::kOpened) << "no value counts as on";
  EXPECT_TRUE(context.flags.additionalBook1) << "a book once seen stays";
  EXPECT_TRUE(context.flags.additionalBook2);
  EXPECT_TRUE(context.flags.costCentres);
  EXPECT_FALSE(context.flags.users);
  EXPECT_FALSE(context.flags.validation);
  EXPECT_FALSE(context.flags.regulatoryClassification);
  EXPECT_EQ(open("EF"), OpenResult::kOpened) << "without a row every flag stays";
  EXPECT_EQ(open("GH"), OpenResult::kRefused);
  EXPECT_TRUE(context.flags.costCentres) << "a column that is not there counts as no value";
}

TEST_F(Opening, ReconnectingLeavesTheClassificationFlag) {
  EXPECT_EQ(open(), OpenResult::kOpened);
  database->answer("ABORVA", "select * from parameter",
                   {parameters.columns, {{true, false, false, true, false, false, false}}});
  reconnect(context, all.services);
  EXPECT_TRUE(context.flags.regulatoryClassification);
  EXPECT_FALSE(context.flags.validation);
}

TEST_F(Opening, RefusesWithoutAutomaticIdentifiers) {
  addCompany("ABORVA", {{"autoassetid"}, {}});
  EXPECT_EQ(open(), OpenResult::kRefused) << "no row, and the flag was off";
  const Message& box = all.dialogs.messages.back();
  EXPECT_EQ(box.text, "Sorry.Can't Import data.\nIn your Orva-> Utilities ->Parameter -> Auto Assetid should be Yes.");
  EXPECT_EQ(box.title, "ORVA");
  EXPECT_EQ(box.icon, MessageIcon::kInformation);
}

TEST_F(Opening, FailedConnectionLeavesTheContext) {
  context.companyCode = "AB";
  for (const std::int32_t number : {kOther, provider_number::kUnspecified}) {
    adapter->plan().failAt(DatabaseCall::kConnect, 1, number, "No such server.");
    EXPECT_EQ(open("XY"), OpenResult::kFailed);
    EXPECT_EQ(context.companyCode, "AB");
    EXPECT_EQ(context.databaseReference, "ORVA");
    EXPECT_EQ(all.dialogs.lastText(), "No such server.\nXYORVA");
    EXPECT_EQ(all.dialogs.messages.back().icon, MessageIcon::kCritical);
  }
}

TEST_F(Opening, ErrorNumbersAtEachReading) {
  ASSERT_EQ(open(), OpenResult::kOpened);
  const int opens = adapter->plan().count(DatabaseCall::kOpen);
  struct Case {
    int nthOpen;
    std::int32_t number;
    OpenResult result;
    std::string box;
  };
  const Case cases[] = {
      {opens - 1, provider_number::kSyntaxOrExists, OpenResult::kOpened, ""},
      {opens - 1, provider_number::kErrorsOccurred, OpenResult::kOpened, ""},
      {opens - 1, provider_number::kUnspecified, OpenResult::kOpened, ""},
      {opens - 1, provider_number::kNoSuchTable, OpenResult::kFailed, "Bad.\nABORVA"},
      {opens - 1, provider_number::kNoCurrentRecord, OpenResult::kFailed, "There are no record to display"},
      {opens - 1, 91, OpenResult::kFailed, ""},
      {opens, provider_number::kUnspecified, OpenResult::kOpened, ""},
      {opens, kOther, OpenResult::kFailed, "Bad.\nABORVA"},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.nthOpen * 100 + test.number);
    all.dialogs.messages.clear();
    adapter->plan().failAt(DatabaseCall::kOpen, test.nthOpen, test.number, "Bad.");
    EXPECT_EQ(open(), test.result);
    EXPECT_EQ(all.dialogs.lastText(), test.box);
  }
}

TEST_F(Opening, EmptyCompanyTableIsToldInItsOwnWords) {
  company->rows.clear();
  EXPECT_EQ(open(), OpenResult::kFailed);
  EXPECT_EQ(all.dialogs.texts(), (std::vector<std::string>{"There are no record to display"}));
}

}  // namespace
}  // namespace orva
