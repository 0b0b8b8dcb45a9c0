#pragma once

#include <functional>
#include <utility>

#include "platform/event_loop.h"

namespace orva {

/// The message loop of an unattended run: no events, and a repaint (progress texts) at
/// most sixty times a second. The first interrupt of the user (Ctrl+C) is handed to the
/// run at its next yield; the second ends the program at once.
class QuietEventLoop : public EventLoop {
 public:
  /// `clock` must outlive the loop.
  explicit QuietEventLoop(Clock& clock) : clock_(clock) {}

  bool repaintDue() override;
  void yield() override;

  /// Starts watching for the interrupt of the user. `handler` is called at most once.
  void onInterrupt(std::function<void()> handler);

 private:
  Clock& clock_;
  std::chrono::milliseconds lastRepaint_{0};
  std::function<void()> interrupted_;
};

}  // namespace orva
