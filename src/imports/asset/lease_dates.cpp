#include "imports/asset/lease_dates.h"

#include <string>

#include "imports/asset/posting/after_posting.h"

namespace orva {

void calculateLeaseDates(Dialogs& dialogs, const CompanyContext& company) {
  constexpr const char* kTitle = "ORVA Import";
  const Message question{.text =
                             "Assets without a life and a lease end date get the life of their category, and the "
                             "lease end date that follows from it.\nDo you want to continue?",
                         .title = kTitle,
                         .icon = MessageIcon::kQuestion,
                         .buttons = MessageButtons::kYesNo};
  if (dialogs.show(question) != Answer::kYes) return;
  const int changed = fillLifeAndLeaseDate(company);
  dialogs.show({.text = std::to_string(changed) + (changed == 1 ? " asset was" : " assets were") + " changed.",
                .title = kTitle,
                .icon = MessageIcon::kInformation});
}

}  // namespace orva
