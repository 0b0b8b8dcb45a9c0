#pragma once

#include <chrono>

namespace orva {

/// Time for progress and pacing. Never goes backwards.
class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  virtual std::chrono::milliseconds now() = 0;
};

/// The message loop of the one user-interface thread. Long runs call `yield`
/// after each row so that the screen stays alive.
class EventLoop {
 public:
  EventLoop() = default;
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;
  virtual ~EventLoop() = default;

  /// True when the screen may be repainted now (at most some sixty times a
  /// second). Status texts need to be composed only then.
  virtual bool repaintDue() = 0;
  /// Handles waiting events if a repaint is due; otherwise returns at once.
  /// Handlers of other controls may run inside this call.
  virtual void yield() = 0;
};

}  // namespace orva
