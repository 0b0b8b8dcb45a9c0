#include "platform/access/redo_log.h"

#include <algorithm>
#include <cstring>

#include "platform/access/access_file_error.h"

namespace orva::access {
namespace {

// File: magic, checksum of the identity. Record: magic, length of the ranges,
// page count, checksum, ranges. Range: page, offset, length, bytes.
constexpr std::uint32_t kFileMagic = 0x4C52414F;
constexpr std::uint32_t kRecordMagic = 0x5243524F;
constexpr std::size_t kFileHeader = 12;
constexpr std::size_t kRecordHeader = 20;
constexpr std::size_t kRangeHeader = 8;
/// Ranges begin and end at multiples of this.
constexpr std::size_t kUnit = 16;

std::uint64_t checksum(ByteView bytes, std::uint64_t seed) {
  constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15;
  std::uint64_t sum = seed ^ bytes.size();
  std::size_t at = 0;
  for (; at + 8 <= bytes.size(); at += 8) {
    sum = (sum ^ u64At(bytes, at)) * kPrime;
    sum ^= sum >> 29;
  }
  for (; at < bytes.size(); ++at) sum = (sum ^ bytes[at]) * kPrime;
  return sum ^ sum >> 32;
}

bool isEqual(const Page& left, const Page& right, std::size_t at, std::size_t size) {
  return std::memcmp(&left[at], &right[at], size) == 0;
}

/// The first unit from `at` on that differs.
std::size_t firstDifference(const Page& left, const Page& right, std::size_t at) {
  constexpr std::size_t kBlock = 16 * kUnit;
  while (at < kPageSize && at % kBlock != 0 && isEqual(left, right, at, kUnit)) at += kUnit;
  if (at % kBlock != 0) return at;
  while (at < kPageSize && isEqual(left, right, at, kBlock)) at += kBlock;
  while (at < kPageSize && isEqual(left, right, at, kUnit)) at += kUnit;
  return at;
}

}  // namespace

RedoLog::RedoLog(FileSystem& files, std::string path, ByteView identity)
    : files_(files), path_(std::move(path)), identity_(identity.begin(), identity.end()) {}

bool RedoLog::recover(const ApplyRange& applyRange, const ApplyLength& applyLength) {
  if (!files_.exists(path_)) return false;
  const auto leftBehind = files_.open(path_, OpenKind::kRead);
  Bytes log(leftBehind->size());
  leftBehind->read(0, log);
  if (log.size() < kFileHeader + kRecordHeader || u32At(log, 0) != kFileMagic) return false;
  if (u64At(log, 4) != checksum(identity_, kFileMagic)) {
    throw AccessFileError(provider_number::kUnspecified,
                          path_ +
                              ": holds unfinished changes of a database that another program has used since. "
                              "Delete this file to open the database without them.");
  }
  bool found = false;
  for (std::size_t at = kFileHeader; at + kRecordHeader <= log.size();) {
    const std::uint32_t length = u32At(log, at + 4);
    if (u32At(log, at) != kRecordMagic || length > log.size() - at - kRecordHeader) break;
    const ByteView ranges = ByteView(log).subspan(at + kRecordHeader, length);
    const PageNumber pageCount = u32At(log, at + 8);
    if (u64At(log, at + 12) != checksum(ranges, pageCount)) break;
    applyLength(pageCount);
    for (std::size_t r = 0; r + kRangeHeader <= length;) {
      const std::size_t size = u16At(ranges, r + 6);
      applyRange(u32At(ranges, r), u16At(ranges, r + 4), ranges.subspan(r + kRangeHeader, size));
      r += kRangeHeader + size;
    }
    at += kRecordHeader + length;
    found = true;
  }
  return found;
}

void RedoLog::addPage(PageNumber page, const Page& before, const Page& after) {
  if (record_.empty()) record_.resize(kRecordHeader);
  for (std::size_t at = firstDifference(before, after, 0); at < kPageSize; at = firstDifference(before, after, at)) {
    std::size_t end = at + kUnit;
    while (end < kPageSize && !isEqual(before, after, end, kUnit)) end += kUnit;
    const std::size_t header = record_.size();
    record_.resize(header + kRangeHeader + end - at);
    putU32(record_, header, page);
    putU16(record_, header + 4, at);
    putU16(record_, header + 6, end - at);
    std::memcpy(record_.data() + header + kRangeHeader, &after[at], end - at);
    at = end;
  }
}

void RedoLog::commit(PageNumber pageCount) {
  if (record_.empty()) return;
  if (length_ == 0) start();
  const ByteView ranges = ByteView(record_).subspan(kRecordHeader);
  putU32(record_, 0, kRecordMagic);
  putU32(record_, 4, ranges.size());
  putU32(record_, 8, pageCount);
  putU64(record_, 12, checksum(ranges, pageCount));
  file_->write(length_, record_);
  length_ += record_.size();
  record_.clear();
}

void RedoLog::start() {
  if (!file_) {
    file_ = files_.open(path_, OpenKind::kWriteOrCreate);
    file_->resize(0);
  }
  Bytes header;
  appendUnsigned(header, kFileMagic, 4);
  appendUnsigned(header, checksum(identity_, kFileMagic), 8);
  file_->write(0, header);
  length_ = kFileHeader;
}

void RedoLog::sync() {
  if (file_) file_->sync();
}

void RedoLog::restart() {
  if (file_) {
    file_->resize(0);
  } else {
    files_.remove(path_);
  }
  length_ = 0;
}

void RedoLog::close() {
  file_.reset();
  files_.remove(path_);
  length_ = 0;
}

}  // namespace orva::access
