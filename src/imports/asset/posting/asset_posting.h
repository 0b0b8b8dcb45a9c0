#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "imports/asset/posting/category_creation.h"
#include "imports/asset/posting/masters.h"
#include "imports/asset/posting/opening_depreciation.h"
#include "imports/asset/posting/shifted_in.h"
#include "imports/asset/posting/user_defined_values.h"
#include "wizard/posting_run.h"

namespace orva {

/// A column in which records name an asset.
struct NamingColumn {
  std::string_view table;
  std::string_view column = "assetid";
  /// This import adds records to the table.
  bool isWritten = false;
};

/// The current row of an asset sheet with the record of `Asset` that it becomes or changes. With several
/// identifiers a row, `begin` starts the row and `startAsset` each of its assets.
class AssetPosting : public PostingRow {
 public:
  using PostingRow::record;
  explicit AssetPosting(ImportRun& run);

  void begin(int row) override;
  std::string textArgument(std::string_view name) const override;

  /// Number of assets that the row becomes.
  std::int64_t assetCount() const;
  /// Starts the record of the row's asset number `unit` (from 0): a new one, or in the modify modes
  /// the one that the row changes. False when the company has no such asset any more.
  bool startAsset(std::int64_t unit);
  /// What the columns of the sheet leave open, before the record is stored.
  void completeAsset();
  /// Stores the record, and what it brings about in other tables.
  void storeAsset();
  /// Identifiers of the row's stored assets.
  const std::vector<std::string>& stored() const { return stored_; }
  /// A failed row leaves no part of itself: removes the assets that it has added, with their entries in other tables.
  /// Nothing more can be done when the database is not there any more.
  void takeBack();

  bool isNew() const { return run().selection.isAdd(); }
  const AssetCategory& category() const { return category_; }
  Masters& masters() { return masters_; }

  /// Text under a heading without the blanks around it.
  std::string_view trimmed(std::string_view heading) const { return trim(cell(heading)); }
  /// The current asset's part of the amount in a cell: equal parts of two decimals, the last asset takes the rest.
  Currency shareOf(Currency amount) const;
  /// Method of the asset's first depreciation entry; empty when it has none.
  std::string depreciationMethod() const;
  Value field(std::string_view name) const { return record().get(name); }

 private:
  bool findAsset();
  void startNewAsset();
  void resolveCategory();
  void storeCategory();
  void storeDefaults();
  void storeAutomaticRate();
  void giveNewIdentifier();
  void changeAsset();
  void renameDependents();
  void renameEverywhere(const std::string& before, const std::string& after);
  void moveChildren(const std::string& classCode, const std::string& subclassCode) const;

  CategoryCreation categories_;
  Masters masters_;
  OpeningDepreciation opening_;
  ShiftedIn shiftedIn_;
  UserDefinedValues userDefined_;
  AssetCategory category_;
  std::int64_t unit_ = 0;
  std::vector<std::string> stored_;
  std::string identifierBefore_;
  std::string classBefore_;
  std::string subclassBefore_;
  /// Where an identifier may stand; found when one is changed for the first time.
  std::optional<std::vector<NamingColumn>> namingColumns_;
};

/// The columns of `Asset` that come from the sheet.
std::span<const PostedColumn<AssetPosting>> assetColumns();

}  // namespace orva
