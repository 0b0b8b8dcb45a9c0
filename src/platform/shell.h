#pragma once

#include <string>

namespace orva {

/// The desktop: opens a file with the program that the desktop has for it.
class Shell {
 public:
  Shell() = default;
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;
  virtual ~Shell() = default;

  /// The "Open" verb. Returns false when the desktop could not open the file;
  /// the file itself is untouched either way.
  virtual bool open(const std::string& path) = 0;
};

}  // namespace orva
