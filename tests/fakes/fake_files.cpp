#include "fakes/fake_files.h"

#include <algorithm>

#include "platform/values/text.h"

namespace orva {
namespace {

std::string key(const std::string& path) { return replaceAll(toUpper(path), "\\", "/"); }

std::string folderKey(const std::string& path) {
  const std::string whole = key(path);
  const std::size_t end = whole.rfind('/');
  return end == std::string::npos ? std::string() : whole.substr(0, end);
}

[[noreturn]] void fail(const std::string& action, const std::string& path, const std::string& cause) {
  throw FileError("Cannot " + action + " " + path + ": " + cause + ".");
}

}  // namespace

void FakeFiles::count(const std::string& action, const std::string& path) const {
  if (++calls_ == failAt_) fail(action, path, "the disk failed");
}

FakeFiles::Entry& FakeFiles::entry(const std::string& path) {
  const auto found = entries_.find(key(path));
  if (found == entries_.end()) fail("find", path, "No such file");
  return found->second;
}

const FakeFiles::Entry& FakeFiles::readable(const std::string& path) const {
  const auto found = entries_.find(key(path));
  if (found == entries_.end()) fail("read", path, "No such file");
  if (found->second.locked) fail("read", path, "it is open in another program");
  return found->second;
}

void FakeFiles::checkFolder(const std::string& action, const std::string& path) const {
  if (!folders_.contains(folderKey(path))) fail(action, path, "No such folder");
}

bool FakeFiles::exists(const std::string& path) const { return entries_.contains(key(path)); }

std::vector<std::string> FakeFiles::list(const std::string& folder) const {
  count("read the folder", folder);
  if (!folders_.contains(key(folder))) fail("read the folder", folder, "No such folder");
  std::vector<std::string> names;
  for (const auto& [path, file] : entries_) {
    if (folderKey(path) == key(folder)) names.push_back(file.name);
  }
  return names;
}

std::vector<std::string> FakeFiles::readLines(const std::string& path) const {
  count("read", path);
  return readable(path).lines;
}

void FakeFiles::writeLines(const std::string& path, const std::vector<std::string>& lines) {
  count("write", path);
  checkFolder("write", path);
  const auto found = entries_.find(key(path));
  if (found != entries_.end() && found->second.locked) fail("write", path, "it is open in another program");
  if (found != entries_.end() && found->second.readOnly) fail("write", path, "it is read-only");
  if (found == entries_.end()) return put(path, lines);
  found->second.lines = lines;
}

void FakeFiles::remove(const std::string& path, bool forced) {
  count("delete", path);
  const auto found = entries_.find(key(path));
  if (found == entries_.end()) return;
  if (found->second.locked) fail("delete", path, "it is open in another program");
  if (found->second.readOnly && !forced) fail("delete", path, "it is read-only");
  entries_.erase(found);
}

void FakeFiles::copy(const std::string& from, const std::string& to) {
  count("copy " + from + " to", to);
  if (exists(to)) fail("copy " + from + " to", to, "that file exists already");
  checkFolder("copy " + from + " to", to);
  put(to, readable(from).lines);
}

void FakeFiles::put(const std::string& path, const std::vector<std::string>& lines) {
  entries_[key(path)] = {.name = std::string(fileName(path)), .lines = lines};
  folders_[folderKey(path)] = true;
}

void FakeFiles::addFolder(const std::string& path) { folders_[key(path)] = true; }

}  // namespace orva
