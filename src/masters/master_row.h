#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "wizard/posting_run.h"
#include "wizard/rule_checks.h"

namespace orva {

/// The current row of a master workbook.
class MasterRow : public PostingRow {
 public:
  /// `master` is the miscellaneous master's key ("M1", ...); empty for the other masters.
  MasterRow(ImportRun& run, std::string master) : PostingRow(run), master_(std::move(master)) {}
  using PostingRow::record;
  using RowView::record;

  /// {master}: the miscellaneous master's key; {HEADING}: another cell of the row as look-ups compare it, trimmed
  /// and upper-cased; otherwise what `RowView` knows.
  std::string textArgument(std::string_view name) const override {
    if (name == "master") return master_;
    return hasColumn(name) ? toUpper(trim(cell(name))) : PostingRow::textArgument(name);
  }

  /// Stores a text without the blanks around it, as look-ups compare it: otherwise the same workbook would not find
  /// its own entries the next time.
  void set(std::string_view field, const Value& value) const {
    const auto* text = std::get_if<std::string>(&value.storage());
    PostingRow::set(field, text ? Value(trim(*text)) : value);
  }

  const std::string& master() const { return master_; }
  /// True when an earlier row had the same value (without regard to case); notes the value.
  bool hasSeen(std::string_view value) { return !seen_.insert(toUpper(trim(value))).second; }

 private:
  std::string master_;
  std::unordered_set<std::string> seen_;
};

using MasterRule = Rule<MasterRow>;

}  // namespace orva
