#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace orva {

/// Where an unattended run reads and writes. Results go to `out`, message boxes to `err`.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

/// Exit statuses of the program.
enum class Exit {
  kDone = 0,
  /// Rows of the workbook are in error; nothing was posted.
  kRowsInError = 1,
  /// Refused or failed; `err` tells why.
  kFailed = 2,
};

/// What the command line asks for.
struct StartRequest {
  /// Show the start screen; otherwise run a command.
  bool isStartScreen = false;
  std::string programFolder;
  /// For the start screen: what stands behind the program's name.
  std::string commandLine;
};

/// `arguments` without the program's name. No command, or "/F" and a company, asks for the
/// start screen.
StartRequest readStartRequest(const std::vector<std::string>& arguments, const std::string& ownFolder);

/// Runs one command. Throws nothing; every failure is told on `err`.
Exit runBatch(const std::vector<std::string>& arguments, const std::string& ownFolder, const Streams& streams);

}  // namespace orva
