#pragma once

#include <string>
#include <vector>

#include "platform/services.h"

namespace orva {

/// Makes a folder usable where nothing has been installed: writes `Orva.ini` (its first line
/// names the folder itself as the data folder), `SqlProviderConnection.ini` and the template
/// `Orva.mdb`, each only where it is absent. Returns the names of the files that it wrote.
/// Throws `FileError` or `ProviderError`; a file is there whole or not at all.
std::vector<std::string> setUpProgramFolder(const std::string& programFolder, const Services& services);

}  // namespace orva
