#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orva {

/// True when the text is a number: blanks around, an optional sign, digits
/// with an optional "." and an optional exponent. Empty text is no number.
bool isNumeric(std::string_view text);

/// The number at the start of the text, blanks skipped; 0 when there is none
/// ("12ab" is 12, "ab" is 0).
double val(std::string_view text);

/// The characters after the first "."; empty when there is no point.
std::string_view afterPoint(std::string_view text);

/// More than two characters after the first ".".
bool hasMoreThanTwoDecimals(std::string_view text);

/// Digits after the first "." worth more than zero: "12.5" yes, "12.0" no.
bool hasDecimalPart(std::string_view text);

/// `number` with at least `width` digits, zeros in front ("0007").
std::string zeroPadded(long long number, int width);

/// The "######.00" format: two decimals, half away from zero, no thousands
/// separators, nothing before the point for a value under one (".50").
/// Text that is no number comes back as it stands.
std::string formatTwoDecimals(std::string_view text);

}  // namespace orva
