#include "wizard/amounts.h"

#include <cmath>
#include <limits>

#include "platform/values/numeric_text.h"
#include "platform/values/text.h"
#include "platform/values/value.h"

namespace orva {

std::optional<Currency> amountIn(std::string_view text) {
  constexpr double kLargest = 9e14;
  constexpr Currency kLargestAmount = Currency::fromWhole(900'000'000'000'000);
  // Most amounts are plain decimals, which need no number beside them.
  const auto exact = Currency::parse(text);
  if (exact && *exact <= kLargestAmount && *exact >= -kLargestAmount) return exact;
  if (!isNumeric(text) || std::fabs(val(text)) > kLargest) return std::nullopt;
  return Value(trim(text)).toCurrency();
}

Currency boundedSum(Currency left, Currency right) {
  constexpr Currency kMost = Currency::fromUnits(std::numeric_limits<std::int64_t>::max());
  if (right > Currency() && left > kMost - right) return kMost;
  if (right < Currency() && left < -kMost - right) return -kMost;
  return left + right;
}

}  // namespace orva
