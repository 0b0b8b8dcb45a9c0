#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orva {

/// A set of codes that rows lack or have: two bits a code, because a null and an empty one are not the same.
using Codes = std::uint64_t;
inline constexpr std::size_t kMostCodes = 5;
inline constexpr Codes kAllCodes = (Codes{1} << 2 * kMostCodes) - 1;

/// The code at a place when a row lacks it, that is, null or empty.
constexpr Codes lackedCode(std::size_t place, const std::optional<std::string_view>& code) {
  return !code ? Codes{1} << 2 * place : code->empty() ? Codes{2} << 2 * place : 0;
}
/// What the code at a place could fill: an empty text only what is null.
constexpr Codes givenCode(std::size_t place, const std::optional<std::string_view>& code) {
  return !code ? 0 : Codes{code->empty() ? 1u : 3u} << 2 * place;
}
/// True when the set holds the code at a place, as null or as empty.
constexpr bool holdsCode(Codes codes, std::size_t place) { return (codes >> 2 * place & 3) != 0; }

/// What the rows of a table lack, by the identifiers of their assets. Identifiers that a database might call equal
/// count as one: an answer may name codes that no row of the asset lacks, but never too few.
class LackingRows {
 public:
  void add(std::string_view identifier, Codes lacked);
  /// What any row lacks.
  Codes lacked() const { return lacked_; }
  /// What rows lack that may belong to this asset.
  Codes lackedBy(std::string_view identifier) const;

 private:
  std::size_t placeOf(std::uint64_t key) const;
  void grow();

  /// A hash table: the hash of an identifier with codes in its lowest bits; 0 stands on free places.
  std::vector<std::uint64_t> rows_;
  std::size_t count_ = 0;
  Codes lacked_ = 0;
  Codes lackedByAny_ = 0;
};

}  // namespace orva
