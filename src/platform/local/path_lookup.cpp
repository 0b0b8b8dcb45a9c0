#include "platform/local/path_lookup.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include "platform/values/text.h"

namespace orva {
namespace {

namespace fs = std::filesystem;

fs::path nativePath(std::string text) {
  std::replace(text.begin(), text.end(), '\\', '/');
  return fs::path(std::u8string(text.begin(), text.end()));
}

bool isThere(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

/// The entry of `folder` whose name equals `name` but for case.
std::optional<fs::path> entryIgnoringCase(const fs::path& folder, const fs::path& name) {
  const std::string wanted = pathText(name);
  std::optional<fs::path> best;
  std::error_code fault;
  fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, fault);
  for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
    const fs::path candidate = entry->path().filename();
    if (equalsNoCase(pathText(candidate), wanted) && (!best || candidate < *best)) best = candidate;
  }
  return best;
}

}  // namespace

std::string pathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path findPath(const std::string& path) {
  fs::path wanted = nativePath(path);
  if (isThere(wanted)) return wanted;
  fs::path found = wanted.root_path();
  bool missing = false;
  for (const fs::path& component : wanted.relative_path()) {
    if (!missing && !isThere(found / component)) {
      const auto entry = entryIgnoringCase(found, component);
      missing = !entry;
      found /= entry.value_or(component);
    } else {
      found /= component;
    }
  }
  return found;
}

}  // namespace orva
