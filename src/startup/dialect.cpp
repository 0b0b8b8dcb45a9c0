#include "startup/dialect.h"

namespace orva {

std::string DialectTokens::date(Date value) const {
  std::string literal(dateDelimiter);
  literal += value.toMonthDayYear();
  literal += dateDelimiter;
  return literal;
}

const DialectTokens& accessTokens() {
  static constexpr DialectTokens kTokens{.dateDelimiter = "#",
                                         .substring = "Mid",
                                         .integerConversion = "val(",
                                         .upperCase = "Ucase",
                                         .trueText = "true",
                                         .falseText = "false"};
  return kTokens;
}

const DialectTokens& sqlServerTokens() {
  static constexpr DialectTokens kTokens{.dateDelimiter = "'",
                                         .substring = "Substring",
                                         .integerConversion = "convert(int,",
                                         .upperCase = "Upper",
                                         .trueText = "1",
                                         .falseText = "0"};
  return kTokens;
}

}  // namespace orva
