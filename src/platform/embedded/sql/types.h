#pragma once

#include "platform/embedded/catalogue.h"

namespace orva::sql {

/// Type of an expression. Numbered, because conversion functions carry it into
/// the translated text.
enum class SqlType { kNull = 0, kBoolean = 1, kInteger = 2, kDouble = 3, kCurrency = 4, kDate = 5, kText = 6 };

constexpr SqlType sqlTypeOf(embedded::ColumnType type) {
  return type == embedded::ColumnType::kMemo ? SqlType::kText : static_cast<SqlType>(type);
}

}  // namespace orva::sql
