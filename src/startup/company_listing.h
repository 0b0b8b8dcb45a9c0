#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/services.h"

namespace orva {

struct CompanyContext;

/// True when a file's base name or a catalog's name is that of a company database: it ends
/// in "ORVA" in any case, holds no blank, and has a code in front (the name "ORVA" alone is
/// the system database).
bool isCompanyName(std::string_view name);
/// The same for a file name, whose extension must be "MDB" in any case.
bool isCompanyFile(std::string_view fileName);
/// The name without its last four characters.
std::string companyCodeOf(std::string_view name);

/// Full path of the Access company database `code` + "Orva.mdb" in a folder.
std::string companyFile(std::string_view folder, std::string_view code);

/// Data folder of a server: "\\" + server + "\" + the folder of the system database's file,
/// last backslash included, its first ":" removed.
std::string serverDataFolder(std::string_view server, std::string_view systemDatabaseFile);

using CompanyFound = std::function<void(const std::string& code)>;

/// Calls `found` for every company in the order of the file system or of the server, after
/// its `Company` table was read as proof. A server also gives the context its data folder.
/// Throws what fails first (`ProviderError`, `FileError`); companies found before it stand.
void listCompanies(CompanyContext& context, const Services& services, const CompanyFound& found);

}  // namespace orva
