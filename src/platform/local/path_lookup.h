#pragma once

#include <filesystem>
#include <string>

namespace orva {

/// The place of a path of the program on this system. Takes "\" and "/" as separators;
/// a component that is not there as written is looked for without regard to case (the
/// first in alphabetical order when several differ by case only). Components that are
/// not found at all are kept as written, so the result is also where a new file goes.
/// Never throws for a path that cannot be read; an empty text gives an empty path.
std::filesystem::path findPath(const std::string& path);

/// A native path as UTF-8 text.
std::string pathText(const std::filesystem::path& path);

}  // namespace orva
