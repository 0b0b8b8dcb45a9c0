// The reader of Access files on damaged ones: open, read everything, check. An
// `AccessFileError` is a right answer; a crash, a hang or memory without bound is not.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/access/structure_check.h"

namespace {

using orva::access::AccessDatabase;
using orva::access::AccessFileError;
using orva::access::ByteSpan;
using orva::access::ByteView;

class InputFile final : public orva::access::RandomAccessFile {
 public:
  explicit InputFile(ByteView bytes) : bytes_(bytes) {}
  std::uint64_t size() override { return bytes_.size(); }
  void read(std::uint64_t offset, ByteSpan into) override {
    if (offset + into.size() > bytes_.size()) throw AccessFileError(0, "input: read past the end");
    std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), into.size(), into.begin());
  }
  void write(std::uint64_t, ByteView) override { throw AccessFileError(0, "input: read-only"); }
  void resize(std::uint64_t) override { throw AccessFileError(0, "input: read-only"); }
  void sync() override {}

 private:
  ByteView bytes_;
};

class InputSystem final : public orva::access::FileSystem {
 public:
  explicit InputSystem(ByteView bytes) : bytes_(bytes) {}
  bool exists(const std::string& path) override { return path == "input"; }
  std::unique_ptr<orva::access::RandomAccessFile> open(const std::string&, orva::access::OpenKind) override {
    return std::make_unique<InputFile>(bytes_);
  }
  void remove(const std::string&) override {}
  std::unique_ptr<orva::access::FileLock> lock(const std::string&) override { return nullptr; }

 private:
  ByteView bytes_;
};

/// The password of the file itself, so that protected files are read too.
std::string passwordOf(ByteView bytes) {
  if (bytes.size() < orva::access::kPageSize) return {};
  try {
    return orva::access::FileHeader::read(bytes.first(orva::access::kPageSize)).password;
  } catch (const orva::access::Damage&) {
    return {};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ByteView bytes(data, size);
  InputSystem files(bytes);
  try {
    const auto database =
        AccessDatabase::open("input", {.password = passwordOf(bytes), .forWriting = false, .files = &files});
    checkStructure(*database);
  } catch (const AccessFileError&) {
    // A damaged file is refused, or its faults are listed.
  }
  return 0;
}
