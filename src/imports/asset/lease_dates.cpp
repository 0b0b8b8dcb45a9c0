#include "imports/asset/lease_dates.h"

#include <string>

#include "imports/asset/posting/after_posting.h"
#include "platform/dialogs.h"

namespace orva {

void calculateLeaseDates(const Services& services, CompanyContext& company) {
  constexpr const char* kTitle = "ORVA Import";
  const Message question{.text =
                             "Assets without a life and a lease end date get the life of their category, and the "
                             "lease end date that follows from it.\nDo you want to continue?",
                         .title = kTitle,
                         .icon = MessageIcon::kQuestion,
                         .buttons = MessageButtons::kYesNo};
  if (services.dialogs.show(question) != Answer::kYes) return;
  reconnect(company, services);
  const int changed = fillLifeAndLeaseDate(company);
  services.dialogs.show({.text = std::to_string(changed) + (changed == 1 ? " asset was" : " assets were") + " changed.",
                         .title = kTitle,
                         .icon = MessageIcon::kInformation});
}

}  // namespace orva
