#include "platform/console/quiet_event_loop.h"

#include <csignal>

namespace orva {
namespace {

constexpr std::chrono::milliseconds kRepaintPause{17};

volatile std::sig_atomic_t interruptPending = 0;

extern "C" void noteInterrupt(int) {
  interruptPending = 1;
  std::signal(SIGINT, SIG_DFL);
}

}  // namespace

bool QuietEventLoop::repaintDue() { return clock_.now() - lastRepaint_ >= kRepaintPause; }

void QuietEventLoop::yield() {
  if (interruptPending != 0 && interrupted_) {
    interruptPending = 0;
    std::exchange(interrupted_, nullptr)();
  }
  if (repaintDue()) lastRepaint_ = clock_.now();
}

void QuietEventLoop::onInterrupt(std::function<void()> handler) {
  interrupted_ = std::move(handler);
  interruptPending = 0;
  std::signal(SIGINT, noteInterrupt);
}

}  // namespace orva
