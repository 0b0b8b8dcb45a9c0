#include "startup/company_maintenance.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/values/text.h"
#include "startup/company_listing.h"
#include "startup/connection_strings.h"
#include "startup/database_naming.h"
#include "startup/windows_text.h"

namespace orva {
namespace {

/// Size of `Company.cocd` and of every other column that holds the code.
constexpr std::size_t kCodeSize = 10;
/// A blank would keep the file out of the list; the others name no file or end a clause of
/// the connection string.
bool isForbidden(char character) {
  const bool isControl = static_cast<unsigned char>(character) < ' ' || character == '\x7F';
  return isControl || std::string_view(" \\/:*?\"<>|;'").find(character) != std::string_view::npos;
}

void removeCompanions(const Services& services, const std::string& path) {
  for (const std::string& companion : services.databases.companionFiles(kAccessProvider, path)) {
    services.files.remove(companion, true);
  }
}

/// A copy that is no company database comes of a template that is none.
std::unique_ptr<Connection> connectToCopy(const Services& services, const std::string& path,
                                          const std::string& original) {
  try {
    return services.databases.connect(accessConnectionString(path), CursorLocation::kClient);
  } catch (const ProviderError& error) {
    throw ProviderError(error.number(), error.description() + "\nIt was copied from " + original);
  }
}

void enterCode(Connection& connection, const std::string& code) {
  const auto rows = connection.open("Select * from Company", CursorKind::kKeyset, LockKind::kPessimistic);
  rows->addNew();
  rows->set("cocd", code);
  rows->update();
}

}  // namespace

NewCodeFault checkNewCode(const Files& files, const std::string& programFolder, const std::string& code) {
  if (code.empty()) return {"Company Code Cannot be empty"};
  if (files.exists(companyFile(programFolder, code))) return {"Company Already Exists.", MessageIcon::kInformation};
  if (toUpper(code).starts_with("ORVA")) return {" Company Name Cannot be ORVA. Please Enter Some Other Name"};
  if (characterCount(code) > kCodeSize) return {"Company Code cannot be longer than 10 characters"};
  if (std::ranges::any_of(code, isForbidden) || !isUtf8(code)) {
    return {"Company Code cannot contain blanks or any of \\ / : * ? \" < > | ; '"};
  }
  // Such a file is hidden on some systems.
  if (code.starts_with('.')) return {"Company Code cannot begin with a point"};
  return {};
}

void createCompany(const Services& services, const std::string& programFolder, const std::string& code) {
  const std::string path = joinPath(programFolder, code + "Orva.MDB");
  removeCompanions(services, path);
  const std::string original = joinPath(programFolder, "Orva.MDB");
  services.files.copy(original, path);
  try {
    namingTheDatabase(path, [&] { enterCode(*connectToCopy(services, path, original), code); });
  } catch (const std::exception&) {
    deleteQuietly(services, path);
    throw;
  }
}

void deleteCompanyFile(const Services& services, const std::string& path) {
  services.files.remove(path, true);
  removeCompanions(services, path);
}

void deleteQuietly(const Services& services, const std::string& path) {
  try {
    deleteCompanyFile(services, path);
  } catch (const std::exception&) {
  }
}

}  // namespace orva
