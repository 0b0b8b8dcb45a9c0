#pragma once

#include <span>
#include <string>
#include <string_view>

#include "imports/transactions/transaction_row.h"

namespace orva {

/// The name by which rules know the column that names the asset, whatever its heading.
inline constexpr std::string_view kNamingColumn = "(asset)";

/// A row whose asset is named by its identifier, or by its physical identifier when the user chose that mode: then by
/// the column `PHYID`, or by `ASSETID` where the sheet has no other.
class NamedAssetRow : public TransactionRow {
 public:
  explicit NamedAssetRow(ImportRun& run);

  void begin(int row) override;
  /// {named by}: "Asset Id" or "Physical Id".
  std::string textArgument(std::string_view name) const override;
  /// The identifier of the asset that was found; empty when a physical identifier finds none.
  std::string assetId() const override { return assetId_; }
  /// Several assets have the physical identifier.
  bool isNamedTwice() const { return isNamedTwice_; }

 private:
  bool byPhysicalId_;
  std::string assetId_;
  bool isNamedTwice_ = false;
};

/// The first checks of the naming column: blank, too long, one asset.
std::span<const Rule<NamedAssetRow>> namingRules();

/// The column that names the asset in a mode, which is staged although the catalogue may lack it.
std::span<const std::string_view> namingColumns(AssetMode mode);

}  // namespace orva
