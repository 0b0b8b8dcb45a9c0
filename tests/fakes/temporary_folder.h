#pragma once

#include <filesystem>
#include <string>

#include "platform/local/path_lookup.h"

namespace orva {

/// A folder of its own for one test, deleted with everything in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }
  std::string text() const { return pathText(path_); }
  /// Path of a file in the folder.
  std::string file(const std::string& name) const { return pathText(path_ / name); }
  /// Writes a file with exactly these bytes and gives its path.
  std::string write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace orva
