#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/workbook.h"

/// Whole processes under measurement, and the cells of their workbooks.
namespace bench {

using orva::CellKind;
using orva::OutputCell;

struct Run {
  int status = -1;
  /// From start to end, whatever else the machine did.
  double seconds = 0;
  /// Of the process alone.
  double cpuSeconds = 0;
  double megabytes = 0;
};

inline double secondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Runs a program with its output dropped and its input from a file, and waits for it.
inline Run runProgram(const std::vector<std::string>& command, const std::string& input = "/dev/null") {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    dup2(open(input.c_str(), O_RDONLY), STDIN_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    std::vector<char*> words;
    for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execv(words[0], words.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) < 0) throw std::runtime_error("no process could be started");
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
          .seconds = wall.count(),
          .cpuSeconds = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime),
          .megabytes = static_cast<double>(usage.ru_maxrss) / 1024};
}

/// Does some work in a process of its own and waits for it. False when it failed.
template <class Work>
bool inChild(Work work) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      work();
      _exit(0);
    } catch (...) {
      _exit(1);
    }
  }
  int status = 0;
  return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

inline OutputCell text(std::string value) {
  return {value.empty() ? CellKind::kBlank : CellKind::kText, std::move(value)};
}
inline OutputCell number(std::string value) { return {CellKind::kNumber, std::move(value)}; }
inline OutputCell date(std::string value) { return {CellKind::kDate, std::move(value)}; }

}  // namespace bench
