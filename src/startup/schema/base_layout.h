#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// What the main system itself puts into a company database, in the Access dialect: the
/// tables that the upgrade only alters, and the columns and indexes of the importer's look-ups
/// that no upgrade statement brings. Together with the upgrade it gives the whole layout.

enum class Need { kNone, kRequired, kKey };

/// One column. `kKey` columns of a table form its primary key in the order of their rows and
/// are required.
struct ColumnRow {
  std::string_view table;
  std::string_view column;
  /// Access type with its size ("text(30)"), and default ("yesno default No").
  std::string_view type;
  Need need = Need::kNone;
};

struct IndexRow {
  std::string_view table;
  std::string_view name;
  std::string_view columns;
};

/// Grouped by table.
std::span<const ColumnRow> baseColumns();
/// Columns of tables that the upgrade makes.
std::span<const ColumnRow> columnsAfterUpgrade();
std::span<const IndexRow> baseIndexes();

/// "create table" for every table of `baseColumns`.
std::vector<std::string> baseTableStatements();
/// Everything that has to wait until the upgrade has run: columns, then indexes.
std::vector<std::string> afterUpgradeStatements();

}  // namespace orva
