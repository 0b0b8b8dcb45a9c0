#include "startup/connection_strings.h"

#include <initializer_list>

#include "platform/values/text.h"
#include "startup/company_context.h"

namespace orva {
namespace {

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

}  // namespace

std::string accessConnectionString(std::string_view databaseFile) {
  return joined({"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=", databaseFile,
                 ";Persist Security Info=False;Jet OLEDB:Database Password=", kDatabasePassword, ";"});
}

std::string accessListingConnectionString(std::string_view databaseFile) {
  return joined({"Provider=Microsoft.Jet.OLEDB.4.0;Data Source= ", databaseFile,
                 " ;Persist Security Info=False;Jet OLEDB:Database Password=", kDatabasePassword, ";"});
}

std::string serverConnectionString(const CompanyContext& context, std::string_view catalog) {
  if (equalsNoCase(context.authenticationKind, "WINNT")) {
    return joined({"Provider=SQLOLEDB.1;Integrated Security = SSPI;Persist Security Info=False;Initial Catalog=",
                   catalog, ";Data Source=", context.server});
  }
  return joined({context.providerClause, "User ID=", context.userId, ";Password=", context.password,
                 ";Initial Catalog=", catalog, ";Data Source=", context.server});
}

std::string companyConnectionString(const CompanyContext& context) {
  return context.isSqlServer ? serverConnectionString(context, context.databaseReference)
                             : accessConnectionString(context.databaseReference);
}

}  // namespace orva
