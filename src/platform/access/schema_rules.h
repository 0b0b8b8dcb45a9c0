#pragma once

#include "platform/access/schema_change.h"

namespace orva::access {

/// What the format allows; each throws `AccessFileError` with a text that names the limit.
void requireName(std::string_view name, const char* what);
void requireColumn(const NewColumn& column);
/// The row of a table with these columns must be able to hold its fixed parts.
void requireRowFits(const TableDefinition& definition);
void requireIndex(const Table& table, const NewIndex& index);

/// Bytes that the definition records as the length of a column.
std::uint16_t columnLength(const NewColumn& column);
bool isFixedType(ColumnType type);

}  // namespace orva::access
