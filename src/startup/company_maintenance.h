#pragma once

#include <string>

#include "platform/dialogs.h"
#include "platform/services.h"

namespace orva {

class Files;

/// Making and deleting Access companies. A new company is made in the program folder, beside
/// the template, even where the data folder is another one.

/// Why a new company code is refused; an empty text accepts it.
struct NewCodeFault {
  std::string text;
  MessageIcon icon = MessageIcon::kNone;
};

/// Checks a trimmed code, in the order in which the user is told.
NewCodeFault checkNewCode(const Files& files, const std::string& programFolder, const std::string& code);

/// Copies the template and enters the code into its `Company` table. Throws `FileError` or
/// `ProviderError`; then no file of the company is left.
void createCompany(const Services& services, const std::string& programFolder, const std::string& code);

/// Deletes a company's file, read-only or not, and the files beside it that belong to it.
/// Throws `FileError`.
void deleteCompanyFile(const Services& services, const std::string& path);
/// The same where an earlier failure is the one to report: its own failures are dropped.
void deleteQuietly(const Services& services, const std::string& path);

}  // namespace orva
