#pragma once

#include <string>
#include <vector>

#include "platform/access/access_database.h"

namespace orva::access {

/// Something in a file that contradicts the format or the rest of the file.
struct StructureFault {
  std::string table = {};  // empty when it concerns the whole file
  PageNumber page = AccessFileError::kNoPage;
  std::string text = {};
  /// True for what the database engine itself leaves behind at times and what
  /// costs nothing but room: pages that nobody uses, a row count that is off.
  bool isHarmless = false;

  /// "Table 'Assets', page 17: ..."
  std::string toText() const;
};

/// Checks the whole file: every page belongs to one owner or is free, none is
/// lost; rows and long values can be read and are referred to once; row counts;
/// index trees are in order and hold exactly the keys of the rows.
/// Returns at most `kMostFaults` faults; a list without one that matters is a sound file.
inline constexpr std::size_t kMostFaults = 200;
std::vector<StructureFault> checkStructure(AccessDatabase& database);

/// True when no fault matters.
bool isSound(const std::vector<StructureFault>& faults);

/// The same for a file of this machine that is not open yet, whatever its password.
/// A file that is missing, in use or no Access database is one fault.
std::vector<StructureFault> checkFile(const std::string& path);

}  // namespace orva::access
