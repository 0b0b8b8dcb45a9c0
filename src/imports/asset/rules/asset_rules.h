#pragma once

#include <span>
#include <vector>

#include "imports/asset/asset_row.h"

namespace orva {

/// The rule tables of the asset sheet by subject. Rules of one column stand in the order in which they run.
std::span<const AssetRule> identityRules();
std::span<const AssetRule> documentRules();
std::span<const AssetRule> calendarRules();
std::span<const AssetRule> categoryRules();
std::span<const AssetRule> masterRules();
std::span<const AssetRule> locationRules();
std::span<const AssetRule> amountRules();
std::span<const AssetRule> overrideRules();
std::span<const AssetRule> otherRules();

/// All tables, with the rules of each column in their order.
std::vector<AssetRule> assetRules();

/// What is checked once the last column of a row is done: each rule's column is the name that a finding reports.
std::span<const AssetRule> rowEndRules();
/// Runs the row-end rules and hands the row's codes and years to posting.
void endAssetRow(AssetRow& row);

}  // namespace orva
