#include "platform/embedded/read_hold.h"

#include <atomic>
#include <cstdint>
#include <cstring>

namespace orva::embedded {
namespace {

constexpr int kIndexRegionSize = 32 * 1024;

/// Place of the number of commits in the header.
constexpr std::size_t kCommitCounter = 8;

std::uint32_t commitsIn(const std::byte* header) {
  std::uint32_t commits = 0;
  std::memcpy(&commits, header + kCommitCounter, sizeof commits);
  return commits;
}

}  // namespace

void ReadHold::attach(sqlite3* database) {
  database_ = database;
  holder_ = prepare(database, R"(SELECT 1 FROM "orva:meta")");
  sqlite3_file* file = nullptr;
  if (sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || !file->pMethods) return;
  if (file->pMethods->iVersion < 2 || !file->pMethods->xShmMap) return;
  volatile void* region = nullptr;
  if (file->pMethods->xShmMap(file, 0, kIndexRegionSize, 0, &region) == SQLITE_OK) index_ = region;
}

ReadHold::Header ReadHold::currentHeader() const {
  Header header;
  std::memcpy(header.data(), const_cast<const void*>(index_), header.size());
  std::atomic_thread_fence(std::memory_order_acquire);
  return header;
}

void ReadHold::begin() {
  if (!index_) return;
  if (held_ && currentHeader() == header_) return;
  // A commit between the look at the header and the start of the transaction
  // would go unnoticed: only an unchanged header belongs to the transaction.
  for (int attempt = 0; attempt < 3; ++attempt) {
    end();
    header_ = currentHeader();
    const int code = sqlite3_step(holder_.get());
    if (code != SQLITE_ROW) {
      end();
      throwEngineError(database_, code);
    }
    held_ = true;
    if (currentHeader() == header_) return;
  }
  // Somebody stores row after row: every look-up has its own transaction then.
  end();
}

void ReadHold::afterOwnCommit() {
  if (!held_) return;
  const Header now = currentHeader();
  const bool onlyOurs = now == header_ || commitsIn(now.data()) == commitsIn(header_.data()) + 1;
  if (!onlyOurs) return end();
  header_ = now;
}

void ReadHold::end() {
  if (!holder_) return;
  held_ = false;
  sqlite3_reset(holder_.get());
}

}  // namespace orva::embedded
