#include "platform/xls/file_bytes.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "platform/local/path_lookup.h"
#include "platform/workbook.h"
#include "platform/xls/compound_file.h"

#if defined(__unix__)
#include <fcntl.h>
#include <sys/file.h>
#endif

namespace orva::xls {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = std::uintmax_t{1} << 30;
constexpr std::size_t kBeginning = 512;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

WorkbookError cannot(const std::string& verb, const std::string& path, const std::string& cause) {
  return {WorkbookFault::kCannotOpen, "The file \"" + path + "\" cannot be " + verb + ": " + cause + "."};
}

std::string causeOf(int error) {
  if (error == ENOENT) return "it does not exist";
  if (error == ENOTDIR) return "its folder does not exist";
  if (error == EACCES || error == EPERM) return "there is no permission, or another program holds it";
  return std::strerror(error);
}

File openFile(const fs::path& path, bool forWriting) {
#if defined(_WIN32)
  return File(_wfopen(path.c_str(), forWriting ? L"wb" : L"rb"), std::fclose);
#else
  return File(std::fopen(path.c_str(), forWriting ? "wb" : "rb"), std::fclose);
#endif
}

/// Windows refuses to open a file that another program holds. Elsewhere such
/// programs leave a lock, which has to be asked for.
bool isLocked([[maybe_unused]] std::FILE* file) {
#if defined(__unix__)
  const int descriptor = fileno(file);
  struct flock range = {};
  range.l_type = F_RDLCK;
  range.l_whence = SEEK_SET;
  if (fcntl(descriptor, F_GETLK, &range) == 0 && range.l_type != F_UNLCK) return true;
  return flock(descriptor, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
#else
  return false;
#endif
}

void readMore(std::FILE* file, Bytes& bytes, std::size_t size) {
  const std::size_t before = bytes.size();
  bytes.resize(size);
  bytes.resize(before + std::fread(bytes.data() + before, 1, size - before, file));
}

}  // namespace

Bytes readWorkbookFile(const std::string& path) {
  const fs::path place = findPath(path);
  std::error_code error;
  const fs::file_status status = fs::status(place, error);
  if (fs::is_directory(status)) throw cannot("opened", path, "it is a folder");
  // A pipe or device would keep the program waiting.
  if (fs::exists(status) && !fs::is_regular_file(status)) throw cannot("opened", path, "it is no ordinary file");
  const File file = openFile(place, false);
  if (!file) throw cannot("opened", path, causeOf(errno));
  if (isLocked(file.get())) throw cannot("opened", path, "another program holds it");
  const std::uintmax_t size = fs::file_size(place, error);
  if (error) throw cannot("read", path, error.message());
  if (size > kLargestFile) throw cannot("opened", path, "it is larger than any Excel 97-2003 workbook");

  Bytes bytes;
  readMore(file.get(), bytes, kBeginning);
  if (CompoundFile::hasSignature(bytes) && size > bytes.size())
    readMore(file.get(), bytes, static_cast<std::size_t>(size));
  if (std::ferror(file.get()) != 0) throw cannot("read", path, std::strerror(errno));
  return bytes;
}

void writeWorkbookFile(const std::string& path, const Bytes& bytes) {
  const fs::path place = findPath(path);
  std::error_code ignored, error;
  if (fs::is_directory(place, ignored)) throw cannot("written", path, "it is a folder");
  fs::path temporary = place;
  temporary += ".tmp";
  File file = openFile(temporary, true);
  if (!file) throw cannot("written", path, errno == ENOENT ? "its folder does not exist" : causeOf(errno));
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                       std::fflush(file.get()) == 0 && std::fclose(file.release()) == 0;
  if (written) fs::rename(temporary, place, error);
  if (written && !error) return;
  const std::string cause = error ? error.message() : std::strerror(errno);
  file.reset();
  fs::remove(temporary, ignored);
  throw cannot("written", path, cause);
}

}  // namespace orva::xls
