#pragma once

#include "platform/access/format.h"

namespace orva::access {

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

/// Marks the end of an entry on a page.
void setEntryEnd(ByteSpan page, std::size_t end);
/// Moves the ends behind an offset by so many bytes; `last` is the last one.
void moveEntryEndsUp(ByteSpan page, std::size_t behind, std::size_t by, std::size_t last);
/// Drops the ends behind `behind` up to `removed`, and moves the ones after that, up to `last`, down.
void moveEntryEndsDown(ByteSpan page, std::size_t behind, std::size_t removed, std::size_t last);

}  // namespace orva::access
