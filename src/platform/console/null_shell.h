#pragma once

#include "platform/shell.h"

namespace orva {

/// The desktop of an unattended run: nothing is opened, and nothing failed.
class NullShell : public Shell {
 public:
  bool open(const std::string&) override { return true; }
};

}  // namespace orva
