#include "imports/asset/posting/code_gaps.h"

#include <algorithm>
#include <utility>

namespace orva {
namespace {

constexpr std::size_t kFewest = 1u << 10;
/// Letters and digits, and one more: an odd factor loses nothing of a long identifier.
constexpr std::uint64_t kCharacters = 37;
/// Numbers that follow each other stand together, as assets do in a file: one look into memory serves them all.
constexpr std::uint64_t kNeighbours = 8;

/// The same number for all identifiers that an order of texts may call equal, whatever it thinks of case, blanks and
/// signs; the bits of the codes are free. Nothing for an identifier with other characters than those of ASCII.
std::optional<std::uint64_t> keyOf(std::string_view identifier) {
  std::uint64_t key = 1;
  for (const char c : identifier) {
    if (c < ' ' || c > '~') return std::nullopt;
    if (c >= '0' && c <= '9') key = key * kCharacters + static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'Z') key = key * kCharacters + static_cast<unsigned>(c - 'A') + 10;
    if (c >= 'a' && c <= 'z') key = key * kCharacters + static_cast<unsigned>(c - 'a') + 10;
  }
  return key << 2 * kMostCodes;
}

}  // namespace

/// Where the row of a key stands or would stand.
std::size_t LackingRows::placeOf(std::uint64_t key) const {
  const std::uint64_t number = key >> 2 * kMostCodes;
  const std::uint64_t group = number / kNeighbours * 0x9E3779B97F4A7C15u >> 32;
  std::size_t at = (group * kNeighbours + number % kNeighbours) & (rows_.size() - 1);
  while (rows_[at] != 0 && (rows_[at] & ~kAllCodes) != key) at = (at + 1) & (rows_.size() - 1);
  return at;
}

void LackingRows::grow() {
  const std::vector<std::uint64_t> before =
      std::exchange(rows_, std::vector<std::uint64_t>(std::max(kFewest, 2 * rows_.size())));
  for (const std::uint64_t row : before) {
    if (row != 0) rows_[placeOf(row & ~kAllCodes)] = row;
  }
}

void LackingRows::add(std::string_view identifier, Codes lacked) {
  lacked_ |= lacked;
  const auto key = keyOf(identifier);
  if (!key) {
    lackedByAny_ |= lacked;
    return;
  }
  if (4 * count_ >= 3 * rows_.size()) grow();
  std::uint64_t& row = rows_[placeOf(*key)];
  if (row == 0) ++count_;
  row |= *key | lacked;
}

Codes LackingRows::lackedBy(std::string_view identifier) const {
  const auto key = keyOf(identifier);
  if (!key) return lacked_;
  return lackedByAny_ | (rows_.empty() ? 0 : rows_[placeOf(*key)] & kAllCodes);
}

}  // namespace orva
