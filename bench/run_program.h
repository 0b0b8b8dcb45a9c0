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
  double seconds = 0;
  double megabytes = 0;
};

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
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, wall.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

inline OutputCell text(std::string value) {
  return {value.empty() ? CellKind::kBlank : CellKind::kText, std::move(value)};
}
inline OutputCell number(std::string value) { return {CellKind::kNumber, std::move(value)}; }
inline OutputCell date(std::string value) { return {CellKind::kDate, std::move(value)}; }

}  // namespace bench
