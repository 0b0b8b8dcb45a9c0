#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orva::xls {

using ByteView = std::span<const std::uint8_t>;
using Bytes = std::vector<std::uint8_t>;

/// Little-endian numbers at a place that the caller has checked.
inline std::uint16_t u16At(ByteView bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
}
inline std::uint32_t u32At(ByteView bytes, std::size_t at) {
  return u16At(bytes, at) | static_cast<std::uint32_t>(u16At(bytes, at + 2)) << 16;
}
inline std::uint64_t u64At(ByteView bytes, std::size_t at) {
  return u32At(bytes, at) | static_cast<std::uint64_t>(u32At(bytes, at + 4)) << 32;
}
inline double doubleAt(ByteView bytes, std::size_t at) { return std::bit_cast<double>(u64At(bytes, at)); }

}  // namespace orva::xls
