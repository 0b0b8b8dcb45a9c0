#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orva::embedded {

/// A sorted set of byte strings in memory, packed in blocks of some thousand
/// bytes: an entry costs its bytes and four more. Order is byte by byte, a shorter
/// string before its continuation.
class MemoryIndex {
 public:
  /// A place in the order. It stays right when the set changes: it goes on after
  /// (or before) the entry on which it stands.
  class Cursor {
   public:
    bool atEnd() const { return !valid_; }
    const std::string& entry() const { return entry_; }
    void next();
    void previous();

   private:
    friend class MemoryIndex;
    explicit Cursor(const MemoryIndex& index) : index_(&index) {}
    void standOn(std::size_t block, std::size_t place);

    const MemoryIndex* index_;
    std::uint64_t version_ = 0;
    std::size_t block_ = 0;
    std::size_t place_ = 0;
    std::string entry_;
    bool valid_ = false;
  };

  /// First entry >= `wanted`.
  Cursor lowerBound(std::string_view wanted) const;
  /// Last entry < `wanted`.
  Cursor before(std::string_view wanted) const;
  Cursor last() const;

  void insert(std::string_view entry);
  /// Without effect when there is no such entry.
  void erase(std::string_view entry);
  /// Fills the blocks again after many insertions in no order.
  void pack();
  std::size_t size() const { return size_; }

 private:
  struct Block {
    std::vector<char> bytes;
    std::vector<std::uint32_t> ends;

    std::size_t size() const { return ends.size(); }
    std::string_view entry(std::size_t i) const;
    std::size_t lowerBound(std::string_view wanted) const;
    void insert(std::size_t place, std::string_view entry);
  };

  /// The first bytes of an entry, to be compared without a look at the entry itself.
  using Beginning = std::array<std::uint64_t, 4>;

  static Beginning beginningOf(std::string_view entry);
  std::size_t blockOf(std::string_view wanted) const;
  void makeRoom(std::size_t& at, std::size_t& place);
  void addBlock(std::size_t at, std::unique_ptr<Block> block);
  void noteLast(std::size_t at);

  std::vector<std::unique_ptr<Block>> blocks_;
  std::vector<Beginning> lasts_;  ///< of the last entry of each block
  std::size_t size_ = 0;
  std::uint64_t version_ = 0;
};

}  // namespace orva::embedded
