#pragma once

#include <filesystem>
#include <string_view>

/// Companies and workbooks of the whole imports that are measured.
namespace bench {

/// Assets of the large companies: bought, or taken over with their opening entries.
enum class Stock { kPurchased, kTakenOver };

/// Statements that fill the demonstration company with so many assets, over all its categories. A further category
/// has none.
void writeCompanyScript(const std::filesystem::path& path, int assets, Stock stock);

enum class SheetKind {
  kAcquired,
  /// Acquired assets, three faults a row.
  kAllBad,
  /// Acquired assets in the category that has none yet.
  kOneCategory,
  /// Opening positions in three books.
  kClosing,
  kModifyByAssetId,
  kModifyByPhysicalId,
};

/// A workbook of twenty columns. The rows of a modify mode are spread over the company's `assets`.
void writeAssetSheet(const std::filesystem::path& path, SheetKind kind, int rows, int assets);

}  // namespace bench
