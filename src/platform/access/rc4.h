#pragma once

#include <array>

#include "platform/access/bytes.h"

namespace orva::access {

/// The RC4 stream cipher, with which the format masks its header and scrambles
/// pages. Coding and decoding are the same.
class Rc4 {
 public:
  explicit Rc4(ByteView key) {
    for (std::size_t i = 0; i < state_.size(); ++i) state_[i] = static_cast<Byte>(i);
    Byte j = 0;
    for (std::size_t i = 0; i < state_.size(); ++i) {
      j = static_cast<Byte>(j + state_[i] + key[i % key.size()]);
      std::swap(state_[i], state_[j]);
    }
  }

  void apply(ByteSpan bytes) {
    for (Byte& byte : bytes) byte ^= next();
  }

 private:
  Byte next() {
    i_ = static_cast<Byte>(i_ + 1);
    j_ = static_cast<Byte>(j_ + state_[i_]);
    std::swap(state_[i_], state_[j_]);
    return state_[static_cast<Byte>(state_[i_] + state_[j_])];
  }

  std::array<Byte, 256> state_{};
  Byte i_ = 0;
  Byte j_ = 0;
};

}  // namespace orva::access
