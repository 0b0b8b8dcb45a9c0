#include <gtest/gtest.h>

#include <functional>

#include "updates/frmUpdateLEOD.h"
#include "updates/frmUpdateRateAndMethod.h"
#include "updates/update_screen.h"

namespace orva {
namespace {

struct Update {
  Rows sheet;
  /// Makes the assets as they were.
  const char* reset;
  const char* query;
  /// Rows of the query before and after, in the order of the sheet.
  Texts before, after;
};

/// Runs the update once for every call to the database, which fails; then the whole again.
template <class Screen>
void failAtEveryCall(const Update& update) {
  UpdateScreen<Screen> company;
  int nth = 1;
  for (;; ++nth) {
    company.prepare({update.reset});
    company.fakes.dialogs.messages.clear();
    company.adapter->plan().failAtCall(nth, provider_number::kUnspecified, "The provider failed.");
    company.run(update.sheet);
    company.adapter->plan().failAtCall(0, 0);
    reconnect(company.company, company.fakes.services);
    if (company.screen.errorCount()) break;
    const std::string place = "call " + std::to_string(nth);
    const auto updated = static_cast<std::size_t>(company.screen.updatedCount());
    Texts expected = update.before;
    std::copy_n(update.after.begin(), updated, expected.begin());
    EXPECT_EQ(company.rows(update.query), expected) << place;
    const Texts texts = company.fakes.dialogs.texts();
    EXPECT_TRUE(company.screen.btnImport.enabled()) << place;
    ASSERT_FALSE(texts.empty()) << place;
    EXPECT_EQ(texts[0], "The provider failed.") << place;
    if (updated > 0 || texts.size() > 1) {
      const std::string told = " of " + std::to_string(update.after.size()) + " rows were updated before the failure.";
      EXPECT_EQ(texts, (Texts{"The provider failed.", std::to_string(updated) + told})) << place;
    }
    company.run(update.sheet);
    EXPECT_EQ(company.rows(update.query), update.after) << "again after " << place;
  }
  EXPECT_GT(nth, 15) << "every call was the failing one";
  EXPECT_EQ(company.rows(update.query), update.after);
}

TEST(FailureAtEveryCall, LeaseEndsAreStoredUpToTheRowThatIsTold) {
  failAtEveryCall<frmUpdateLEOD>(
      {{{"Assetid", "LEOD"}, {"A1", "31/03/2030"}, {"A2", "31/03/2031"}, {"O'Neil", "31/03/2032"}},
       "update Asset set LeaseDate = #03/31/2028#",
       "select Assetid, LeaseDate from Asset order by Assetid",
       {"A1|31/03/2028", "A2|31/03/2028", "O'Neil|31/03/2028"},
       {"A1|31/03/2030", "A2|31/03/2031", "O'Neil|31/03/2032"}});
}

TEST(FailureAtEveryCall, RatesAndMethodsAreStoredTogether) {
  failAtEveryCall<frmUpdateRateAndMethod>(
      {{{"Assetid", "OVERRIDERATE", "OVERRIDEMETHOD"},
        {"A1", "5", "SLM"},
        {"A2", "7.5", "wdv"},
        {"O'Neil", "0", "WDV"}},
       "update Asset set FlgOverride = 'N', OverrideRate = 1, OverrideMthd = 'SLM'",
       "select Assetid, FlgOverride, OverrideRate, OverrideMthd from Asset order by Assetid",
       {"A1|N|1|SLM", "A2|N|1|SLM", "O'Neil|N|1|SLM"},
       {"A1|Y|5|SLM", "A2|Y|7.5|wdv", "O'Neil|Y|0|WDV"}});
}

}  // namespace
}  // namespace orva
