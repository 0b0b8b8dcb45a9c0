#include <iostream>
#include <string>
#include <vector>

#include "app/batch/batch.h"
#include "app/wiring.h"
#ifdef ORVA_WINDOWS
#include "app/windows/run_windows.h"
#endif

namespace {

int showStartScreen([[maybe_unused]] int argc, [[maybe_unused]] char** argv,
                    [[maybe_unused]] const orva::StartRequest& request) {
#ifdef ORVA_WINDOWS
  return orva::runWindows(argc, argv, request.programFolder, request.commandLine);
#else
  std::cerr << "[ORVA] This build has no windows. 'orva-import --help' lists the commands." << std::endl;
  return static_cast<int>(orva::Exit::kFailed);
#endif
}

int run(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const std::string ownFolder = orva::ownProgramFolder(argc > 0 ? argv[0] : "");
  const orva::StartRequest request = orva::readStartRequest(arguments, ownFolder);
  if (request.isStartScreen) return showStartScreen(argc, argv, request);
  return static_cast<int>(orva::runBatch(arguments, ownFolder, {std::cin, std::cout, std::cerr}));
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "[ORVA] The program failed: " << error.what() << std::endl;
  } catch (...) {
    std::cerr << "[ORVA] The program failed." << std::endl;
  }
  return static_cast<int>(orva::Exit::kFailed);
}
