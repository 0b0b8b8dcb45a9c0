#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>

#include "platform/access/access_file_error.h"
#include "platform/access/file_system.h"

namespace orva::access {

/// What a program that was killed would not have seen.
struct Killed {};

/// Files in memory. Can end the "program" in the middle of its n-th write:
/// half of the bytes arrive, and nothing works any more until `revive`.
class FakeFileSystem final : public FileSystem {
 public:
  using Content = std::shared_ptr<Bytes>;

  void killAtWrite(int n) { writesLeft_ = n; }
  void revive() { writesLeft_ = -1, dead_ = false; }
  bool isDead() const { return dead_; }
  int writes() const { return writes_; }
  bool lockedElsewhere = false;
  /// Of each write half of the bytes arrive, then it fails.
  bool isFull = false;

  std::map<std::string, Content> files;

  bool exists(const std::string& path) override { return files.count(path) != 0; }
  std::unique_ptr<RandomAccessFile> open(const std::string& path, OpenKind kind) override;
  void remove(const std::string& path) override {
    countWrite();
    files.erase(path);
  }
  std::unique_ptr<FileLock> lock(const std::string&) override {
    return lockedElsewhere ? nullptr : std::make_unique<FileLock>();
  }

  /// Counts an operation that changes a file; false when the program dies in it.
  bool survivesWrite() {
    if (dead_) throw Killed();
    ++writes_;
    if (writesLeft_ < 0 || --writesLeft_ >= 0) return true;
    dead_ = true;
    return false;
  }
  void countWrite() {
    if (!survivesWrite()) throw Killed();
  }

 private:
  int writesLeft_ = -1;
  int writes_ = 0;
  bool dead_ = false;
};

class FakeFile final : public RandomAccessFile {
 public:
  FakeFile(FakeFileSystem& system, FakeFileSystem::Content content) : system_(system), content_(std::move(content)) {}

  std::uint64_t size() override { return content_->size(); }
  void read(std::uint64_t offset, ByteSpan into) override {
    if (system_.isDead()) throw Killed();
    if (offset + into.size() > content_->size()) {
      throw AccessFileError(provider_number::kUnspecified, "read past the end");
    }
    std::copy_n(content_->begin() + static_cast<std::ptrdiff_t>(offset), into.size(), into.begin());
  }
  void write(std::uint64_t offset, ByteView bytes) override {
    const bool survives = system_.survivesWrite();
    if (!survives || system_.isFull) bytes = bytes.first(bytes.size() / 2);
    if (content_->size() < offset + bytes.size()) content_->resize(offset + bytes.size());
    std::copy(bytes.begin(), bytes.end(), content_->begin() + static_cast<std::ptrdiff_t>(offset));
    if (!survives) throw Killed();
    if (system_.isFull) throw AccessFileError(provider_number::kUnspecified, "no space left");
  }
  void resize(std::uint64_t size) override {
    system_.countWrite();
    content_->resize(size);
  }
  void sync() override { system_.countWrite(); }

 private:
  FakeFileSystem& system_;
  FakeFileSystem::Content content_;
};

inline std::unique_ptr<RandomAccessFile> FakeFileSystem::open(const std::string& path, OpenKind kind) {
  if (dead_) throw Killed();
  const bool known = exists(path);
  if (kind == OpenKind::kCreateNew && known) throw AccessFileError(provider_number::kUnspecified, path + " exists");
  if (!known && kind != OpenKind::kCreateNew && kind != OpenKind::kWriteOrCreate) {
    throw AccessFileError(provider_number::kUnspecified, path + " is missing");
  }
  if (!known) {
    countWrite();
    files[path] = std::make_shared<Bytes>();
  }
  return std::make_unique<FakeFile>(*this, files[path]);
}

}  // namespace orva::access
