#pragma once

#include <string_view>

#include "platform/embedded/sql/translation.h"

namespace orva::embedded {

/// The value that a lifted literal is bound as. `inside` is the literal's text
/// without its quotes. Throws kTypeMismatch, or kSyntaxOrExists for a date in
/// number signs that is none; as a column, everything `convertForColumn` throws.
Value literalValue(const sql::Binding& binding, const sql::Literal& literal, std::string_view inside,
                   SqlDialect dialect);

}  // namespace orva::embedded
