#include "platform/access/entry_ends.h"

#include <bit>
#include <cstring>

#include "platform/access/access_file_error.h"

namespace orva::access {
namespace {

constexpr std::size_t kStored = index_at::kEntries - index_at::kEnds;

/// The usual sum over halves; the standard function is a slow call on machines without the instruction.
std::size_t countBits(std::uint64_t word) {
  word -= word >> 1 & 0x5555555555555555;
  word = (word & 0x3333333333333333) + (word >> 2 & 0x3333333333333333);
  word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F;
  return static_cast<std::size_t>(word * 0x0101010101010101 >> 56);
}

}  // namespace

EntryEnds::EntryEnds(ByteView page) {
  static_assert(std::endian::native == std::endian::little);
  static_assert(kStored <= sizeof(Words));
  std::memcpy(words_.data(), page.data() + index_at::kEnds, kStored);
  constexpr std::uint64_t kPastCapacity = ~std::uint64_t{0} << kIndexCapacity % kBits << 1;
  require((words_.front() & 1) == 0 && (words_.back() & kPastCapacity) == 0, "an entry of the index page has no key");
}

void EntryEnds::write(ByteSpan page) const { std::memcpy(page.data() + index_at::kEnds, words_.data(), kStored); }

std::size_t EntryEnds::countUpTo(std::size_t offset) const {
  std::size_t count = 0;
  const std::size_t word = offset / kBits;
  for (std::size_t i = 0; i < word; ++i) count += countBits(words_[i]);
  return count + countBits(words_[word] & (~std::uint64_t{0} >> (kBits - 1 - offset % kBits)));
}

std::size_t EntryEnds::at(std::size_t i) const {
  for (std::size_t word = 0; word < kWords; ++word) {
    const std::size_t here = countBits(words_[word]);
    if (i >= here) {
      i -= here;
      continue;
    }
    std::uint64_t bits = words_[word];
    for (; i > 0; --i) bits &= bits - 1;
    return word * kBits + static_cast<std::size_t>(std::countr_zero(bits));
  }
  return 0;
}

std::size_t EntryEnds::next(std::size_t offset) const {
  std::size_t word = offset / kBits;
  std::uint64_t bits = words_[word] & ~std::uint64_t{0} << offset % kBits;
  while (bits == 0) {
    if (++word == kWords) return 0;
    bits = words_[word];
  }
  return word * kBits + static_cast<std::size_t>(std::countr_zero(bits));
}

std::size_t EntryEnds::previous(std::size_t offset) const {
  std::size_t word = offset / kBits;
  std::uint64_t bits = words_[word] & (~std::uint64_t{0} >> (kBits - 1 - offset % kBits));
  while (bits == 0) {
    if (word == 0) return 0;
    bits = words_[--word];
  }
  return word * kBits + (kBits - 1 - static_cast<std::size_t>(std::countl_zero(bits)));
}

EntryEnds::Words EntryEnds::upTo(const Words& words, std::size_t offset) {
  Words kept{};
  const std::size_t word = offset / kBits;
  std::copy_n(words.begin(), word + 1, kept.begin());
  kept[word] &= ~std::uint64_t{0} >> (kBits - 1 - offset % kBits);
  return kept;
}

EntryEnds::Words EntryEnds::behind(const Words& words, std::size_t offset) {
  Words kept = words;
  const Words dropped = upTo(words, offset);
  for (std::size_t i = 0; i < kWords; ++i) kept[i] &= ~dropped[i];
  return kept;
}

void EntryEnds::moveUp(std::size_t behindOffset, std::size_t by) {
  const Words moving = behind(words_, behindOffset);
  words_ = upTo(words_, behindOffset);
  const std::size_t shift = by / kBits;
  const std::size_t bits = by % kBits;
  for (std::size_t i = kWords; i-- > shift;) {
    words_[i] |= moving[i - shift] << bits;
    if (bits != 0 && i > shift) words_[i] |= moving[i - shift - 1] >> (kBits - bits);
  }
}

void EntryEnds::moveDown(std::size_t behindOffset, std::size_t removed, std::size_t by) {
  const Words moving = behind(words_, removed);
  words_ = upTo(words_, behindOffset);
  const std::size_t shift = by / kBits;
  const std::size_t bits = by % kBits;
  for (std::size_t i = 0; i + shift < kWords; ++i) {
    words_[i] |= moving[i + shift] >> bits;
    if (bits != 0 && i + shift + 1 < kWords) words_[i] |= moving[i + shift + 1] << (kBits - bits);
  }
}

}  // namespace orva::access
