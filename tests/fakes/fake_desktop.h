#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/shell.h"

namespace orva {

/// Records what would have been opened.
class FakeShell : public Shell {
 public:
  bool open(const std::string& path) override {
    opened.push_back(path);
    return succeeds;
  }

  std::vector<std::string> opened;
  bool succeeds = true;
};

/// Counts yields and can act as the user at one of them.
class FakeEventLoop : public EventLoop {
 public:
  bool repaintDue() override { return due; }
  void yield() override {
    ++yields;
    if (yields == actAt && action) action();
  }
  /// Runs `act` inside the `nth` yield from now (1 is the next one).
  void actAtYield(int nth, std::function<void()> act) {
    actAt = yields + nth;
    action = std::move(act);
  }

  int yields = 0;
  bool due = true;

 private:
  int actAt = 0;
  std::function<void()> action;
};

/// A clock that stands until it is moved.
class FakeClock : public Clock {
 public:
  std::chrono::milliseconds now() override { return time; }
  std::chrono::milliseconds time{1000};
};

}  // namespace orva
