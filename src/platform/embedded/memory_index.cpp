#include "platform/embedded/memory_index.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace orva::embedded {
namespace {

constexpr std::size_t kFullBlock = 4096;
/// Leaves room for some more entries.
constexpr std::size_t kPackedBlock = kFullBlock - kFullBlock / 8;

}  // namespace

std::string_view MemoryIndex::Block::entry(std::size_t i) const {
  const std::size_t start = i == 0 ? 0 : ends[i - 1];
  return {bytes.data() + start, ends[i] - start};
}

std::size_t MemoryIndex::Block::lowerBound(std::string_view wanted) const {
  std::size_t low = 0;
  std::size_t high = ends.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (entry(middle) < wanted) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

/// Zeros follow a short entry. Beginnings that differ stand in the order of their entries.
MemoryIndex::Beginning MemoryIndex::beginningOf(std::string_view entry) {
  Beginning beginning{};
  if (!entry.empty()) std::memcpy(beginning.data(), entry.data(), std::min(entry.size(), sizeof beginning));
  if constexpr (std::endian::native == std::endian::little) {
    for (std::uint64_t& word : beginning) word = __builtin_bswap64(word);
  }
  return beginning;
}

/// The first block whose last entry is not below `wanted`.
std::size_t MemoryIndex::blockOf(std::string_view wanted) const {
  const Beginning beginning = beginningOf(wanted);
  std::size_t low = 0;
  std::size_t high = blocks_.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    const Block& block = *blocks_[middle];
    const bool isBelow =
        lasts_[middle] == beginning ? block.entry(block.size() - 1) < wanted : lasts_[middle] < beginning;
    if (isBelow) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

void MemoryIndex::addBlock(std::size_t at, std::unique_ptr<Block> block) {
  blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(at), std::move(block));
  lasts_.emplace(lasts_.begin() + static_cast<std::ptrdiff_t>(at));
  noteLast(at);
}

void MemoryIndex::noteLast(std::size_t at) {
  const Block& block = *blocks_[at];
  if (block.size() > 0) lasts_[at] = beginningOf(block.entry(block.size() - 1));
}

void MemoryIndex::Cursor::standOn(std::size_t block, std::size_t place) {
  version_ = index_->version_;
  if (block < index_->blocks_.size() && place == index_->blocks_[block]->size()) {
    ++block;
    place = 0;
  }
  block_ = block;
  place_ = place;
  valid_ = block < index_->blocks_.size();
  if (valid_) entry_.assign(index_->blocks_[block]->entry(place));
}

MemoryIndex::Cursor MemoryIndex::lowerBound(std::string_view wanted) const {
  Cursor cursor(*this);
  const std::size_t block = blockOf(wanted);
  cursor.standOn(block, block < blocks_.size() ? blocks_[block]->lowerBound(wanted) : 0);
  return cursor;
}

MemoryIndex::Cursor MemoryIndex::before(std::string_view wanted) const {
  Cursor cursor(*this);
  const std::size_t block = blockOf(wanted);
  const std::size_t place = block < blocks_.size() ? blocks_[block]->lowerBound(wanted) : 0;
  if (place > 0) {
    cursor.standOn(block, place - 1);
  } else if (block > 0) {
    cursor.standOn(block - 1, blocks_[block - 1]->size() - 1);
  }
  return cursor;
}

MemoryIndex::Cursor MemoryIndex::last() const {
  Cursor cursor(*this);
  if (!blocks_.empty()) cursor.standOn(blocks_.size() - 1, blocks_.back()->size() - 1);
  return cursor;
}

void MemoryIndex::Cursor::next() {
  if (version_ == index_->version_) return standOn(block_, place_ + 1);
  const std::string after = entry_ + '\0';
  *this = index_->lowerBound(after);
}

void MemoryIndex::Cursor::previous() {
  if (version_ == index_->version_ && place_ > 0) return standOn(block_, place_ - 1);
  const std::string here = entry_;
  *this = index_->before(here);
}

void MemoryIndex::insert(std::string_view entry) {
  if (blocks_.empty()) addBlock(0, std::make_unique<Block>());
  std::size_t at = blocks_.size() - 1;
  std::size_t place = blocks_[at]->size();
  // Most tables are read in the order of some key.
  if (place > 0 && blocks_[at]->entry(place - 1) >= entry) {
    at = blockOf(entry);
    place = blocks_[at]->lowerBound(entry);
  }
  if (place < blocks_[at]->size() && blocks_[at]->entry(place) == entry) return;
  if (blocks_[at]->size() > 0 && blocks_[at]->bytes.size() + entry.size() > kFullBlock) makeRoom(at, place);
  blocks_[at]->insert(place, entry);
  if (place + 1 == blocks_[at]->size()) noteLast(at);
  ++size_;
  ++version_;
}

void MemoryIndex::Block::insert(std::size_t place, std::string_view entry) {
  // The container would take twice as much.
  const std::size_t needed = bytes.size() + entry.size();
  if (needed > bytes.capacity()) bytes.reserve(std::max(needed, kFullBlock));
  const std::size_t start = place == 0 ? 0 : ends[place - 1];
  bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(start), entry.begin(), entry.end());
  ends.insert(ends.begin() + static_cast<std::ptrdiff_t>(place), static_cast<std::uint32_t>(start));
  for (std::size_t i = place; i < size(); ++i) ends[i] += static_cast<std::uint32_t>(entry.size());
}

/// Divides a full block; the place of an insertion then stands in one with room. Ascending entries are the common
/// case: then the block stays full, and so it does around a single long entry.
void MemoryIndex::makeRoom(std::size_t& at, std::size_t& place) {
  Block& left = *blocks_[at];
  const bool ascending = at + 1 == blocks_.size() && place == left.size();
  if (ascending || left.size() == 1) {
    at += place == 0 ? 0 : 1;
    place = 0;
    left.bytes.shrink_to_fit();
    left.ends.shrink_to_fit();
    addBlock(at, std::make_unique<Block>());
    return;
  }
  const std::size_t kept = left.size() / 2;
  auto right = std::make_unique<Block>();
  const std::uint32_t cut = left.ends[kept - 1];
  right->bytes.assign(left.bytes.begin() + cut, left.bytes.end());
  right->ends.assign(left.ends.begin() + static_cast<std::ptrdiff_t>(kept), left.ends.end());
  for (std::uint32_t& end : right->ends) end -= cut;
  left.bytes.resize(cut);
  left.ends.resize(kept);
  noteLast(at);
  addBlock(at + 1, std::move(right));
  if (place <= kept) return;
  ++at;
  place -= kept;
}

void MemoryIndex::pack() {
  std::vector<std::unique_ptr<Block>> packed;
  for (std::unique_ptr<Block>& block : blocks_) {
    for (std::size_t i = 0; i < block->size(); ++i) {
      const std::string_view entry = block->entry(i);
      if (packed.empty() || packed.back()->bytes.size() + entry.size() > kPackedBlock) {
        if (!packed.empty()) packed.back()->ends.shrink_to_fit();
        packed.push_back(std::make_unique<Block>());
      }
      packed.back()->insert(packed.back()->size(), entry);
    }
    block.reset();
  }
  blocks_ = std::move(packed);
  lasts_.resize(blocks_.size());
  for (std::size_t at = 0; at < blocks_.size(); ++at) noteLast(at);
  ++version_;
}

void MemoryIndex::erase(std::string_view entry) {
  const std::size_t at = blockOf(entry);
  if (at == blocks_.size()) return;
  Block& block = *blocks_[at];
  const std::size_t place = block.lowerBound(entry);
  if (block.entry(place) != entry) return;
  const std::size_t start = place == 0 ? 0 : block.ends[place - 1];
  const auto first = block.bytes.begin() + static_cast<std::ptrdiff_t>(start);
  block.bytes.erase(first, first + static_cast<std::ptrdiff_t>(entry.size()));
  block.ends.erase(block.ends.begin() + static_cast<std::ptrdiff_t>(place));
  for (std::size_t i = place; i < block.size(); ++i) block.ends[i] -= static_cast<std::uint32_t>(entry.size());
  if (block.size() > 0) {
    noteLast(at);
  } else {
    blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(at));
    lasts_.erase(lasts_.begin() + static_cast<std::ptrdiff_t>(at));
  }
  --size_;
  ++version_;
}

}  // namespace orva::embedded
