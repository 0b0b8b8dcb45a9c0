#include "platform/embedded/password.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <random>

namespace orva::embedded {
namespace {

using Words = std::array<std::uint32_t, 8>;

/// The first 32 bits of the fractional part of the `root`-th root of `prime`
/// (the constants of the digest are defined so).
std::uint32_t rootFraction(std::uint32_t prime, int root) {
  // Largest x with x^root <= prime * 2^(32 * root), by bisection in 128 bits:
  // x has at most 36 bits, so the cube of x is compared piecewise.
  std::uint64_t low = 0;
  std::uint64_t high = std::uint64_t{1} << 37;
  const auto fits = [prime, root](std::uint64_t x) {
    // Compare x^root with prime << (32 * root) in base 2^32 digits.
    std::array<std::uint64_t, 8> product{1};
    for (int factor = 0; factor < root; ++factor) {
      std::array<std::uint64_t, 8> next{};
      const std::array<std::uint64_t, 2> digits{x & 0xFFFFFFFFu, x >> 32};
      for (std::size_t i = 0; i < 6; ++i) {
        for (std::size_t j = 0; j < 2; ++j) {
          const std::uint64_t part = product[i] * digits[j];
          next[i + j] += part & 0xFFFFFFFFu;
          next[i + j + 1] += part >> 32;
        }
      }
      for (std::size_t i = 0; i + 1 < next.size(); ++i) {
        next[i + 1] += next[i] >> 32;
        next[i] &= 0xFFFFFFFFu;
      }
      product = next;
    }
    const auto top = static_cast<std::size_t>(root);
    for (std::size_t i = product.size() - 1; i > top; --i) {
      if (product[i] != 0) return false;
    }
    return product[top] < prime;
  };
  while (high - low > 1) {
    const std::uint64_t middle = (low + high) / 2;
    (fits(middle) ? low : high) = middle;
  }
  return static_cast<std::uint32_t>(low);
}

std::array<std::uint32_t, 64> firstPrimes() {
  std::array<std::uint32_t, 64> primes{};
  std::size_t count = 0;
  for (std::uint32_t n = 2; count < primes.size(); ++n) {
    bool prime = true;
    for (std::size_t i = 0; i < count; ++i) prime = prime && n % primes[i] != 0;
    if (prime) primes[count++] = n;
  }
  return primes;
}

struct Constants {
  Words start{};
  std::array<std::uint32_t, 64> rounds{};
  Constants() {
    const auto primes = firstPrimes();
    for (std::size_t i = 0; i < start.size(); ++i) start[i] = rootFraction(primes[i], 2);
    for (std::size_t i = 0; i < rounds.size(); ++i) rounds[i] = rootFraction(primes[i], 3);
  }
};

const Constants& constants() {
  static const Constants kConstants;
  return kConstants;
}

void digestBlock(Words& state, const unsigned char* block) {
  std::array<std::uint32_t, 64> w{};
  for (std::size_t i = 0; i < 16; ++i) {
    for (std::size_t j = 0; j < 4; ++j) w[i] = w[i] << 8 | block[i * 4 + j];
  }
  for (std::size_t i = 16; i < 64; ++i) {
    const std::uint32_t a = std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
    const std::uint32_t b = std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
    w[i] = w[i - 16] + a + w[i - 7] + b;
  }
  Words s = state;
  for (std::size_t i = 0; i < 64; ++i) {
    const std::uint32_t e = std::rotr(s[4], 6) ^ std::rotr(s[4], 11) ^ std::rotr(s[4], 25);
    const std::uint32_t choice = (s[4] & s[5]) ^ (~s[4] & s[6]);
    const std::uint32_t first = s[7] + e + choice + constants().rounds[i] + w[i];
    const std::uint32_t a = std::rotr(s[0], 2) ^ std::rotr(s[0], 13) ^ std::rotr(s[0], 22);
    const std::uint32_t majority = (s[0] & s[1]) ^ (s[0] & s[2]) ^ (s[1] & s[2]);
    s = {first + a + majority, s[0], s[1], s[2], s[3] + first, s[4], s[5], s[6]};
  }
  for (std::size_t i = 0; i < 8; ++i) state[i] += s[i];
}

}  // namespace

std::string sha256(std::string_view text) {
  std::string padded(text);
  padded.push_back('\x80');
  while (padded.size() % 64 != 56) padded.push_back('\0');
  const std::uint64_t bits = std::uint64_t{text.size()} * 8;
  for (int shift = 56; shift >= 0; shift -= 8) padded.push_back(static_cast<char>(bits >> shift & 0xFF));
  Words state = constants().start;
  for (std::size_t at = 0; at < padded.size(); at += 64) {
    std::array<unsigned char, 64> block{};
    for (std::size_t i = 0; i < block.size(); ++i) block[i] = static_cast<unsigned char>(padded[at + i]);
    digestBlock(state, block.data());
  }
  std::string hex;
  for (std::uint32_t word : state) {
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", word);
    hex += digits.data();
  }
  return hex;
}

std::string passwordMark(std::string_view password) {
  std::random_device random;
  std::string salt;
  for (int i = 0; i < 4; ++i) {
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", static_cast<unsigned>(random()));
    salt += digits.data();
  }
  return salt + ":" + sha256(salt + std::string(password));
}

bool passwordFits(std::string_view password, std::string_view mark) {
  const std::size_t colon = mark.find(':');
  if (colon == std::string_view::npos) return false;
  const std::string salted = std::string(mark.substr(0, colon)) + std::string(password);
  return sha256(salted) == mark.substr(colon + 1);
}

}  // namespace orva::embedded
