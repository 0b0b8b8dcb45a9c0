#pragma once

#include "imports/asset/asset_row.h"

namespace orva::checks {

/// Checks that rules of several columns share. All are true when the cell fails. Amounts that
/// are no numbers pass every check but `isNotNumeric`, dates that are no dates every check but `isNotDate`.

bool isBlank(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isTooLong(AssetRow& row, const Cell& cell, const AssetRule& rule);
/// The rule's look-up finds a row.
bool found(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool notFound(AssetRow& row, const Cell& cell, const AssetRule& rule);

/// No number that a money column can keep; a blank cell passes.
bool isNotNumeric(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isNegative(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isMoreThanCost(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool hasTooManyDecimals(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool hasDecimals(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isNoPercentage(AssetRow& row, const Cell& cell, const AssetRule& rule);

/// A blank cell passes.
bool isNotDate(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isOutOfRange(AssetRow& row, const Cell& cell, const AssetRule& rule);

bool isDepreciated(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isReclassified(AssetRow& row, const Cell& cell, const AssetRule& rule);
bool isShifted(AssetRow& row, const Cell& cell, const AssetRule& rule);

/// The date in the cell when it is one that the company database can keep.
std::optional<Date> dateIn(const Cell& cell);
std::optional<Currency> amountIn(const Cell& cell);
/// The number in a cell that holds one, with all its decimals.
double numberIn(const Cell& cell);

}  // namespace orva::checks
