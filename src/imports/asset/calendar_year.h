#pragma once

#include <string>

#include "platform/values/date.h"

namespace orva {

/// One year of the accounting or the financial calendar.
struct CalendarYear {
  /// The year's key.
  std::string name = {};
  Date opening = {};
  Date closing = {};
  bool isClosed = false;
};

}  // namespace orva
