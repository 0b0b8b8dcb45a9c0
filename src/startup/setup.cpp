#include "startup/setup.h"

#include "platform/database.h"
#include "platform/files.h"
#include "startup/company_maintenance.h"
#include "startup/schema/template_database.h"

namespace orva {
namespace {

/// The template grows under this name, which the list of companies does not take for one.
constexpr std::string_view kUnfinishedTemplate = "Orva.mdb.part";

void writeTemplate(const std::string& programFolder, const Services& services) {
  const std::string unfinished = joinPath(programFolder, kUnfinishedTemplate);
  deleteCompanyFile(services, unfinished);
  try {
    createTemplate(services.databases, unfinished);
    services.files.copy(unfinished, joinPath(programFolder, "Orva.mdb"));
  } catch (...) {
    deleteQuietly(services, unfinished);
    throw;
  }
  deleteCompanyFile(services, unfinished);
}

}  // namespace

std::vector<std::string> setUpProgramFolder(const std::string& programFolder, const Services& services) {
  std::vector<std::string> written;
  const auto writeIfAbsent = [&](const std::string& name, const auto& write) {
    if (services.files.exists(joinPath(programFolder, name))) return;
    write(joinPath(programFolder, name));
    written.push_back(name);
  };
  writeIfAbsent("Orva.ini", [&](const std::string& path) { services.files.writeLines(path, {programFolder}); });
  writeIfAbsent("SqlProviderConnection.ini", [&](const std::string& path) {
    services.files.writeLines(path, {"Provider=SQLOLEDB.1;Persist Security Info=False;"});
  });
  writeIfAbsent("Orva.mdb", [&](const std::string&) { writeTemplate(programFolder, services); });
  return written;
}

}  // namespace orva
