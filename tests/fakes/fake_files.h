#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/files.h"

namespace orva {

/// Files in memory. Folders exist when a file stands in them or when they were added.
class FakeFiles : public Files {
 public:
  bool exists(const std::string& path) const override;
  std::vector<std::string> list(const std::string& folder) const override;
  std::vector<std::string> readLines(const std::string& path) const override;
  void writeLines(const std::string& path, const std::vector<std::string>& lines) override;
  void remove(const std::string& path, bool forced) override;
  void copy(const std::string& from, const std::string& to) override;

  /// Puts a file there without any check.
  void put(const std::string& path, const std::vector<std::string>& lines = {});
  void addFolder(const std::string& path);
  /// A read-only file is not replaced, and deleted only by force.
  void setReadOnly(const std::string& path) { entry(path).readOnly = true; }
  /// A locked file (open in another program) cannot be read, replaced or deleted.
  void lock(const std::string& path) { entry(path).locked = true; }
  void unlock(const std::string& path) { entry(path).locked = false; }
  /// The `nth` call from now (1 is the next one; `exists` does not count) fails.
  void failAtCall(int nth) { failAt_ = calls_ + nth; }

 private:
  struct Entry {
    std::string name;
    std::vector<std::string> lines;
    bool readOnly = false;
    bool locked = false;
  };

  void count(const std::string& action, const std::string& path) const;
  Entry& entry(const std::string& path);
  const Entry& readable(const std::string& path) const;
  void checkFolder(const std::string& action, const std::string& path) const;

  std::map<std::string, Entry> entries_;
  std::map<std::string, bool> folders_;
  mutable int calls_ = 0;
  int failAt_ = -1;
};

}  // namespace orva
