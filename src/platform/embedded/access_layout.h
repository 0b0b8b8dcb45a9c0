#pragma once

#include "platform/access/schema_change.h"
#include "platform/embedded/access_file.h"

namespace orva::embedded {

/// The layout of a table in an Access file: columns in the order in which Access
/// shows them, types as the engine has them, rules, defaults, named indexes.
void readLayout(AccessTable& table);

/// What an Access file makes of a column or index of the engine.
access::NewColumn newColumnOf(const ColumnDef& column);
access::NewIndex newIndexOf(const IndexDef& index);
/// A default value as an expression of the format; nothing for none.
std::optional<std::string> defaultExpression(const Value& value);

}  // namespace orva::embedded
