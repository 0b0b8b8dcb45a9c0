#include <filesystem>
#include <system_error>

#include "app/batch/commands.h"
#include "platform/database.h"
#include "platform/files.h"
#include "platform/local/path_lookup.h"
#include "startup/connection_strings.h"
#include "startup/schema/template_database.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

constexpr std::string_view kProviderClause = "Provider=SQLOLEDB.1;Persist Security Info=False;";

void writeWhereAbsent(Session& session, const std::string& path, std::string_view line) {
  if (session.services().files.exists(path)) return;
  session.services().files.writeLines(path, {std::string(line)});
  session.out() << path << '\n';
}

/// A template that was begun and not finished must not be taken for one.
void removeParts(Session& session, const std::string& path) {
  session.services().files.remove(path, true);
  for (const std::string& companion : session.services().databases.companionFiles(kAccessProvider, path)) {
    session.services().files.remove(companion, true);
  }
}

void makeTemplateWhereAbsent(Session& session, const std::string& path) {
  if (session.services().files.exists(path)) return;
  try {
    createTemplate(session.services().databases, path);
  } catch (...) {
    removeParts(session, path);
    throw;
  }
  session.out() << path << '\n';
}

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
    writeWhereAbsent(session, joinPath(folder, "Orva.ini"), folder);
    writeWhereAbsent(session, joinPath(folder, "SqlProviderConnection.ini"), kProviderClause);
    makeTemplateWhereAbsent(session, joinPath(folder, "Orva.mdb"));
    return Exit::kDone;
  } catch (const std::exception& error) {
    reportError(session.dialogs(), error);
    return Exit::kFailed;
  }
}

}  // namespace orva
