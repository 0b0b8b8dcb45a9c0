#pragma once

#include <array>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/access/access_file_error.h"
#include "platform/access/file_system.h"
#include "platform/access/format.h"
#include "platform/access/redo_log.h"

namespace orva::access {

/// The pages of one file: cached, scrambled pages decoded, changes collected
/// in a transaction. A page that `page` or `change` returned stays valid until
/// the next `trim`, `commit` or `rollback`.
class PageFile {
 public:
  /// Pages kept in memory after `trim`.
  static constexpr std::size_t kCachedPages = 14'336;
  /// Changed pages and bytes of the side file at which a sweep is due.
  static constexpr std::size_t kUnsavedPages = 8'192;
  static constexpr std::uint64_t kLogLength = 96u << 20;
  static constexpr std::chrono::seconds kSweepInterval{2};

  /// Opens an existing file and repeats what an interrupted program had
  /// finished. Throws `AccessFileError` when the length is not that of a database.
  static std::unique_ptr<PageFile> open(FileSystem& files, const std::string& path, bool forWriting);
  /// Makes a new file of no pages. Throws when it exists.
  static std::unique_ptr<PageFile> create(FileSystem& files, const std::string& path);
  /// Saves what is finished; drops what is not.
  ~PageFile();
  PageFile(const PageFile&) = delete;
  PageFile& operator=(const PageFile&) = delete;

  const std::string& path() const { return path_; }
  bool isWritable() const { return writable_; }
  /// True after a write failed that the side file makes good at the next open.
  bool isBroken() const { return broken_; }
  /// Closes a broken file without touching it or its side file.
  void abandon();
  PageNumber pageCount() const { return pageCount_; }
  /// Pages n >= 1 are coded with this key from now on; 0 = plain.
  void setScramblingKey(std::uint32_t key) { scramblingKey_ = key; }

  const Page& page(PageNumber number);
  /// The page, to be changed within the transaction.
  Page& change(PageNumber number) { return change(number, std::array{ByteRange{0, kPageSize}}); }
  /// The same, when nothing is changed outside of some parts of the page: only these are kept for a rollback, and
  /// compared for the side file. A page of which much is kept already is kept as a whole, however many changes follow.
  template <std::size_t kCount>
  Page& change(PageNumber number, const std::array<ByteRange, kCount>& parts) {
    Frame& target = startChange(number);
    if (target.keptBytes > kPageSize / 2) {
      keep(number, target, {0, kPageSize});
    } else {
      for (const ByteRange& part : parts) keep(number, target, part);
    }
    return target.page;
  }
  /// A new page of zeros at the end. Throws at the limit of 2 GB.
  PageNumber append();

  /// Grows whenever bytes of pages, or the place where they are in memory, may have become others.
  std::uint64_t version() const { return version_; }
  bool hasChanges() const { return !changed_.empty(); }
  /// Makes the changes since the last commit durable against the end of the program, or, while it holds back, after
  /// the next ones at the latest when it lets go. When it throws, the changes are there to be rolled back: those who
  /// have read pages must read them again.
  void commit();
  /// Until as many calls of `letGo`, changes that are committed may wait for others, to be written at once. When they
  /// cannot be written then, the file is broken: what waited was told as done.
  void holdBack() { ++holding_; }
  void letGo();
  /// Undoes the changes since the last commit.
  void rollback();
  /// Writes all finished changes into the file itself and waits for the disk. Only between transactions.
  void sweep();
  /// Lets go of pages when too many are cached. Only between operations.
  void trim();

  /// Throws the error for a fault on a page: names the file and the page.
  [[noreturn]] void fail(PageNumber page, const std::string& fault) const;
  /// Runs `action`; damage that it finds is reported with the page.
  template <typename Action>
  auto at(PageNumber page, Action&& action) const {
    try {
      return action();
    } catch (const Damage& damage) {
      fail(page, damage.what());
    }
  }

 private:
  /// What is looked at with every use stands before the page, beside its first bytes.
  struct Frame {
    bool used = false;
    bool changed = false;  // in the transaction
    bool unsaved = false;
    bool isKept = false;  // as a whole
    std::size_t keptBytes = 0;
    Page page;  // as read, or filled with zeros, by whoever makes the frame
  };
  /// A part of a page as it was before a change of the transaction: its bytes stand in `keptBytes_`.
  struct Kept {
    PageNumber page;
    ByteRange part;
    std::size_t at;
  };

  PageFile(FileSystem& files, std::string path, std::unique_ptr<RandomAccessFile> file, bool writable);
  Frame& frame(PageNumber number);
  Frame& newFrame(PageNumber number);
  std::unique_ptr<Frame> takeFrame();
  void dropFrame(std::unique_ptr<Frame>& slot);
  void load(PageNumber number, Page& page);
  void loadRun(PageNumber first);
  void decode(PageNumber number, Page& page) const;
  void store(PageNumber number, const Page& page);
  void recover();
  void openLog();
  void markUnsaved(PageNumber number, Frame& frame);
  bool sweepIsDue() const;
  Frame& startChange(PageNumber number);
  void keep(PageNumber number, Frame& target, ByteRange part);
  void endTransaction();

  FileSystem& files_;
  std::string path_;
  std::unique_ptr<RandomAccessFile> file_;
  std::unique_ptr<RedoLog> log_;
  bool writable_;
  bool broken_ = false;
  unsigned holding_ = 0;
  std::uint32_t scramblingKey_ = 0;
  PageNumber pageCount_ = 0;
  PageNumber committedPages_ = 0;
  PageNumber pagesInFile_ = 0;
  std::vector<std::unique_ptr<Frame>> frames_;
  std::size_t cached_ = 0;
  PageNumber trimHand_ = 0;
  std::uint64_t version_ = 0;
  PageNumber lastLoaded_ = 0;
  unsigned loadedInOrder_ = 0;
  std::vector<PageNumber> changed_;
  std::vector<PageNumber> unsaved_;
  std::vector<Kept> kept_;
  Bytes keptBytes_;
  /// Pages that the transaction is the first to change since they were written, with their checksums before.
  std::vector<std::pair<PageNumber, std::uint64_t>> bases_;
#ifndef NDEBUG
  /// Whole pages as they were, to see that nothing is changed outside of the parts that are kept.
  std::map<PageNumber, Page> wholes_;
  bool keepsEnough() const;
#endif
  std::vector<std::unique_ptr<Frame>> spareFrames_;
  std::chrono::steady_clock::time_point lastSweep_ = std::chrono::steady_clock::now();
};

}  // namespace orva::access
