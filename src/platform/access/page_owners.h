#pragma once

#include <string>
#include <vector>

#include "platform/access/structure_check.h"

namespace orva::access {

/// Collects faults and who owns which page, while a file is checked.
class PageOwners {
 public:
  explicit PageOwners(AccessDatabase& database);

  void fault(const std::string& table, PageNumber page, std::string text);
  /// A fault that costs nothing but room.
  void note(const std::string& table, PageNumber page, std::string text);
  /// A page belongs to a part of a table (or to the file: no table).
  void claim(const std::string& table, PageNumber page, const char* part);
  /// Pages of usage maps may be claimed by several tables.
  void claimMap(const std::string& table, const UsageMap& map);
  /// Reports pages that belong to nobody though they are not free, and free pages in use.
  void reportLostPages();
  /// Runs a part of the check; damage that it meets becomes a fault.
  template <typename Action>
  void guard(const std::string& table, PageNumber page, Action&& action) {
    try {
      action();
    } catch (const AccessFileError& error) {
      fault(table, error.page(), textWithoutPlace(error));
    } catch (const Damage& damage) {
      fault(table, page, damage.what());
    }
  }

  std::vector<StructureFault> takeFaults() { return std::move(faults_); }

 private:
  std::string textWithoutPlace(const AccessFileError& error) const;

  enum class Claim : unsigned char { kNone, kOne, kMapPage };

  AccessDatabase& database_;
  std::vector<Claim> claims_;
  std::vector<StructureFault> faults_;
};

/// Checks data pages, rows and long values of one table.
void checkRows(AccessDatabase& database, Table& table, PageOwners& owners);
/// Checks the trees of one table against its rows.
void checkIndexes(AccessDatabase& database, Table& table, PageOwners& owners);

}  // namespace orva::access
