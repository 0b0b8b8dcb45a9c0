#pragma once

#include <string>
#include <string_view>

namespace orva {

struct CompanyContext;

/// The connection strings, by plain concatenation of fixed texts and context values.

/// The provider of every Access file.
inline constexpr std::string_view kAccessProvider = "Microsoft.Jet.OLEDB.4.0";
/// The one database password of every Access company database and of the template.
inline constexpr const char* kDatabasePassword = "Tbnq";
/// The catalog that lists all others of a server.
inline constexpr std::string_view kMasterCatalog = "master";

/// An Access company database by its full path.
std::string accessConnectionString(std::string_view databaseFile);
/// The same while companies are listed: blanks stand around the path, which the provider accepts.
std::string accessListingConnectionString(std::string_view databaseFile);
/// A catalog on the context's server: the Windows login when the authentication kind is
/// "WINNT" in any case, else the provider clause with user id and password.
std::string serverConnectionString(const CompanyContext& context, std::string_view catalog);

}  // namespace orva
