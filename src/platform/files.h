#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// A file operation that could not be done; `what()` names file and cause.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The file service. Paths may use "\" or "/" as the folder separator on every
/// system, and names are found without regard to case.
class Files {
 public:
  Files() = default;
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  virtual ~Files() = default;

  virtual bool exists(const std::string& path) const = 0;
  /// Names (not paths) of the files in a folder, in the order of the file
  /// system; sub-folders are left out. Throws when the folder cannot be read.
  virtual std::vector<std::string> list(const std::string& folder) const = 0;
  /// All lines without their line ends (CR LF or LF), bytes as stored. An empty
  /// file has no line.
  virtual std::vector<std::string> readLines(const std::string& path) const = 0;
  /// Writes the lines with CR LF, replacing an existing file only when all of
  /// it was written.
  virtual void writeLines(const std::string& path, const std::vector<std::string>& lines) = 0;
  /// Deletes a file; with `forced` a read-only one too. Throws when it cannot
  /// be deleted (open elsewhere, no permission). No error when there is none.
  virtual void remove(const std::string& path, bool forced) = 0;
  /// Copies a file. Throws when the target exists or cannot be written; a
  /// failed copy leaves no target.
  virtual void copy(const std::string& from, const std::string& to) = 0;
};

/// `folder` + "\" + `name`, the way the screens show and join paths.
std::string joinPath(std::string_view folder, std::string_view name);
/// File name after the last separator; without its extension; extension without the point.
std::string_view fileName(std::string_view path);
std::string_view baseName(std::string_view path);
std::string_view extensionName(std::string_view path);

}  // namespace orva
