#include "startup/opening.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <tuple>
#include <utility>

#include "platform/dialogs.h"
#include "platform/values/text.h"
#include "startup/company_context.h"
#include "startup/company_listing.h"
#include "startup/database_naming.h"
#include "startup/schema/upgrade.h"
#include "startup/shared_error_report.h"

namespace orva {
namespace {

constexpr std::int32_t kPassedOver[] = {provider_number::kSyntaxOrExists, provider_number::kErrorsOccurred,
                                        provider_number::kUnspecified};

/// Runs one step of Open. Failures that an upgrade under way may cause do not end Open.
template <typename Step>
void passingOver(Step step) {
  try {
    step();
  } catch (const ProviderError& error) {
    if (std::ranges::find(kPassedOver, error.number()) == std::end(kPassedOver)) throw;
  }
}

/// A company that cannot be connected to must not look like the one that is open.
void connect(CompanyContext& context, const Services& services, const std::string& code) {
  const auto before = std::pair(context.companyCode, context.databaseReference);
  context.companyCode = code;
  context.databaseReference = context.isSqlServer ? code + "ORVA" : companyFile(context.dataFolder, code);
  try {
    openCompanyConnection(context, services);
  } catch (...) {
    std::tie(context.companyCode, context.databaseReference) = before;
    throw;
  }
}

/// Proves before the upgrade that the file is a company's and can be written: a foreign file must
/// stay as it is, and in a locked one every statement of the upgrade would wait and be passed over.
void proveUsable(CompanyContext& context) {
  if (!context.isSqlServer) context.connection->execute("update Company set cocd=cocd where 1=0");
}

void readCompanyName(CompanyContext& context) {
  context.companyName.clear();
  const auto rows = context.connection->open("Select * from Company");
  context.companyName = nullToText(rows->get("coname"));
}

OpenResult openSteps(CompanyContext& context, const Services& services, const std::string& code) {
  connect(context, services, code);
  proveUsable(context);
  upgradeSchema(context, services.dialogs);
  passingOver([&] { readCompanyName(context); });
  passingOver([&] { readParameterFlags(context, FlagReading::kAtOpen); });
  if (context.flags.automaticIdentifiers) return OpenResult::kOpened;
  services.dialogs.show(
      {.text = "Sorry.Can't Import data.\nIn your Orva-> Utilities ->Parameter -> Auto Assetid should be Yes.",
       .title = "ORVA",
       .icon = MessageIcon::kInformation});
  return OpenResult::kRefused;
}

}  // namespace

OpenResult openCompany(CompanyContext& context, const Services& services, const std::string& code) {
  const std::string trimmed(trim(code));
  const std::string database = context.isSqlServer ? trimmed + "ORVA" : companyFile(context.dataFolder, trimmed);
  OpenResult result = OpenResult::kFailed;
  try {
    namingTheDatabase(database, [&] { result = openSteps(context, services, trimmed); });
  } catch (const std::exception& error) {
    reportError(services.dialogs, error);
  }
  return result;
}

}  // namespace orva
