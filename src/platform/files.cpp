#include "platform/files.h"

namespace orva {

std::string joinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  path += '\\';
  path += name;
  return path;
}

std::string_view fileName(std::string_view path) {
  const std::size_t separator = path.find_last_of("\\/");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::string_view baseName(std::string_view path) {
  const std::string_view name = fileName(path);
  return name.substr(0, name.rfind('.'));
}

std::string_view extensionName(std::string_view path) {
  const std::string_view name = fileName(path);
  const std::size_t point = name.rfind('.');
  return point == std::string_view::npos ? std::string_view() : name.substr(point + 1);
}

}  // namespace orva
