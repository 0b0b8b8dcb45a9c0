#pragma once

#include <array>
#include <cstddef>

#include "platform/embedded/sqlite_handle.h"

namespace orva::embedded {

/// Keeps a read transaction open between look-ups. Every transaction locks and
/// unlocks the file, which costs more than the look-up itself; as long as nobody
/// has stored anything in between, the old transaction shows exactly what a new
/// one would. Whether somebody has is read from the header of the write-ahead
/// log's index, which every program that changes the file renews with each commit.
class ReadHold {
 public:
  /// `database` must be in write-ahead mode and outlive the hold.
  void attach(sqlite3* database);
  /// The transaction shows the newest state; no other statement may be running.
  void begin();
  void end();
  /// After a change in the held transaction: it goes on, and shows the change,
  /// unless somebody else has stored something meanwhile.
  void afterOwnCommit();

 private:
  /// Size of the header that a commit replaces as a whole.
  static constexpr std::size_t kHeaderSize = 48;
  using Header = std::array<std::byte, kHeaderSize>;

  Header currentHeader() const;

  sqlite3* database_ = nullptr;
  const volatile void* index_ = nullptr;
  StatementHandle holder_;
  bool held_ = false;
  Header header_{};
};

}  // namespace orva::embedded
