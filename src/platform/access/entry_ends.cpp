#include "platform/access/entry_ends.h"

#include <cstring>

#include "platform/access/access_file_error.h"

namespace orva::access {
namespace {

using namespace end_bits;

void putWord(Byte* bits, std::size_t word, std::uint64_t value) {
  std::memcpy(bits + word * sizeof value, &value, word < kLastWord ? sizeof value : kLastWordSize);
}

/// The usual sum over halves; the standard function is a slow call on machines without the instruction.
std::size_t countBits(std::uint64_t word) {
  word -= word >> 1 & 0x5555555555555555;
  word = (word & 0x3333333333333333) + (word >> 2 & 0x3333333333333333);
  word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F;
  return static_cast<std::size_t>(word * 0x0101010101010101 >> 56);
}

/// True when no bit of so many words is set.
template <std::size_t kCount>
bool isBlank(const Byte* bits) {
  std::uint64_t any = 0;
  for (std::size_t i = 0; i < kCount; ++i) {
    std::uint64_t word;
    std::memcpy(&word, bits + i * sizeof word, sizeof word);
    any |= word;
  }
  return any == 0;
}

}  // namespace

EntryEnds::EntryEnds(ByteView page) : bits_(page.data() + index_at::kEnds) {
  constexpr std::uint64_t kPastCapacity = ~std::uint64_t{0} << kIndexCapacity % kBits << 1;
  require((bits_[0] & 1) == 0 && (wordAt(bits_, kLastWord) & kPastCapacity) == 0,
          "an entry of the index page has no key");
}

std::size_t EntryEnds::countUpTo(std::size_t offset) const {
  std::size_t count = 0;
  const std::size_t word = offset / kBits;
  for (std::size_t i = 0; i < word; ++i) count += countBits(wordAt(bits_, i));
  return count + countBits(wordAt(bits_, word) & upTo(offset));
}

std::size_t EntryEnds::at(std::size_t i) const {
  for (std::size_t word = 0; word < kWords; ++word) {
    const std::size_t here = countBits(wordAt(bits_, word));
    if (i >= here) {
      i -= here;
      continue;
    }
    std::uint64_t bits = wordAt(bits_, word);
    for (; i > 0; --i) bits &= bits - 1;
    return word * kBits + static_cast<std::size_t>(std::countr_zero(bits));
  }
  return 0;
}

/// Half of a page's bits are usually unset behind the last one: they are passed in blocks.
std::size_t EntryEnds::last() const {
  constexpr std::size_t kBlock = 8;
  static_assert(kLastWord % kBlock == 0);
  if (const std::uint64_t bits = wordAt(bits_, kLastWord)) return kLastWord * kBits + highest(bits);
  std::size_t end = kLastWord;
  while (end > 0 && isBlank<kBlock>(bits_ + (end - kBlock) * sizeof(std::uint64_t))) end -= kBlock;
  return end == 0 ? 0 : previous(end * kBits - 1);
}

void setEntryEnd(ByteSpan page, std::size_t end) {
  page[index_at::kEnds + end / 8] |= static_cast<Byte>(1u << end % 8);
}

void moveEntryEndsUp(ByteSpan page, std::size_t behind, std::size_t by, std::size_t last) {
  if (last <= behind) return;
  Byte* const bits = page.data() + index_at::kEnds;
  const std::size_t lowest = behind / kBits;
  const auto moving = [&](std::size_t word) {
    return word < lowest ? 0 : wordAt(bits, word) & (word == lowest ? ~upTo(behind) : ~std::uint64_t{0});
  };
  const std::uint64_t kept = wordAt(bits, lowest) & upTo(behind);
  const std::size_t words = by / kBits;
  const std::size_t shift = by % kBits;
  // From the top, so that every word is read before it is written.
  for (std::size_t i = (last + by) / kBits + 1; i-- > lowest;) {
    std::uint64_t moved = i < words ? 0 : moving(i - words) << shift;
    if (shift != 0 && i > words) moved |= moving(i - words - 1) >> (kBits - shift);
    putWord(bits, i, moved | (i == lowest ? kept : 0));
  }
}

void moveEntryEndsDown(ByteSpan page, std::size_t behind, std::size_t removed, std::size_t last) {
  Byte* const bits = page.data() + index_at::kEnds;
  const std::size_t lowest = removed / kBits;
  const std::size_t lastWord = last / kBits;
  const auto moving = [&](std::size_t word) {
    if (word < lowest || word > lastWord) return std::uint64_t{0};
    return wordAt(bits, word) & (word == lowest ? ~upTo(removed) : ~std::uint64_t{0});
  };
  const std::size_t words = (removed - behind) / kBits;
  const std::size_t shift = (removed - behind) % kBits;
  // From the bottom, so that every word is read before it is written.
  for (std::size_t i = behind / kBits; i <= lastWord; ++i) {
    std::uint64_t moved = moving(i + words) >> shift;
    if (shift != 0) moved |= moving(i + words + 1) << (kBits - shift);
    putWord(bits, i, moved | (i == behind / kBits ? wordAt(bits, i) & upTo(behind) : 0));
  }
}

}  // namespace orva::access
