#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/odbc/column.h"

namespace orva::odbc {

/// A row as a record set keeps it. Whole rows carry a cell for every column, others only
/// those of the key.
struct KeptRow {
  Row cells;
  bool isWhole = true;
  /// Of a row that was added: the columns that were set. Empty for every other row.
  std::vector<bool> known = {};
};
using KeptRows = std::vector<std::shared_ptr<const KeptRow>>;

/// What a query gave.
struct Answer {
  std::shared_ptr<const ColumnList> columns;
  KeptRows rows;
  /// False: there are more rows than these.
  bool isComplete = true;
};

/// The answers to the look-ups that belong together (`LookupScope`). Outside a scope nothing
/// is remembered, and whatever this connection changes makes it forget everything: a trigger
/// or a view may carry a change to any other table.
class Answers {
 public:
  void begin() { ++scopes_; }
  void end();
  /// Nothing when the question was not asked since.
  const Answer* find(const std::string& question) const;
  /// Of many rows only the first is kept.
  void remember(const std::string& question, Answer answer);
  void forgetAll() { known_.clear(); }

 private:
  int scopes_ = 0;
  std::unordered_map<std::string, Answer> known_;
};

/// The text of a question with its arguments.
std::string questionOf(const BoundText& text);

}  // namespace orva::odbc
