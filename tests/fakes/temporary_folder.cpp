#include "fakes/temporary_folder.h"

#include <fstream>
#include <iterator>
#include <random>

namespace orva {

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("orva-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& bytes) const {
  std::ofstream stream(path_ / name, std::ios::binary);
  stream << bytes;
  return file(name);
}

std::string TemporaryFolder::read(const std::string& name) const {
  std::ifstream stream(path_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace orva
