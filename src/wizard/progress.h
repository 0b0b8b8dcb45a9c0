#pragma once

#include <string_view>

#include "platform/controls.h"
#include "platform/event_loop.h"

namespace orva {

/// The status labels and the progress bar of a long run. Texts are composed
/// only when a repaint is due.
class RunProgress {
 public:
  struct Parts {
    Label& message;
    Label& current;
    ProgressBar& bar;
    EventLoop& eventLoop;
  };
  explicit RunProgress(Parts parts) : parts_(parts) {}

  /// Shows `message` and starts the bar at 0 of `maximum` rows.
  void begin(std::string_view message, int maximum);
  /// `prefix` is "Validating Row : " or "Dumping Row : "; the column's heading follows.
  void cell(std::string_view prefix, int row, std::string_view heading);
  /// After each row: moves the bar and yields to the message loop.
  void rowDone(int row);
  /// True when texts and scroll positions may be shown now.
  bool repaintDue() const { return parts_.eventLoop.repaintDue(); }
  /// Shows `message`, resets the bar to 0 and hides it.
  void finish(std::string_view message);

  /// The window is being closed: the run ends after the current row.
  void requestStop() { stopRequested_ = true; }
  bool stopRequested() const { return stopRequested_; }
  /// A new run of the screen begins.
  void clearStop() { stopRequested_ = false; }

 private:
  Parts parts_;
  bool stopRequested_ = false;
};

}  // namespace orva
