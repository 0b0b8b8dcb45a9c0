#pragma once

#include <optional>
#include <string_view>

#include "platform/values/currency.h"

namespace orva {

/// The amount in a cell; nothing when the text is blank, no number, or more than a money column can keep.
std::optional<Currency> amountIn(std::string_view text);

/// The sum of two amounts; the largest or smallest amount when no money column could keep the sum.
Currency boundedSum(Currency left, Currency right);

}  // namespace orva
