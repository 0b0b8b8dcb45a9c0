#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/access/bytes.h"

namespace orva::access {

/// A file with access by place. Failures throw `AccessFileError`.
class RandomAccessFile {
 public:
  RandomAccessFile() = default;
  RandomAccessFile(const RandomAccessFile&) = delete;
  RandomAccessFile& operator=(const RandomAccessFile&) = delete;
  virtual ~RandomAccessFile() = default;

  virtual std::uint64_t size() = 0;
  /// Fills `into` wholly, or throws.
  virtual void read(std::uint64_t offset, ByteSpan into) = 0;
  /// Writes all bytes; a place past the end lengthens the file.
  virtual void write(std::uint64_t offset, ByteView bytes) = 0;
  virtual void resize(std::uint64_t size) = 0;
  /// Returns when everything written has reached the disk.
  virtual void sync() = 0;
};

/// Held while a database is open for writing; released when destroyed, or by
/// the system when the program ends in any way.
class FileLock {
 public:
  FileLock() = default;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  virtual ~FileLock() = default;
};

enum class OpenKind { kRead, kWrite, kCreateNew, kWriteOrCreate };

/// The few file operations that the format needs: the machine's, or a fake
/// that stops in the middle of a run.
class FileSystem {
 public:
  FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;
  virtual ~FileSystem() = default;

  virtual bool exists(const std::string& path) = 0;
  virtual std::unique_ptr<RandomAccessFile> open(const std::string& path, OpenKind kind) = 0;
  /// No error when there is no such file.
  virtual void remove(const std::string& path) = 0;
  /// Takes the lock file `path` for this program alone: makes it, or takes over
  /// one that its maker left behind. Nothing when another program holds it.
  virtual std::unique_ptr<FileLock> lock(const std::string& path) = 0;
};

/// Files of this machine.
FileSystem& machineFileSystem();

}  // namespace orva::access
