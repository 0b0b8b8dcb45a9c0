#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/batch/batch.h"
#include "app/wiring.h"
#include "platform/console/console_dialogs.h"
#include "platform/console/null_shell.h"
#include "platform/console/quiet_event_loop.h"
#include "startup/company_context.h"
#include "startup/scrEntry.h"

namespace orva {

/// Which import a company is opened for.
enum class ImportScreen { kTransaction, kMaster };

/// What a command makes of the list of companies.
enum class Listing {
  /// It needs all of it: a company that cannot be listed is a failure.
  kWhole,
  /// Another company's fault is none of its business, and is not told.
  kAside,
};

/// One unattended run: the services with a console in place of windows, and the start screen
/// on the program folder.
class Session {
 public:
  Session(const Streams& streams, const std::string& programFolder);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Runs start-up. False when the program folder is not usable or the list is not what the
  /// command needs; the user was told.
  bool load(Listing listing = Listing::kAside);
  /// Chooses the screen and presses "Open" for a company. False when no import screen opened; the user was told.
  bool open(const std::string& code, ImportScreen screen = ImportScreen::kTransaction);
  /// Says something in the manner of a message box.
  void tell(std::string_view text);

  const Streams& streams() const { return streams_; }
  std::ostream& out() const { return streams_.out; }
  Services& services() { return services_; }
  const ImportRegistry& importKinds() const { return wiring_.importKinds(); }
  ConsoleDialogs& dialogs() { return dialogs_; }
  QuietEventLoop& eventLoop() { return eventLoop_; }
  CompanyContext& company() { return company_; }
  scrEntry& entry() { return entry_; }

 private:
  Streams streams_;
  Wiring wiring_;
  ConsoleDialogs dialogs_;
  NullShell shell_;
  QuietEventLoop eventLoop_;
  Services services_;
  CompanyContext company_;
  bool importOpened_ = false;
  scrEntry entry_;
};

/// `text` as one cell of a tab-separated line: tabs and line breaks become blanks.
std::string cellText(std::string_view text);
/// The cells of one line, joined by tabs.
std::string tabbed(const std::vector<std::string>& cells);

}  // namespace orva
