#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace orva::access {

using Byte = std::uint8_t;
using Bytes = std::vector<Byte>;
using ByteView = std::span<const Byte>;
using ByteSpan = std::span<Byte>;

/// A part of a page.
struct ByteRange {
  std::size_t offset = 0;
  std::size_t size = 0;
};

// Numbers stand in the file as they do in memory.
static_assert(std::endian::native == std::endian::little);

template <typename Number>
Number numberAt(ByteView bytes, std::size_t at) {
  Number number;
  std::memcpy(&number, bytes.data() + at, sizeof number);
  return number;
}
template <typename Number>
void putNumber(ByteSpan bytes, std::size_t at, Number number) {
  std::memcpy(bytes.data() + at, &number, sizeof number);
}

/// Numbers at a place that the caller has checked.
inline std::uint16_t u16At(ByteView bytes, std::size_t at) { return numberAt<std::uint16_t>(bytes, at); }
inline std::uint32_t u24At(ByteView bytes, std::size_t at) {
  return u16At(bytes, at) | static_cast<std::uint32_t>(bytes[at + 2]) << 16;
}
inline std::uint32_t u32At(ByteView bytes, std::size_t at) { return numberAt<std::uint32_t>(bytes, at); }
inline std::uint64_t u64At(ByteView bytes, std::size_t at) { return numberAt<std::uint64_t>(bytes, at); }
inline double doubleAt(ByteView bytes, std::size_t at) { return std::bit_cast<double>(u64At(bytes, at)); }

inline void putU16(ByteSpan bytes, std::size_t at, std::size_t value) {
  putNumber(bytes, at, static_cast<std::uint16_t>(value));
}
inline void putU24(ByteSpan bytes, std::size_t at, std::size_t value) {
  putU16(bytes, at, value);
  bytes[at + 2] = static_cast<Byte>(value >> 16);
}
inline void putU32(ByteSpan bytes, std::size_t at, std::size_t value) {
  putNumber(bytes, at, static_cast<std::uint32_t>(value));
}
inline void putU64(ByteSpan bytes, std::size_t at, std::uint64_t value) { putNumber(bytes, at, value); }

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
/// Eight bytes as one number that sorts as they do.
inline std::uint64_t bigEndianWord(const Byte* at) {
  const auto part = [at](int i) { return std::uint64_t{at[i]} << (56 - 8 * i); };
  return part(0) | part(1) | part(2) | part(3) | part(4) | part(5) | part(6) | part(7);
}
inline void append(Bytes& bytes, ByteView more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

}  // namespace orva::access
