#include "startup/company_listing.h"

#include <vector>

#include "platform/database.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/company_context.h"
#include "startup/database_naming.h"

namespace orva {
namespace {

constexpr std::string_view kProductName = "ORVA";

void proveReadable(const DatabaseRegistry& databases, const std::string& connectionString) {
  const auto connection = databases.connect(connectionString, CursorLocation::kClient);
  connection->open("Select * from Company");
}

void listAccessCompanies(const CompanyContext& context, const Services& services, const CompanyFound& found) {
  for (const std::string& name : services.files.list(context.dataFolder)) {
    if (isCompanyFile(name)) {
      const std::string path = joinPath(context.dataFolder, name);
      namingTheDatabase(path, [&] { proveReadable(services.databases, accessListingConnectionString(path)); });
      found(companyCodeOf(baseName(name)));
    }
    services.eventLoop.yield();
  }
}

struct Catalog {
  std::string name;
  std::string fileName;
};

std::vector<Catalog> readCatalogs(const CompanyContext& context, const Services& services) {
  const auto connection =
      services.databases.connect(serverConnectionString(context, kMasterCatalog), CursorLocation::kClient);
  const auto rows = connection->open("Select * from sysdatabases");
  std::vector<Catalog> catalogs;
  for (; !rows->eof(); rows->moveNext()) {
    catalogs.push_back({nullToText(rows->get("Name")), nullToText(rows->get("FileName"))});
  }
  return catalogs;
}

void listServerCompanies(CompanyContext& context, const Services& services, const CompanyFound& found) {
  for (const Catalog& catalog : readCatalogs(context, services)) {
    if (equalsNoCase(catalog.name, kProductName)) {
      context.dataFolder = serverDataFolder(context.server, catalog.fileName);
    } else if (isCompanyName(catalog.name)) {
      namingTheDatabase(catalog.name,
                        [&] { proveReadable(services.databases, serverConnectionString(context, catalog.name)); });
      found(companyCodeOf(catalog.name));
    }
  }
}

}  // namespace

bool isCompanyName(std::string_view name) {
  return name.size() > kProductName.size() && endsWithNoCase(name, kProductName) &&
         name.find(' ') == std::string_view::npos;
}

bool isCompanyFile(std::string_view fileName) {
  return equalsNoCase(extensionName(fileName), "MDB") && isCompanyName(baseName(fileName));
}

std::string companyCodeOf(std::string_view name) {
  return std::string(name.substr(0, name.size() - kProductName.size()));
}

std::string companyFile(std::string_view folder, std::string_view code) {
  return joinPath(folder, std::string(code) + "Orva.mdb");
}

std::string serverDataFolder(std::string_view server, std::string_view systemDatabaseFile) {
  std::string folder(systemDatabaseFile.substr(0, systemDatabaseFile.rfind('\\') + 1));
  if (const std::size_t colon = folder.find(':'); colon != std::string::npos) folder.erase(colon, 1);
  return "\\\\" + std::string(server) + "\\" + folder;
}

void listCompanies(CompanyContext& context, const Services& services, const CompanyFound& found) {
  if (context.isSqlServer) {
    listServerCompanies(context, services, found);
  } else {
    listAccessCompanies(context, services, found);
  }
}

}  // namespace orva
