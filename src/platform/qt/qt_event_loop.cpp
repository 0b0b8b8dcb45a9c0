#include "platform/qt/qt_event_loop.h"

#include <QCoreApplication>

namespace orva {
namespace {

/// Some sixty times a second.
constexpr qint64 kRepaintPause = 17;

}  // namespace

bool QtEventLoop::repaintDue() { return sincePaint_.hasExpired(kRepaintPause); }

void QtEventLoop::yield() {
  if (!repaintDue()) return;
  QCoreApplication::processEvents();
  // Painting itself takes time: the pause is counted from its end.
  sincePaint_.restart();
}

}  // namespace orva
