#include "startup/setup.h"

#include <filesystem>
#include <system_error>

#include "app/batch/commands.h"
#include "platform/files.h"
#include "platform/local/path_lookup.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

void makeFolder(const std::string& folder) {
  std::error_code fault;
  std::filesystem::create_directories(findPath(folder), fault);
  if (fault) throw FileError("Cannot make the folder " + folder + ": " + fault.message() + ".");
}

}  // namespace

Exit runSetup(Session& session) {
  const std::string& folder = session.company().programFolder;
  try {
    makeFolder(folder);
    for (const std::string& name : setUpProgramFolder(folder, session.services())) {
      session.out() << pathText(findPath(joinPath(folder, name))) << '\n';
    }
    return Exit::kDone;
  } catch (const std::exception& error) {
    reportError(session.dialogs(), error);
    return Exit::kFailed;
  }
}

}  // namespace orva
