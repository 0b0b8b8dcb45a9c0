#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "wizard/import_run.h"
#include "wizard/query.h"

namespace orva {

enum class MasterId : std::size_t { kDepartment, kVendor, kCostCentre, kUser, kMiscellaneous, kLocation };
inline constexpr std::size_t kMasterCount = 6;

/// What names an entry of a master: its description, or the three levels of a location; for a
/// miscellaneous entry also the master ("M1" to "M5").
struct MasterName {
  std::string_view description = {};
  std::string_view subLocation = {};
  std::string_view physicalLocation = {};
  std::string_view miscellaneousMaster = {};
};

/// The six masters that an asset row refers to by name. Each is opened once a run and looked up in the database
/// for every row.
class Masters {
 public:
  explicit Masters(const ImportRun& run) : run_(run) {}

  /// The code of an entry; one that the company does not have is added with the next code. Throws `ProviderError`.
  std::string findOrCreate(MasterId master, const MasterName& name);

 private:
  Recordset& table(MasterId master);
  std::string create(MasterId master, const MasterName& name);
  std::string nextCode(MasterId master, const MasterName& name) const;

  const ImportRun& run_;
  std::array<std::unique_ptr<Recordset>, kMasterCount> tables_;
};

}  // namespace orva
