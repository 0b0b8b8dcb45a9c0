#pragma once

#include <optional>
#include <string_view>

#include "platform/embedded/catalogue.h"
#include "platform/embedded/sql/syntax.h"

namespace orva::sql {

struct NamedType {
  embedded::ColumnType type;
  int size;  ///< size of a text type that is written without one
};

/// The type that a dialect calls by this name; nothing when there is none.
std::optional<NamedType> columnTypeOf(std::string_view name, SqlDialect dialect);

/// The column that a definition describes. Throws kSyntaxOrExists for an
/// unknown type, kTypeMismatch for a default that the type cannot hold.
embedded::ColumnDef columnOf(const ColumnSpec& spec, SqlDialect dialect);

/// The table of "create table" with its keys.
embedded::TableDef tableOf(const CreateTable& statement, SqlDialect dialect);

embedded::IndexDef indexOf(const KeySpec& key, bool unique);

}  // namespace orva::sql
