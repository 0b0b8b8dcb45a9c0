#include "platform/embedded/text_hash.h"

#include <cstdint>
#include <cstring>

namespace orva::embedded {

std::size_t TextHash::operator()(std::string_view text) const {
  std::uint64_t hash = text.size() * 0x9E3779B97F4A7C15u;
  const char* at = text.data();
  std::size_t left = text.size();
  for (; left >= 8; at += 8, left -= 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, 8);
    hash = (hash ^ word) * 0xBF58476D1CE4E5B9u;
    hash ^= hash >> 29;
  }
  std::uint64_t tail = 0;
  std::memcpy(&tail, at, left);
  hash = (hash ^ tail) * 0x94D049BB133111EBu;
  return hash ^ hash >> 32;
}

}  // namespace orva::embedded
