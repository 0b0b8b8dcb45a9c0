#include "masters/nearest_names.h"

#include <algorithm>
#include <utility>

#include "platform/values/text.h"

namespace orva {
namespace {

/// Least share of letter pairs that two names have in common to be called near.
constexpr double kLeastShare = 0.5;
/// Stands before and after every name.
constexpr std::uint64_t kEdge = 0x7FFFFFFF;

bool isSign(unsigned char c) {
  return c < 0x80 && !(c >= '0' && c <= '9') && !(c >= 'A' && c <= 'Z') && !(c >= 'a' && c <= 'z');
}

/// Letters, digits and all characters beyond ASCII, upper-cased, each as one number.
std::vector<std::uint64_t> charactersOf(std::string_view name) {
  std::vector<std::uint64_t> characters{kEdge};
  for (const char c : toUpper(name)) {
    const auto byte = static_cast<unsigned char>(c);
    if (isSign(byte)) continue;
    if ((byte & 0xC0) == 0x80 && characters.size() > 1) {
      characters.back() = (characters.back() << 6 | (byte & 0x3F)) & 0xFFFFFF;
    } else {
      characters.push_back(byte);
    }
  }
  characters.push_back(kEdge);
  return characters;
}

}  // namespace

NearestNames::Pairs NearestNames::pairsOf(std::string_view name) {
  const std::vector<std::uint64_t> characters = charactersOf(name);
  Pairs pairs;
  for (std::size_t i = 1; i < characters.size(); ++i) pairs.push_back(characters[i - 1] << 32 | characters[i]);
  std::sort(pairs.begin(), pairs.end());
  pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
  return pairs;
}

NearestNames::NearestNames(std::vector<std::string> names) : names_(std::move(names)) {
  for (std::size_t index = 0; index < names_.size(); ++index) {
    const Pairs pairs = pairsOf(names_[index]);
    sizes_.push_back(pairs.size());
    for (const std::uint64_t pair : pairs) namesOfPair_[pair].push_back(static_cast<std::uint32_t>(index));
  }
}

std::vector<std::string> NearestNames::nearest(std::string_view name, std::size_t most) const {
  const Pairs pairs = pairsOf(name);
  std::unordered_map<std::uint32_t, std::size_t> shared;
  for (const std::uint64_t pair : pairs) {
    const auto found = namesOfPair_.find(pair);
    if (found == namesOfPair_.end()) continue;
    for (const std::uint32_t index : found->second) ++shared[index];
  }
  std::vector<std::pair<double, std::uint32_t>> ranked;
  for (const auto& [index, count] : shared) {
    const double share = 2.0 * static_cast<double>(count) / static_cast<double>(pairs.size() + sizes_[index]);
    if (share >= kLeastShare) ranked.emplace_back(-share, index);
  }
  std::sort(ranked.begin(), ranked.end());
  if (ranked.size() > most) ranked.resize(most);
  std::vector<std::string> result;
  result.reserve(ranked.size());
  for (const auto& [share, index] : ranked) result.push_back(names_[index]);
  return result;
}

}  // namespace orva
