#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "wizard/amounts.h"
#include "wizard/import_run.h"

namespace orva {

/// Columns of the results grid that validation fills for posting, after the workbook's own.
namespace asset_column {
inline constexpr std::string_view kDefCode = "DEFCODE";
inline constexpr std::string_view kClassCode = "CLASSCODE";
inline constexpr std::string_view kSubClassCode = "SUBCLASSCODE";
inline constexpr std::string_view kBooks = "CODE AS PER BOOKS";
inline constexpr std::string_view kAdditional1 = "CODE AS PER ADDL1";
inline constexpr std::string_view kAdditional2 = "CODE AS PER ADDL2";
inline constexpr std::string_view kIncomeTax = "CODE AS PER ITAX";
inline constexpr std::string_view kAccountingYear = "ACCYEAR";
inline constexpr std::string_view kFinancialYear = "FINYEAR";
inline constexpr std::string_view kBackdated = "BACKDATED";
}  // namespace asset_column

/// Largest number of characters of an asset identifier.
inline constexpr int kAssetIdentifierSize = 30;

inline constexpr std::string_view kAssetOwnColumns[] = {asset_column::kDefCode,       asset_column::kClassCode,
                                                        asset_column::kSubClassCode,  asset_column::kBooks,
                                                        asset_column::kAdditional1,   asset_column::kAdditional2,
                                                        asset_column::kIncomeTax,     asset_column::kAccountingYear,
                                                        asset_column::kFinancialYear, asset_column::kBackdated};

/// A workbook column that holds a miscellaneous master, and the name ("M1" to "M5") of that master.
struct MiscellaneousColumn {
  int column;
  std::string_view name;
};

/// The sheet's columns of miscellaneous masters: a master's number is its position in `MisMaster`,
/// its column carries its name. Throws `ProviderError`.
std::vector<MiscellaneousColumn> miscellaneousColumns(const ImportRun& run);

}  // namespace orva
