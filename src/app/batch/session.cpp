#include "app/batch/session.h"

#include <cstddef>
#include <utility>

#include "platform/files.h"

namespace orva {

Session::Session(const Streams& streams, const std::string& programFolder)
    : streams_(streams),
      dialogs_(streams.err),
      eventLoop_(wiring_.clock()),
      services_(wiring_.with(dialogs_, shell_, eventLoop_)),
      entry_(services_, company_,
             {.showTransactionImport = [this] { importOpened_ = true; },
              .showMasterImport = [this] { importOpened_ = true; },
              .endProgram = {}}) {
  company_.programFolder = programFolder;
}

bool Session::load(Listing listing) {
  const bool clauseMissing = !services_.files.exists(joinPath(company_.programFolder, "SqlProviderConnection.ini"));
  // The box of a missing provider clause has the icon of a failure and is none. It comes
  // first; a failure of the configuration or of the listing is the only one behind it.
  const std::size_t harmless = clauseMissing ? 1 : 0;
  const int before = dialogs_.criticalCount();
  dialogs_.hold();
  entry_.Load();
  const bool configured = entry_.lstCompanies.enabled();
  const bool tellsAll = !configured || listing == Listing::kWhole;
  dialogs_.resume(tellsAll ? dialogs_.heldCount() : harmless);
  const bool listed = dialogs_.criticalCount() - before == static_cast<int>(harmless);
  return configured && (listed || listing == Listing::kAside);
}

bool Session::open(const std::string& code, ImportScreen screen) {
  if (!load()) return false;
  entry_.optTransaction.setValue(screen == ImportScreen::kTransaction);
  entry_.optMaster.setValue(screen == ImportScreen::kMaster);
  entry_.cmbCocode.setText(code);
  entry_.cmdOpen_Click();
  return importOpened_;
}

void Session::tell(std::string_view text) { dialogs_.show({.text = std::string(text), .title = "ORVA"}); }

std::string cellText(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c == '\t' || c == '\n' || c == '\r') c = ' ';
  }
  return result;
}

std::string tabbed(const std::vector<std::string>& cells) {
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != &cells.front()) line += '\t';
    line += cellText(cell);
  }
  return line;
}

}  // namespace orva
