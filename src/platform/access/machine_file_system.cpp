#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/access/access_file_error.h"
#include "platform/access/file_system.h"

namespace orva::access {
namespace {

[[noreturn]] void fail(const std::string& path, const char* doing) {
  throw AccessFileError(provider_number::kUnspecified, path + ": cannot " + doing + " (" + std::strerror(errno) + ").");
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  int number() const { return number_; }

 private:
  int number_;
};

class MachineFile final : public RandomAccessFile {
 public:
  MachineFile(std::string path, int descriptor) : path_(std::move(path)), descriptor_(descriptor) {}

  std::uint64_t size() override {
    struct stat status {};
    if (::fstat(descriptor_.number(), &status) != 0) fail(path_, "be measured");
    return static_cast<std::uint64_t>(status.st_size);
  }

  void read(std::uint64_t offset, ByteSpan into) override {
    while (!into.empty()) {
      const auto count = ::pread(descriptor_.number(), into.data(), into.size(), static_cast<off_t>(offset));
      if (count < 0 && errno == EINTR) continue;
      if (count == 0) errno = EIO;
      if (count <= 0) fail(path_, "be read");
      into = into.subspan(static_cast<std::size_t>(count));
      offset += static_cast<std::uint64_t>(count);
    }
  }

  void write(std::uint64_t offset, ByteView bytes) override {
    while (!bytes.empty()) {
      const auto count = ::pwrite(descriptor_.number(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) fail(path_, "be written");
      bytes = bytes.subspan(static_cast<std::size_t>(count));
      offset += static_cast<std::uint64_t>(count);
    }
  }

  void resize(std::uint64_t size) override {
    if (::ftruncate(descriptor_.number(), static_cast<off_t>(size)) != 0) fail(path_, "change its length");
  }

  void sync() override {
    if (::fsync(descriptor_.number()) != 0) fail(path_, "be saved to disk");
  }

 private:
  std::string path_;
  Descriptor descriptor_;
};

/// The record that a program leaves in the lock file: computer and user, 32
/// bytes each.
std::array<Byte, 64> lockRecord() {
  std::array<Byte, 64> record{};
  char computer[32] = {};
  if (::gethostname(computer, sizeof computer - 1) == 0) std::memcpy(record.data(), computer, 31);
  static constexpr char kUser[] = "Admin";
  std::memcpy(record.data() + 32, kUser, sizeof kUser);
  return record;
}

/// Where a file server passes the locks of its clients on, Access itself on another computer is noticed by the
/// bytes that it locks in the lock file, and notices this program.
bool lockBytes([[maybe_unused]] int descriptor) {
#ifdef F_OFD_SETLK
  struct ::flock whole {};
  whole.l_type = F_WRLCK;
  whole.l_whence = SEEK_SET;
  return ::fcntl(descriptor, F_OFD_SETLK, &whole) == 0 || (errno != EAGAIN && errno != EACCES);
#else
  return true;
#endif
}

class MachineLock final : public FileLock {
 public:
  MachineLock(std::string path, int descriptor) : path_(std::move(path)), descriptor_(descriptor) {}
  ~MachineLock() override { ::unlink(path_.c_str()); }

 private:
  std::string path_;
  Descriptor descriptor_;
};

class MachineFileSystem final : public FileSystem {
 public:
  bool exists(const std::string& path) override { return ::access(path.c_str(), F_OK) == 0; }

  std::unique_ptr<RandomAccessFile> open(const std::string& path, OpenKind kind) override {
    static constexpr int kFlags[] = {O_RDONLY, O_RDWR, O_RDWR | O_CREAT | O_EXCL, O_RDWR | O_CREAT};
    const int descriptor = ::open(path.c_str(), kFlags[static_cast<int>(kind)] | O_CLOEXEC, 0666);
    if (descriptor < 0) fail(path, kind == OpenKind::kCreateNew ? "be created" : "be opened");
    return std::make_unique<MachineFile>(path, descriptor);
  }

  void remove(const std::string& path) override {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) fail(path, "be deleted");
  }

  std::unique_ptr<FileLock> lock(const std::string& path) override {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) fail(path, "be created");
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 || !lockBytes(descriptor)) {
      ::close(descriptor);
      return nullptr;
    }
    const auto record = lockRecord();
    if (::pwrite(descriptor, record.data(), record.size(), 0) != static_cast<ssize_t>(record.size())) {
      ::close(descriptor);
      fail(path, "be written");
    }
    return std::make_unique<MachineLock>(path, descriptor);
  }
};

}  // namespace

FileSystem& machineFileSystem() {
  static MachineFileSystem system;
  return system;
}

}  // namespace orva::access
