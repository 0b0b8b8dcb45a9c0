#pragma once

#include <array>

#include "platform/access/format.h"

namespace orva::access {

/// The bits of an index page that say where entries end: offsets from the first
/// entry. A place that no entry reaches is answered with 0.
class EntryEnds {
 public:
  EntryEnds() = default;
  /// Throws `Damage` when a bit stands where no entry can end.
  explicit EntryEnds(ByteView page);
  void write(ByteSpan page) const;

  /// How many ends stand at or before an offset.
  std::size_t countUpTo(std::size_t offset) const;
  std::size_t count() const { return countUpTo(kIndexCapacity); }
  /// End of the i-th entry, which must exist.
  std::size_t at(std::size_t i) const;
  /// The nearest end at or after (before) an offset.
  std::size_t next(std::size_t offset) const;
  std::size_t previous(std::size_t offset) const;
  std::size_t last() const { return previous(kIndexCapacity); }

  void set(std::size_t end) { words_[end / kBits] |= std::uint64_t{1} << end % kBits; }
  /// Moves the ends behind an offset by so many bytes.
  void moveUp(std::size_t behind, std::size_t by);
  /// Drops the ends behind `behind` up to `removed`, and moves the ones after that down.
  void moveDown(std::size_t behind, std::size_t removed, std::size_t by);

 private:
  static constexpr std::size_t kBits = 64;
  static constexpr std::size_t kWords = kIndexCapacity / kBits + 1;
  using Words = std::array<std::uint64_t, kWords>;

  static Words upTo(const Words& words, std::size_t offset);
  static Words behind(const Words& words, std::size_t offset);

  Words words_{};
};

}  // namespace orva::access
