#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace orva {

/// The two configuration files of the program folder.

/// A line of a server's `Orva.ini` in clear: read from its last character to its first, each
/// code lowered by 30.
std::string unscramble(std::string_view stored);
/// The line that `unscramble` turns into `clear`.
std::string scramble(std::string_view clear);

/// What `Orva.ini` says.
struct OrvaIni {
  bool isSqlServer = false;
  /// Access: line 1 as stored. Empty for a server, whose data folder is found while listing.
  std::string dataFolder = {};
  std::string server = {};
  std::string authenticationKind = {};
  std::string userId = {};
  std::string password = {};
};

/// What the lines of a server's file say; nothing when they describe no server.
std::optional<OrvaIni> serverDescribedBy(const std::vector<std::string>& lines);

/// Reads `path`. A server is described by several lines of which the first, in clear, holds
/// "SERVER="; everything else is an Access installation. Throws `FileError` for a file that
/// cannot be read, is empty, or whose first line can be no folder.
OrvaIni readOrvaIni(const Files& files, const std::string& path);

/// First line of `SqlProviderConnection.ini`; empty for an empty file. Throws `FileError`.
std::string readProviderClause(const Files& files, const std::string& path);

}  // namespace orva
