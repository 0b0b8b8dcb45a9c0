#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "platform/embedded/access_file.h"

namespace orva::embedded {

/// Columns of the table that SQLite sees: the key of the row, the columns of the
/// layout, then places for expressions.
inline constexpr int kKeyColumn = 0;
inline constexpr int kFirstColumn = 1;
inline constexpr int kExpressionColumns = 24;

/// How a statement gets at the rows of a table. Ranges are those of the values as
/// far as an index can tell: SQLite tests every row again.
struct AccessPlan {
  enum class Way { kScan, kKey, kFileIndex, kLookup };
  static constexpr int kIsNull = -1;
  static constexpr int kNone = -2;

  Way way = Way::kScan;
  std::size_t realIndex = 0;
  std::vector<LookupPart> parts;
  /// Numbers of the arguments that the leading columns equal, or `kIsNull`.
  std::vector<int> equal;
  /// Arguments that limit the column behind them (of a scan: the key of the row).
  int lower = kNone;
  int upper = kNone;
  /// The limit itself is none of the values: ">" and "<".
  bool lowerIsOpen = false;
  bool upperIsOpen = false;
  /// Argument that the column behind them must not equal: of a look-up, which leaves those rows out.
  int unequal = kNone;
  bool descending = false;
  /// For people: "(Assetid=? AND docdt>?)".
  std::string text;

  bool operator==(const AccessPlan&) const = default;
};

/// Chooses the cheapest way and tells SQLite what it costs and which arguments it takes.
AccessPlan choosePlan(const AccessTable& table, sqlite3_index_info& info);

}  // namespace orva::embedded
