#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

/// The answers of the last moment. The rows of a workbook ask the same things of the same
/// small tables over and over, and each question is a trip to the server: an answer serves
/// again while it is younger than a second and this connection has not changed a table that
/// the question names.
class Answers {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kMostAge{1000};

  /// Nothing when there is no answer that may serve.
  const Answer* find(const std::string& question);
  /// `names` are the words of the question that may name a table, upper-cased;
  /// without any it is not remembered.
  void remember(const std::string& question, std::vector<std::string> names, Answer answer);
  /// A table with one of these upper-cased names has changed.
  void changed(const std::vector<std::string>& names);
  void forgetAll();

 private:
  struct Known {
    Answer answer;
    std::vector<std::string> names;
    Clock::time_point at;
    std::uint64_t changes;
  };

  bool serves(const Known& known) const;

  std::unordered_map<std::string, Known> known_;
  std::map<std::string, std::uint64_t> changedAt_;
  std::uint64_t changes_ = 0;
};

/// The text of a question with its arguments.
std::string questionOf(const BoundText& text);

}  // namespace orva::odbc
