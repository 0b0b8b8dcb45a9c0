#include "platform/embedded/memory_index.h"

#include <algorithm>

namespace orva::embedded {
namespace {

constexpr std::size_t kFullBlock = 4096;

}  // namespace

std::string_view MemoryIndex::Block::entry(std::size_t i) const {
  const std::size_t start = i == 0 ? 0 : ends[i - 1];
  return std::string_view(bytes).substr(start, ends[i] - start);
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

/// The first block whose last entry is not below `wanted`.
std::size_t MemoryIndex::blockOf(std::string_view wanted) const {
  const auto found = std::lower_bound(blocks_.begin(), blocks_.end(), wanted,
                                      [](const std::unique_ptr<Block>& block, std::string_view text) {
                                        return block->entry(block->size() - 1) < text;
                                      });
  return static_cast<std::size_t>(found - blocks_.begin());
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
  if (blocks_.empty()) blocks_.push_back(std::make_unique<Block>());
  const std::size_t at = blocks_[0]->size() == 0 ? 0 : std::min(blockOf(entry), blocks_.size() - 1);
  Block& block = *blocks_[at];
  const std::size_t place = block.lowerBound(entry);
  if (place < block.size() && block.entry(place) == entry) return;
  const std::size_t start = place == 0 ? 0 : block.ends[place - 1];
  block.bytes.insert(start, entry);
  block.ends.insert(block.ends.begin() + static_cast<std::ptrdiff_t>(place), static_cast<std::uint32_t>(start));
  for (std::size_t i = place; i < block.size(); ++i) block.ends[i] += static_cast<std::uint32_t>(entry.size());
  ++size_;
  ++version_;
  if (block.bytes.size() > kFullBlock && block.size() > 1) split(at, place);
}

/// Ascending entries are the common case: then the left block stays full.
void MemoryIndex::split(std::size_t at, std::size_t insertedAt) {
  Block& left = *blocks_[at];
  const bool ascending = at + 1 == blocks_.size() && insertedAt + 1 == left.size();
  const std::size_t kept = ascending ? left.size() - 1 : left.size() / 2;
  auto right = std::make_unique<Block>();
  const std::uint32_t cut = left.ends[kept - 1];
  right->bytes.reserve(kFullBlock);
  right->bytes.assign(left.bytes, cut);
  right->ends.assign(left.ends.begin() + static_cast<std::ptrdiff_t>(kept), left.ends.end());
  for (std::uint32_t& end : right->ends) end -= cut;
  left.bytes.resize(cut);
  left.ends.resize(kept);
  if (ascending) {
    left.bytes.shrink_to_fit();
    left.ends.shrink_to_fit();
  }
  blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(at) + 1, std::move(right));
}

void MemoryIndex::erase(std::string_view entry) {
  const std::size_t at = blockOf(entry);
  if (at == blocks_.size()) return;
  Block& block = *blocks_[at];
  const std::size_t place = block.lowerBound(entry);
  if (block.entry(place) != entry) return;
  const std::size_t start = place == 0 ? 0 : block.ends[place - 1];
  block.bytes.erase(start, entry.size());
  block.ends.erase(block.ends.begin() + static_cast<std::ptrdiff_t>(place));
  for (std::size_t i = place; i < block.size(); ++i) block.ends[i] -= static_cast<std::uint32_t>(entry.size());
  if (block.size() == 0) blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(at));
  --size_;
  ++version_;
}

}  // namespace orva::embedded
