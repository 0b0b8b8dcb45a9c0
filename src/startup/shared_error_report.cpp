#include "startup/shared_error_report.h"

#include <string>

#include "platform/database.h"

namespace orva {
namespace {

constexpr std::int32_t kObjectNotSet = 91;

std::string reportText(const std::exception& error) {
  const auto* provider = dynamic_cast<const ProviderError*>(&error);
  if (provider == nullptr) return error.what();
  if (provider->number() == provider_number::kNoCurrentRecord) return "There are no record to display";
  return provider->number() == kObjectNotSet ? std::string() : provider->description();
}

}  // namespace

void reportError(Dialogs& dialogs, const std::exception& error) {
  const std::string text = reportText(error);
  if (!text.empty()) dialogs.show({.text = text, .title = "ORVA", .icon = MessageIcon::kCritical});
}

}  // namespace orva
