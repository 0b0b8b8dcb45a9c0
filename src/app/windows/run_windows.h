#pragma once

#include <string>

namespace orva {

/// Shows the start screen on the program folder and runs the windows until the user leaves.
/// `commandLine` is what followed the program's name, for the start screen ("/F" and a company).
/// Returns the exit status of the program.
int runWindows(int argc, char** argv, const std::string& programFolder, const std::string& commandLine);

}  // namespace orva
