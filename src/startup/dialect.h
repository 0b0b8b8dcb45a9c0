#pragma once

#include <string>
#include <string_view>

#include "platform/values/date.h"

namespace orva {

/// The SQL fragments that differ between the two kinds of company database.
struct DialectTokens {
  std::string_view dateDelimiter;
  std::string_view substring;
  /// Opening text of an integer conversion, parenthesis included.
  std::string_view integerConversion;
  std::string_view upperCase;
  std::string_view trueText;
  std::string_view falseText;

  /// `date` as a literal of the dialect: month/day/year inside the delimiters.
  std::string date(Date value) const;
};

const DialectTokens& accessTokens();
const DialectTokens& sqlServerTokens();

}  // namespace orva
