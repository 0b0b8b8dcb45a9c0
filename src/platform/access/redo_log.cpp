#include "platform/access/redo_log.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

#include "platform/access/access_file_error.h"

namespace orva::access {
namespace {

// File: magic, checksum of the identity, how often the file began anew. Record:
// magic, length of the ranges, page count, checksum, ranges. Range: page,
// offset, length, bytes. Two offsets that no page has stand for the checksum of
// a page as the database has it, and for the beginning of a sweep. Behind the
// last record may follow some of an earlier beginning, whose sums are others.
constexpr std::uint32_t kFileMagic = 0x4753524F;
constexpr std::uint32_t kRecordMagic = 0x5243524F;
constexpr std::size_t kFileHeader = 20;
// Files of earlier versions were emptied each time and did not count.
constexpr std::uint32_t kEarlierFileMagic = 0x4C52414F;
constexpr std::size_t kEarlierFileHeader = 12;
/// A file as long as this is written over, because making it longer again costs more than the writing.
constexpr std::uint64_t kWorthKeeping = 1u << 14;
constexpr std::size_t kRecordHeader = 20;
constexpr std::size_t kRangeHeader = 8;
constexpr std::size_t kBaseOffset = 0xFFFF;
constexpr std::size_t kSweepOffset = 0xFFFE;
constexpr std::size_t kUnit = RedoLog::kUnit;
/// More memory than this is not kept for the next record.
constexpr std::size_t kUsualRecord = 1u << 20;

/// Four sums side by side, because each step of one waits for the step before.
std::uint64_t checksum(ByteView bytes, std::uint64_t seed) {
  constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15;
  constexpr std::size_t kLanes = 4;
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  const auto mixed = [](std::uint64_t sum, std::uint64_t word) {
    sum = (sum ^ word) * kPrime;
    return sum ^ sum >> 29;
  };
  std::array<std::uint64_t, kLanes> lanes = {seed ^ bytes.size(), seed + 1, seed + 2, seed + 3};
  std::size_t at = 0;
  for (; at + kLanes * kWord <= bytes.size(); at += kLanes * kWord) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) lanes[lane] = mixed(lanes[lane], u64At(bytes, at + lane * kWord));
  }
  std::uint64_t sum = 0;
  for (const std::uint64_t lane : lanes) sum = mixed(sum, lane);
  for (; at + kWord <= bytes.size(); at += kWord) sum = mixed(sum, u64At(bytes, at));
  for (; at < bytes.size(); ++at) sum = (sum ^ bytes[at]) * kPrime;
  return sum ^ sum >> 32;
}

/// The sum of side files that earlier versions left behind.
std::uint64_t earlierChecksum(ByteView bytes, std::uint64_t seed) {
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

bool isSameUnit(ByteView left, ByteView right, std::size_t at) {
  static_assert(kUnit == 2 * sizeof(std::uint64_t));
  return u64At(left, at) == u64At(right, at) && u64At(left, at + 8) == u64At(right, at + 8);
}

/// The first unit from `at` on that differs, or the end.
std::size_t firstDifference(ByteView left, ByteView right, std::size_t at) {
  constexpr std::size_t kBlock = 16 * kUnit;
  while (at + kBlock <= left.size() && std::memcmp(&left[at], &right[at], kBlock) == 0) at += kBlock;
  while (at < left.size() && isSameUnit(left, right, at)) at += kUnit;
  return at;
}

/// True of a long part that seems to be moved, as entries behind a new one are: then looking for what stayed the same
/// costs more than it saves.
bool differsThroughout(ByteView left, ByteView right) {
  constexpr std::size_t kLong = 16 * kUnit;
  constexpr std::size_t kSamples = 6;
  if (left.size() < kLong) return false;
  for (std::size_t sample = 0; sample < kSamples; ++sample) {
    const std::size_t unit = (left.size() / kUnit - 1) * sample / (kSamples - 1);
    if (isSameUnit(left, right, unit * kUnit)) return false;
  }
  return true;
}

struct Record {
  PageNumber pageCount;
  ByteView ranges;
  std::uint64_t end;  // in the log
};

/// Tells records of one beginning of the file from those of another.
std::uint64_t seedOf(PageNumber pageCount, std::uint64_t beginning) {
  return pageCount ^ beginning * 0x9E3779B97F4A7C15;
}

/// The records from `at` on, up to the first that is not whole or of another beginning.
std::vector<Record> wholeRecords(ByteView log, std::size_t at, RedoLog::Checksum checksumOf, std::uint64_t beginning) {
  std::vector<Record> records;
  while (at + kRecordHeader <= log.size()) {
    const std::uint32_t length = u32At(log, at + 4);
    if (u32At(log, at) != kRecordMagic || length > log.size() - at - kRecordHeader) break;
    const ByteView ranges = log.subspan(at + kRecordHeader, length);
    const PageNumber pageCount = u32At(log, at + 8);
    if (u64At(log, at + 12) != checksumOf(ranges, seedOf(pageCount, beginning))) break;
    at += kRecordHeader + length;
    records.push_back({pageCount, ranges, at});
  }
  return records;
}

template <typename Action>
void forEachRange(ByteView ranges, Action action) {
  for (std::size_t at = 0; at + kRangeHeader <= ranges.size();) {
    const std::size_t size = std::min<std::size_t>(u16At(ranges, at + 6), ranges.size() - at - kRangeHeader);
    action(u32At(ranges, at), u16At(ranges, at + 4), ranges.subspan(at + kRangeHeader, size));
    at += kRangeHeader + size;
  }
}

bool hasSweep(const std::vector<Record>& records) {
  bool found = false;
  for (const Record& record : records) {
    forEachRange(record.ranges,
                 [&](PageNumber, std::size_t offset, ByteView) { found = found || offset == kSweepOffset; });
  }
  return found;
}

}  // namespace

RedoLog::RedoLog(FileSystem& files, std::string path, ByteView identity)
    : files_(files), path_(std::move(path)), identity_(identity.begin(), identity.end()), checksum_(&checksum) {}

void RedoLog::refuse() const {
  throw AccessFileError(provider_number::kUnspecified,
                        path_ +
                            ": holds unfinished changes of a database that has been changed or replaced since. "
                            "Delete this file to open the database without them.");
}

bool RedoLog::recover(const PageInFile& pageInFile, const ApplyRange& applyRange, const ApplyLength& applyLength) {
  if (!files_.exists(path_)) return false;
  Bytes log;
  {
    const auto leftBehind = files_.open(path_, OpenKind::kRead);
    log.resize(leftBehind->size());
    leftBehind->read(0, log);
  }
  const std::uint32_t magic = log.size() < kFileHeader ? 0 : u32At(log, 0);
  if (magic != kFileMagic && magic != kEarlierFileMagic) return false;
  const bool isEarlier = magic == kEarlierFileMagic;
  // There, the sum of the identity also tells which sum the whole file has.
  checksum_ = isEarlier && u64At(log, 4) == earlierChecksum(identity_, magic) ? &earlierChecksum : &checksum;
  beginning_ = isEarlier ? 0 : u64At(log, kEarlierFileHeader);
  const std::vector<Record> records =
      wholeRecords(log, isEarlier ? kEarlierFileHeader : kFileHeader, checksum_, beginning_);
  // One without records may have stayed behind when all was done.
  if (records.empty() && !isEarlier) return false;
  if (u64At(log, 4) != checksum_(identity_, magic)) refuse();
  if (records.empty()) return false;
  if (!hasSweep(records)) {
    for (const Record& record : records) {
      forEachRange(record.ranges, [&](PageNumber page, std::size_t offset, ByteView bytes) {
        if (offset != kBaseOffset || bytes.size() != sizeof(std::uint64_t)) return;
        const Page* const present = pageInFile(page);
        if (!present || checksum_(*present, page) != u64At(bytes, 0)) refuse();
      });
    }
  }
  for (const Record& record : records) {
    applyLength(record.pageCount);
    forEachRange(record.ranges, [&](PageNumber page, std::size_t offset, ByteView bytes) {
      if (offset < kPageSize) applyRange(page, offset, bytes);
    });
    length_ = record.end;
  }
  return true;
}

void RedoLog::addRange(PageNumber page, std::size_t offset, ByteView bytes) {
  const std::size_t header = std::max(recorded_, ended_ + kRecordHeader);
  recorded_ = header + kRangeHeader + bytes.size();
  // Room that is there already need not be filled before it is written.
  if (record_.size() < recorded_) record_.resize(2 * recorded_);
  putU32(record_, header, page);
  putU16(record_, header + 4, offset);
  putU16(record_, header + 6, bytes.size());
  std::copy(bytes.begin(), bytes.end(), record_.begin() + static_cast<std::ptrdiff_t>(header + kRangeHeader));
}

std::uint64_t RedoLog::checksumOf(PageNumber page, const Page& bytes) { return checksum(bytes, page); }

void RedoLog::addBase(PageNumber page, std::uint64_t sum) {
  std::array<Byte, sizeof sum> bytes;
  putU64(bytes, 0, sum);
  addRange(page, kBaseOffset, bytes);
}

void RedoLog::addChange(PageNumber page, std::size_t offset, ByteView before, ByteView after) {
  if (differsThroughout(before, after)) return addRange(page, offset, after);
  for (std::size_t at = firstDifference(before, after, 0); at < after.size(); at = firstDifference(before, after, at)) {
    std::size_t end = at + kUnit;
    while (end < after.size() && !isSameUnit(before, after, end)) end += kUnit;
    addRange(page, offset + at, after.subspan(at, end - at));
    at = end;
  }
}

void RedoLog::commit(PageNumber pageCount) {
  beforeLast_ = ended_;
  if (recorded_ == ended_) return;
  if (recorded_ - ended_ > std::numeric_limits<std::uint32_t>::max()) {
    throw AccessFileError(provider_number::kUnspecified, path_ + ": one statement changes more than can be stored.");
  }
  if (length_ == 0) {
    checksum_ = &checksum;
    beginning_ = std::max<std::uint64_t>(beginning_, 1);
  }
  const ByteView ranges = ByteView(record_).subspan(ended_ + kRecordHeader, recorded_ - ended_ - kRecordHeader);
  putU32(record_, ended_, kRecordMagic);
  putU32(record_, ended_ + 4, ranges.size());
  putU32(record_, ended_ + 8, pageCount);
  putU64(record_, ended_ + 12, checksum_(ranges, seedOf(pageCount, beginning_)));
  ended_ = recorded_;
}

void RedoLog::write() {
  if (ended_ == 0) return;
  if (length_ == 0) start();
  try {
    file_->write(length_, ByteView(record_).first(ended_));
  } catch (const AccessFileError&) {
    // Records at the beginning of what did not fit may be whole.
    cutOff();
    throw;
  }
  length_ += ended_;
  recorded_ = ended_ = beforeLast_ = 0;
  if (record_.size() > kUsualRecord) record_ = Bytes();
}

void RedoLog::cutOff() noexcept {
  try {
    file_->resize(length_);
  } catch (const AccessFileError&) {
    // Then they are repeated at the next open: each is a finished statement.
    return;
  }
}

void RedoLog::start() {
  if (!file_) {
    file_ = files_.open(path_, OpenKind::kWriteOrCreate);
    file_->resize(0);
  }
  writeHeader();
}

void RedoLog::writeHeader() {
  Bytes header;
  appendUnsigned(header, kFileMagic, 4);
  appendUnsigned(header, checksum(identity_, kFileMagic), 8);
  appendUnsigned(header, beginning_, 8);
  file_->write(0, header);
  length_ = kFileHeader;
}

void RedoLog::beginSweep(PageNumber pageCount) {
  if (length_ == 0 && ended_ == 0) return;
  if (!file_ && length_ > 0) file_ = files_.open(path_, OpenKind::kWrite);
  addRange(0, kSweepOffset, {});
  commit(pageCount);
  write();
  file_->sync();
}

void RedoLog::restart() {
  const bool isEarlier = beginning_++ == 0;
  if (file_ && !isEarlier && length_ >= kWorthKeeping) {
    writeHeader();
    // Before any record: a power cut could leave the old header with some of its records, which have older bytes than
    // the database by now.
    file_->sync();
    return;
  }
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
