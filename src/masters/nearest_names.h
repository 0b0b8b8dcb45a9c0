#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orva {

/// Finds names that are spelled like another one: blanks, points and other signs and the case of letters do not count,
/// and single letters may be missing, doubled or exchanged.
class NearestNames {
 public:
  explicit NearestNames(std::vector<std::string> names);

  /// At most `most` names, the nearest first; none when nothing is near.
  std::vector<std::string> nearest(std::string_view name, std::size_t most = 3) const;

 private:
  using Pairs = std::vector<std::uint64_t>;
  static Pairs pairsOf(std::string_view name);

  std::vector<std::string> names_;
  /// How many letter pairs each name has, and which names have a pair.
  std::vector<std::size_t> sizes_;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> namesOfPair_;
};

}  // namespace orva
