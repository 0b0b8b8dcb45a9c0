#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/access/table.h"
#include "platform/embedded/memory_index.h"
#include "platform/embedded/scalar.h"
#include "platform/embedded/sqlite_handle.h"

namespace orva::embedded {

/// One part of the key of a look-up: a column of an Access table, by its position
/// in the table's definition, or an expression over that column.
struct LookupPart {
  std::size_t column = 0;
  std::string expression;  ///< as SQLite reads it; empty: the column itself

  bool operator==(const LookupPart&) const = default;
};

/// Works out the expressions of look-up parts.
class Evaluator {
 public:
  Evaluator();
  /// The value of `part` where its column has the value `of`. An expression that
  /// fails has no value.
  Scalar value(const LookupPart& part, const std::string& columnName, const Scalar& of);

 private:
  DatabaseHandle database_;
  std::vector<std::pair<std::string, StatementHandle>> statements_;
};

/// An index in memory over a table of an Access file, for what no index of the
/// file itself can find: columns without an index, expressions, and the order of
/// texts. Its order is that of the engine; equal keys stand in the order of the rows.
class MemoryLookup {
 public:
  static constexpr std::size_t kRowSize = 4;

  /// Reads the whole table.
  MemoryLookup(const access::Table& table, std::vector<LookupPart> parts, Evaluator& evaluator);

  const std::vector<LookupPart>& parts() const { return parts_; }
  const MemoryIndex& index() const { return index_; }
  bool uses(const std::vector<access::Change>& changes) const;
  /// What stands in the index for a row as it is now.
  std::string entryFor(const access::Table& table, access::RowId row);
  void insert(const std::string& entry) { index_.insert(entry); }
  void erase(const std::string& entry) { index_.erase(entry); }

  static access::RowId rowOf(const std::string& entry);

 private:
  std::vector<LookupPart> parts_;
  std::vector<bool> isLength_;  ///< of each part: the length of the column's text, which needs no evaluator
  Evaluator& evaluator_;
  MemoryIndex index_;
};

}  // namespace orva::embedded
