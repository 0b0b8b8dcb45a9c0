#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/access/file_system.h"
#include "platform/access/format.h"

namespace orva::access {

/// The side file that makes changes of the database atomic. Every finished
/// change (statement or record) is appended as one record with a checksum
/// before any page of the database is touched; from time to time all changed
/// pages go to the database in one sweep, and the log starts anew: over its old
/// records when there are many, which is cheaper than making room again. After an
/// interruption the whole records of the log are applied again, which is right
/// whatever part of the sweep was done, because a record says what bytes a
/// place has, not how it changes.
///
/// The log knows the pages as they stood in the database before it: until a
/// sweep has begun, they must be the same when it is applied. So a database
/// that was put in the place of the one that the log belongs to, a copy of
/// yesterday say, is never mixed with changes of today.
///
/// The program's end at any point loses nothing that was written here; what
/// ended and waits for its `write` is lost, the last records first. A power cut
/// can lose what was appended since the last sweep, never half of a change:
/// the log reaches the disk before the pages do.
class RedoLog {
 public:
  /// `identity` are bytes of the database that another program's use changes
  /// (the user slots of the header).
  RedoLog(FileSystem& files, std::string path, ByteView identity);

  /// The name of the side file of a database.
  static std::string pathFor(const std::string& database) { return database + "-changes"; }

  using ApplyRange = std::function<void(PageNumber page, std::size_t offset, ByteView bytes)>;
  using ApplyLength = std::function<void(PageNumber pageCount)>;
  /// The page as it stands in the database; null when it has no such page.
  using PageInFile = std::function<const Page*(PageNumber page)>;
  /// Reads a log that an interrupted program left behind. Returns false when
  /// there is none with a whole record. Throws `AccessFileError`, with nothing
  /// applied, when the database has been used by another program or replaced since.
  bool recover(const PageInFile& pageInFile, const ApplyRange& applyRange, const ApplyLength& applyLength);

  using Checksum = std::uint64_t (*)(ByteView bytes, std::uint64_t seed);

  /// Parts of a page are recorded in multiples of this.
  static constexpr std::size_t kUnit = 16;

  /// Of a page as the database itself holds it.
  static std::uint64_t checksumOf(PageNumber page, const Page& bytes);
  /// Collects one record. First, what pages of the database are changed for the first time since it holds them;
  void addBase(PageNumber page, std::uint64_t checksum);
  /// then the bytes of `after` that differ from `before`, a part of a page that begins and ends at multiples of
  /// `kUnit`.
  void addChange(PageNumber page, std::size_t offset, ByteView before, ByteView after);
  /// Ends the collected record, which is in the side file after the next `write`.
  void commit(PageNumber pageCount);
  /// Appends all ended records to the side file. When it throws, they are still there for the next time.
  void write();
  /// Takes back the collected record and, when it was not written, the one that ended last.
  void discard() { recorded_ = ended_ = beforeLast_; }
  /// Bytes of ended records that are not written.
  std::size_t waiting() const { return ended_; }
  std::uint64_t length() const { return length_; }
  /// From now on pages of the database are written; returns when the whole log has reached the disk.
  void beginSweep(PageNumber pageCount);
  /// Forgets all records; they must be in the database by now.
  void restart();
  /// Removes the side file.
  void close();

 private:
  void start();
  void writeHeader();
  void cutOff() noexcept;
  void addRange(PageNumber page, std::size_t offset, ByteView bytes);
  [[noreturn]] void refuse() const;

  FileSystem& files_;
  std::string path_;
  Bytes identity_;
  std::unique_ptr<RandomAccessFile> file_;
  /// Of the side file that is there: one that an earlier version left behind is finished in its own way.
  Checksum checksum_;
  std::uint64_t beginning_ = 1;  ///< how often it began anew; 0 for one of an earlier version
  Bytes record_;
  std::size_t recorded_ = 0;    ///< bytes of all records here
  std::size_t ended_ = 0;       ///< of those that have ended
  std::size_t beforeLast_ = 0;  ///< of those that ended before the last one
  std::uint64_t length_ = 0;
};

}  // namespace orva::access
