#include "imports/transactions/named_asset_row.h"

#include "imports/transactions/transaction_checks.h"

namespace orva {
namespace {

using NamingRule = Rule<NamedAssetRow>;

bool isNamedTwice(NamedAssetRow& row, const Cell&, const NamingRule&) { return row.isNamedTwice(); }

constexpr NamingRule kRules[] = {
    {.column = kNamingColumn,
     .fails = isBlank,
     .text = kNoAssetId,
     .mode = AppliesIn::kNotByPhysicalId,
     .namesBlank = true},
    {.column = kNamingColumn, .fails = exceedsSize, .text = kTooLong, .mode = AppliesIn::kNotByPhysicalId},
    {.column = kNamingColumn,
     .fails = isAssetMissing,
     .text = "Asset Id : {value} does not exist in Acquistion of Assets in ORVA.",
     .mode = AppliesIn::kNotByPhysicalId},
    {.column = kNamingColumn,
     .fails = isBlank,
     .text = "Physical id should not be blank",
     .mode = AppliesIn::kModifyByPhysicalId,
     .namesBlank = true},
    {.column = kNamingColumn,
     .fails = exceedsSize,
     .text = "Phy id : {value} exceeds its maximum length {size}",
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = kNamingColumn,
     .fails = isNamedTwice,
     .text = "Physical id : {value} is duplicated more than once in ORVA.",
     .mode = AppliesIn::kModifyByPhysicalId},
    {.column = kNamingColumn,
     .fails = isAssetMissing,
     .text = "Physical id : {value} does not exist Acquistion of Assets in ORVA.",
     .mode = AppliesIn::kModifyByPhysicalId},
};

constexpr std::string_view kAssetId[] = {"ASSETID"};
constexpr std::string_view kPhysicalId[] = {"PHYID"};

}  // namespace

NamedAssetRow::NamedAssetRow(ImportRun& run)
    : TransactionRow(run, {.asset = kNamingColumn}),
      byPhysicalId_(run.selection.mode == AssetMode::kModifyByPhysicalId) {
  const int column = columnOf(byPhysicalId_ && hasColumn("PHYID") ? "PHYID" : "ASSETID");
  if (column >= 0) nameColumn(column, kNamingColumn);
}

void NamedAssetRow::begin(int row) {
  TransactionRow::begin(row);
  assetId_ = trim(cell(kNamingColumn));
  isNamedTwice_ = false;
  if (!byPhysicalId_ || assetId_.empty()) return;
  const auto assets = open({.access = "Select assetid from Asset where phyid ='{id}'"});
  assetId_ = assets->eof() ? std::string() : nullToText(assets->get("assetid"));
  if (assets->eof()) return;
  assets->moveNext();
  isNamedTwice_ = !assets->eof();
}

std::string NamedAssetRow::textArgument(std::string_view name) const {
  if (name == "named by") return byPhysicalId_ ? "Physical Id" : "Asset Id";
  return TransactionRow::textArgument(name);
}

std::span<const Rule<NamedAssetRow>> namingRules() { return kRules; }

std::span<const std::string_view> namingColumns(AssetMode mode) {
  return mode == AssetMode::kModifyByPhysicalId ? kPhysicalId : kAssetId;
}

}  // namespace orva
