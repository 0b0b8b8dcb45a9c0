#pragma once

#include "platform/event_loop.h"

namespace orva {

/// Time since the program started.
class LocalClock : public Clock {
 public:
  std::chrono::milliseconds now() override;
};

}  // namespace orva
