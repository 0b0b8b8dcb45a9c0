// Runs a fuzz target over files instead of made-up inputs: each argument is a
// file or a folder. Every input also runs cut off and with flipped bytes, so that
// the target finds something to do without a fuzzer.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;
using Input = std::vector<std::uint8_t>;

constexpr int kVariants = 200;

/// A copy of exactly these bytes, so that a step beyond its end is noticed.
void run(const Input& input) {
  const Input exact(input.begin(), input.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

/// The same variants on every run: a simple generator with a fixed start.
void runVariants(const Input& input) {
  if (input.empty()) return;
  std::uint32_t state = 1;
  auto next = [&](std::size_t below) {
    state = state * 1664525 + 1013904223;
    return static_cast<std::size_t>(state >> 8) % below;
  };
  for (int i = 0; i < kVariants; ++i) {
    Input variant = input;
    for (std::size_t changes = 1 + next(8); changes > 0; --changes) {
      variant[next(variant.size())] = static_cast<std::uint8_t>(next(256));
    }
    if (i % 4 == 0) variant.resize(next(variant.size()));
    run(variant);
  }
}

void runFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  const Input input{std::istreambuf_iterator<char>(file), {}};
  run(input);
  runVariants(input);
}

}  // namespace

int main(int count, char** arguments) {
  int files = 0;
  auto runOne = [&](const fs::path& path) {
    runFile(path);
    ++files;
  };
  for (int i = 1; i < count; ++i) {
    if (!fs::is_directory(arguments[i])) {
      runOne(arguments[i]);
      continue;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(arguments[i])) {
      if (entry.is_regular_file()) runOne(entry.path());
    }
  }
  std::printf("%d files\n", files);
  return files > 0 ? 0 : 1;
}
