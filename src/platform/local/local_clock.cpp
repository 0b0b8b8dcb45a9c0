#include "platform/local/local_clock.h"

namespace orva {

std::chrono::milliseconds LocalClock::now() {
  static const auto kStart = std::chrono::steady_clock::now();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - kStart);
}

}  // namespace orva
