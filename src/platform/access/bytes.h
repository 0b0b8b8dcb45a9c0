#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orva::access {

using Byte = std::uint8_t;
using Bytes = std::vector<Byte>;
using ByteView = std::span<const Byte>;
using ByteSpan = std::span<Byte>;

/// Little-endian numbers at a place that the caller has checked.
inline std::uint16_t u16At(ByteView bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
}
inline std::uint32_t u24At(ByteView bytes, std::size_t at) {
  return u16At(bytes, at) | static_cast<std::uint32_t>(bytes[at + 2]) << 16;
}
inline std::uint32_t u32At(ByteView bytes, std::size_t at) {
  return u16At(bytes, at) | static_cast<std::uint32_t>(u16At(bytes, at + 2)) << 16;
}
inline std::uint64_t u64At(ByteView bytes, std::size_t at) {
  return u32At(bytes, at) | static_cast<std::uint64_t>(u32At(bytes, at + 4)) << 32;
}
inline double doubleAt(ByteView bytes, std::size_t at) { return std::bit_cast<double>(u64At(bytes, at)); }

inline void putUnsigned(ByteSpan bytes, std::size_t at, std::uint64_t value, std::size_t width) {
  for (std::size_t i = 0; i < width; ++i) bytes[at + i] = static_cast<Byte>(value >> (8 * i));
}
inline void putU16(ByteSpan bytes, std::size_t at, std::size_t value) { putUnsigned(bytes, at, value, 2); }
inline void putU24(ByteSpan bytes, std::size_t at, std::size_t value) { putUnsigned(bytes, at, value, 3); }
inline void putU32(ByteSpan bytes, std::size_t at, std::size_t value) { putUnsigned(bytes, at, value, 4); }
inline void putU64(ByteSpan bytes, std::size_t at, std::uint64_t value) { putUnsigned(bytes, at, value, 8); }

inline void appendUnsigned(Bytes& bytes, std::uint64_t value, std::size_t width) {
  const std::size_t at = bytes.size();
  bytes.resize(at + width);
  for (std::size_t i = 0; i < width; ++i) bytes[at + i] = static_cast<Byte>(value >> (8 * i));
}
/// Most significant byte first, as index keys and index rows are stored.
inline void appendBigEndian(Bytes& bytes, std::uint64_t value, std::size_t width) {
  const std::size_t at = bytes.size();
  bytes.resize(at + width);
  for (std::size_t i = 0; i < width; ++i) bytes[at + i] = static_cast<Byte>(value >> (8 * (width - 1 - i)));
}
inline std::uint32_t bigEndianAt(ByteView bytes, std::size_t at, std::size_t width) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < width; ++i) value = value << 8 | bytes[at + i];
  return value;
}
inline void append(Bytes& bytes, ByteView more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

}  // namespace orva::access
