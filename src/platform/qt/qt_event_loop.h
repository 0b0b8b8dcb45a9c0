#pragma once

#include <QElapsedTimer>

#include "platform/event_loop.h"

namespace orva {

/// The message loop of the windows. A yield before the next repaint is due costs a look at
/// the clock; a due one refreshes the changed widgets, paints and handles keys and mouse.
class QtEventLoop : public EventLoop {
 public:
  QtEventLoop() { sincePaint_.start(); }

  bool repaintDue() override;
  void yield() override;

 private:
  QElapsedTimer sincePaint_;
};

}  // namespace orva
