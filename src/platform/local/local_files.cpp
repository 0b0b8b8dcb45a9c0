#include "platform/local/local_files.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/local/path_lookup.h"

namespace orva {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& action, const std::string& path, const std::string& cause) {
  throw FileError("Cannot " + action + " " + path + ": " + cause + ".");
}

[[noreturn]] void fail(const std::string& action, const std::string& path, const std::error_code& fault) {
  fail(action, path, fault.message());
}

std::error_code lastFault() { return {errno == 0 ? EIO : errno, std::generic_category()}; }

bool isReadOnly(const fs::path& place) {
  constexpr fs::perms kWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code fault;
  const fs::file_status status = fs::status(place, fault);
  return !fault && fs::exists(status) && (status.permissions() & kWrite) == fs::perms::none;
}

/// A new file under a name of its own beside its target. Unless it was moved into place
/// it is deleted again, so that a failure leaves nothing behind.
class NewFile {
 public:
  explicit NewFile(const fs::path& target) : target_(target), place_(target) { place_ += ".new"; }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    std::error_code ignored;
    if (!moved_) fs::remove(place_, ignored);
  }

  const fs::path& place() const { return place_; }
  std::error_code moveIntoPlace() {
    std::error_code fault;
    fs::rename(place_, target_, fault);
    moved_ = !fault;
    return fault;
  }

 private:
  fs::path target_;
  fs::path place_;
  bool moved_ = false;
};

void stripCarriageReturn(std::string& line) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
}

}  // namespace

bool LocalFiles::exists(const std::string& path) const {
  std::error_code ignored;
  return fs::is_regular_file(findPath(path), ignored);
}

std::vector<std::string> LocalFiles::list(const std::string& folder) const {
  std::vector<std::string> names;
  std::error_code fault;
  fs::directory_iterator entry(findPath(folder), fault);
  for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
    std::error_code ignored;
    if (entry->is_regular_file(ignored)) names.push_back(pathText(entry->path().filename()));
  }
  if (fault) fail("read the folder", folder, fault);
  return names;
}

std::vector<std::string> LocalFiles::readLines(const std::string& path) const {
  const fs::path place = findPath(path);
  std::error_code fault;
  const fs::file_status status = fs::status(place, fault);
  if (fault) fail("read", path, fault);
  if (!fs::is_regular_file(status)) fail("read", path, "it is no file");
  errno = 0;
  std::ifstream file(place, std::ios::binary);
  if (!file) fail("read", path, lastFault());
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    stripCarriageReturn(line);
    lines.push_back(line);
  }
  if (file.bad()) fail("read", path, lastFault());
  return lines;
}

void LocalFiles::writeLines(const std::string& path, const std::vector<std::string>& lines) {
  const fs::path target = findPath(path);
  if (isReadOnly(target)) fail("write", path, "it is read-only");
  NewFile fresh(target);
  errno = 0;
  std::ofstream file(fresh.place(), std::ios::binary | std::ios::trunc);
  for (const std::string& line : lines) file << line << "\r\n";
  file.close();
  if (!file) fail("write", path, lastFault());
  if (const std::error_code fault = fresh.moveIntoPlace()) fail("write", path, fault);
}

void LocalFiles::remove(const std::string& path, bool forced) {
  const fs::path place = findPath(path);
  if (!forced && isReadOnly(place)) fail("delete", path, "it is read-only");
  std::error_code fault;
  if (fs::is_directory(place, fault)) fail("delete", path, "it is a folder");
  if (forced && isReadOnly(place)) fs::permissions(place, fs::perms::owner_write, fs::perm_options::add, fault);
  fs::remove(place, fault);
  if (fault) fail("delete", path, fault);
}

void LocalFiles::copy(const std::string& from, const std::string& to) {
  const fs::path target = findPath(to);
  std::error_code fault;
  if (!fs::is_regular_file(findPath(from), fault)) fail("copy " + from + " to", to, "there is no file " + from);
  if (fs::exists(target, fault)) fail("copy " + from + " to", to, "that file exists already");
  NewFile fresh(target);
  fs::copy_file(findPath(from), fresh.place(), fs::copy_options::overwrite_existing, fault);
  if (fault) fail("copy " + from + " to", to, fault);
  // A copy of a write-protected template is a working file of its own.
  fs::permissions(fresh.place(), fs::perms::owner_write, fs::perm_options::add, fault);
  fault = fresh.moveIntoPlace();
  if (fault) fail("copy " + from + " to", to, fault);
}

}  // namespace orva
