#include "app/batch/commands.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/company_listing.h"

namespace orva {

Exit runCompanies(Session& session) {
  const bool complete = session.load(Listing::kWhole);
  const ListBox& list = session.entry().lstCompanies;
  for (int index = 0; index < list.count(); ++index) session.out() << list.item(index) << '\n';
  return complete ? Exit::kDone : Exit::kFailed;
}

Exit runNew(Session& session, const NewOptions& options) {
  scrEntry& entry = session.entry();
  if (!session.load()) return Exit::kFailed;
  if (!entry.cmdNew.enabled()) {
    session.tell("Companies on a server cannot be made here.");
    return Exit::kFailed;
  }
  const std::string file = companyFile(session.company().programFolder, trim(options.code));
  const bool wasThere = session.services().files.exists(file);
  entry.cmdNew_Click();
  entry.cmbCocode.setText(options.code);
  entry.cmdNew_Click();
  return !wasThere && session.services().files.exists(file) ? Exit::kDone : Exit::kFailed;
}

Exit runDelete(Session& session, const DeleteOptions& options) {
  scrEntry& entry = session.entry();
  if (!session.load()) return Exit::kFailed;
  if (!entry.cmdDelete.enabled()) {
    session.tell("Companies on a server cannot be deleted here.");
    return Exit::kFailed;
  }
  session.dialogs().setAnswerRule([&](const Message&) { return options.yes ? Answer::kYes : Answer::kNo; });
  const auto select = [&] {
    entry.lstCompanies.setText(trim(options.code));
    entry.lstCompanies_Click();
    return entry.lstCompanies.selected() >= 0;
  };
  // A file that cannot be listed hides those behind it: then the user must know of it.
  if (!select()) {
    if (!session.load(Listing::kWhole)) return Exit::kFailed;
    select();
  }
  const std::string file = companyFile(session.company().programFolder, trim(options.code));
  const bool wasThere = session.services().files.exists(file);
  entry.cmdDelete_Click();
  return wasThere && !session.services().files.exists(file) ? Exit::kDone : Exit::kFailed;
}

}  // namespace orva
