#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/embedded/prepared.h"
#include "platform/embedded/text_hash.h"

namespace orva::embedded {

/// What a query over one table gave: its rows are known by their keys.
struct Answer {
  std::shared_ptr<Prepared> prepared;
  std::size_t criterionAt = 0;  ///< where the filter begins in the text that was asked
  bool firstOnly = false;       ///< no row behind the first was asked for
  std::vector<std::int64_t> keys;
  std::vector<Value> selected;                   ///< columns of the first row, each at its `Prepared::askedPlace`
  std::shared_ptr<const std::uint64_t> changes;  ///< of the table
  std::uint64_t asOf = 0;                        ///< their number when it was asked

  /// True as long as asking again would give the same, with all columns that callers want by now.
  bool isGood() const { return *changes == asOf && (keys.empty() || selected.size() == prepared->askedCount()); }
};

/// Answers to the questions of late, found by their texts. The rows of a sheet share their categories, vendors and
/// years: most of what is asked for a row was asked for the row before, and the tables did not change meanwhile.
class Answers {
 public:
  /// Answers with more rows behind the first are read again each time.
  static constexpr std::size_t kMostRows = 7;

  /// A good answer, or null. `firstOnly`: the first row is enough.
  std::shared_ptr<const Answer> find(std::string_view text, std::size_t criterionAt, bool firstOnly);
  void keep(std::string_view text, Answer answer);
  void clear() { answers_.clear(); }

 private:
  std::unordered_map<std::string, std::shared_ptr<const Answer>, TextHash, std::equal_to<>> answers_;
};

}  // namespace orva::embedded
