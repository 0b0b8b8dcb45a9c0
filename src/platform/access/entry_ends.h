#pragma once

#include <bit>
#include <cstring>

#include "platform/access/format.h"

namespace orva::access {

/// The bits of an index page as words.
namespace end_bits {
inline constexpr std::size_t kBits = 64;
inline constexpr std::size_t kWords = kIndexCapacity / kBits + 1;
inline constexpr std::size_t kLastWord = kWords - 1;
/// The last word is stored as far as a page can be full.
inline constexpr std::size_t kLastWordSize = index_at::kEntries - index_at::kEnds - kLastWord * sizeof(std::uint64_t);
static_assert(kLastWordSize <= sizeof(std::uint64_t));

inline std::uint64_t wordAt(const Byte* bits, std::size_t word) {
  std::uint64_t value = 0;
  if (word < kLastWord) {
    std::memcpy(&value, bits + word * sizeof value, sizeof value);
  } else {
    std::memcpy(&value, bits + word * sizeof value, kLastWordSize);
  }
  return value;
}
/// The bits of a word that stand for offsets up to one within it.
inline std::uint64_t upTo(std::size_t offset) { return ~std::uint64_t{0} >> (kBits - 1 - offset % kBits); }
/// Of a word with a bit.
inline std::size_t highest(std::uint64_t bits) { return kBits - 1 - static_cast<std::size_t>(std::countl_zero(bits)); }
}  // namespace end_bits

/// The bits of an index page that say where entries end: offsets from the first
/// entry. A place that no entry reaches is answered with 0. Reads the page
/// itself, which must outlive it.
class EntryEnds {
 public:
  /// Throws `Damage` when a bit stands where no entry can end.
  explicit EntryEnds(ByteView page);

  /// How many ends stand at or before an offset.
  std::size_t countUpTo(std::size_t offset) const;
  std::size_t count() const { return countUpTo(kIndexCapacity); }
  /// End of the i-th entry, which must exist.
  std::size_t at(std::size_t i) const;
  /// The nearest end at or after (before) an offset.
  std::size_t next(std::size_t offset) const;
  std::size_t previous(std::size_t offset) const;
  std::size_t last() const;

 private:
  const Byte* bits_;
};

// In the header because a search asks for little else.
inline std::size_t EntryEnds::next(std::size_t offset) const {
  using namespace end_bits;
  std::size_t word = offset / kBits;
  std::uint64_t bits = wordAt(bits_, word) & ~std::uint64_t{0} << offset % kBits;
  while (bits == 0) {
    if (++word == kWords) return 0;
    bits = wordAt(bits_, word);
  }
  return word * kBits + static_cast<std::size_t>(std::countr_zero(bits));
}

inline std::size_t EntryEnds::previous(std::size_t offset) const {
  using namespace end_bits;
  std::size_t word = offset / kBits;
  std::uint64_t bits = wordAt(bits_, word) & upTo(offset);
  while (bits == 0) {
    if (word == 0) return 0;
    bits = wordAt(bits_, --word);
  }
  return word * kBits + highest(bits);
}

/// Marks the end of an entry on a page.
void setEntryEnd(ByteSpan page, std::size_t end);
/// Moves the ends behind an offset by so many bytes; `last` is the last one.
void moveEntryEndsUp(ByteSpan page, std::size_t behind, std::size_t by, std::size_t last);
/// Drops the ends behind `behind` up to `removed`, and moves the ones after that, up to `last`, down.
void moveEntryEndsDown(ByteSpan page, std::size_t behind, std::size_t removed, std::size_t last);

}  // namespace orva::access
