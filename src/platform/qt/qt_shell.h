#pragma once

#include "platform/shell.h"

namespace orva {

/// Opens files with the program that the desktop has for them.
class QtShell : public Shell {
 public:
  bool open(const std::string& path) override;
};

}  // namespace orva
