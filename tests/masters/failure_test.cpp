#include <gtest/gtest.h>

#include "masters/master_screen.h"

namespace orva {
namespace {

using Texts = std::vector<std::string>;

struct Import {
  MasterKindId kind;
  Sheet2D sheet;
  /// Takes the rows away again.
  const char* reset;
  const char* query;
  /// Rows of the query after the whole import, in the order of the sheet.
  Texts rows;
};

const Import kImports[] = {
    {MasterKindId::kDepartment,
     {{"DeptCode", "DeptName"}, {"D1", "Accounts"}, {"D2", "Sales"}, {"D3", "Purchase"}},
     "delete from Dept where Deptcode <> '0007'",
     "select Deptcode, DeptName from Dept where Deptcode <> '0007' order by Deptcode",
     {"D1|Accounts", "D2|Sales", "D3|Purchase"}},
    {MasterKindId::kLocation,
     {{"MAINLOC", "SUBLOC", "PHYLOC"}, {"Pune", "Shop", "Bay 1"}, {"Pune", "Shop", "Bay 2"}},
     "delete from Location where recordid > 12",
     "select recordid, MainLocation, SubLocation, PhysicalLocation, cocd from Location where recordid > 12 order by "
     "recordid",
     {"13|Pune|Shop|Bay 1|K1", "14|Pune|Shop|Bay 2|K1"}},
};

/// Imports the sheet once for every call to the database, which fails; then what is left of it.
void failAtEveryCall(const Import& import) {
  MasterScreen master;
  const std::string name(masterKind(import.kind).batchName);
  int nth = 1;
  for (;; ++nth) {
    master.prepare({import.reset});
    master.fakes.dialogs.messages.clear();
    master.adapter->plan().failAtCall(nth, provider_number::kUnspecified, "The provider failed.");
    master.read(import.kind, import.sheet);
    master.finish();
    master.adapter->plan().failAtCall(0, 0);
    reconnect(master.company, master.fakes.services);
    const Texts texts = master.fakes.dialogs.texts();
    if (texts.empty()) break;
    const std::string place = name + ", call " + std::to_string(nth);
    EXPECT_EQ(texts, Texts{"The provider failed."}) << place;
    const Texts stored = master.rows(import.query);
    const auto count = static_cast<std::ptrdiff_t>(stored.size());
    EXPECT_EQ(stored, Texts(import.rows.begin(), import.rows.begin() + count)) << place;
    const bool isWhole = stored == import.rows;
    const std::string told = "The provider failed.\n" + std::to_string(count) + " of " +
                             std::to_string(import.rows.size()) + " rows were posted.";
    if (master.screen.page() == WizardPage::kFinish) {
      EXPECT_EQ(master.screen.txtMsg.text(), isWhole ? "Imported successfully" : told) << place;
    } else {
      EXPECT_EQ(count, 0) << place;
    }
    if (isWhole) continue;
    Sheet2D rest = import.sheet;
    rest.erase(rest.begin() + 1, rest.begin() + 1 + count);
    master.import(import.kind, rest);
    EXPECT_EQ(master.rows(import.query), import.rows) << "again after " << place;
  }
  EXPECT_GT(nth, 20) << "every call was the failing one";
  EXPECT_EQ(master.rows(import.query), import.rows);
}

TEST(FailureAtEveryCall, OfAMasterImportKeepsTheRowsThatAreTold) {
  for (const Import& import : kImports) failAtEveryCall(import);
}

}  // namespace
}  // namespace orva
