#pragma once

#include <string>
#include <vector>

#include "platform/files.h"

namespace orva {

/// The files of this machine. A file without any write permission counts as read-only:
/// it is neither replaced nor, unless forced, deleted.
class LocalFiles : public Files {
 public:
  bool exists(const std::string& path) const override;
  std::vector<std::string> list(const std::string& folder) const override;
  std::vector<std::string> readLines(const std::string& path) const override;
  void writeLines(const std::string& path, const std::vector<std::string>& lines) override;
  void remove(const std::string& path, bool forced) override;
  void copy(const std::string& from, const std::string& to) override;
};

}  // namespace orva
