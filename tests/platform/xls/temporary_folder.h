#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace orva::xls {

/// A folder of its own for one test, removed at the end.
class TemporaryFolder {
 public:
  TemporaryFolder()
      : path_(testing::TempDir() + "orva-xls-" + std::to_string(getpid()) + "-" +
              testing::UnitTest::GetInstance()->current_test_info()->name()) {
    std::filesystem::create_directories(path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  std::string path(const std::string& name) const { return path_ + "/" + name; }
  std::string write(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
  }

 private:
  std::string path_;
};

}  // namespace orva::xls
