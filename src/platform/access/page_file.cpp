#include "platform/access/page_file.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>

#include "platform/access/file_header.h"
#include "platform/access/rc4.h"

namespace orva::access {
namespace {

/// Frames that are kept for the next use, because making them costs more than filling them.
constexpr std::size_t kSpareFrames = PageFile::kCachedPages / 32;
/// More memory than this is not kept for the next transaction.
constexpr std::size_t kUsualTransaction = 1u << 20;
/// Pages that are read at once after so many were asked for in their order.
constexpr PageNumber kRun = 8;
constexpr unsigned kInOrder = 2;
/// Changes that wait are written when they take more than this.
constexpr std::size_t kMostWaiting = 1u << 16;

}  // namespace

PageFile::PageFile(FileSystem& files, std::string path, std::unique_ptr<RandomAccessFile> file, bool writable)
    : files_(files), path_(std::move(path)), file_(std::move(file)), writable_(writable) {}

std::unique_ptr<PageFile> PageFile::open(FileSystem& files, const std::string& path, bool forWriting) {
  auto file = files.open(path, forWriting ? OpenKind::kWrite : OpenKind::kRead);
  const std::uint64_t size = file->size();
  std::unique_ptr<PageFile> pages(new PageFile(files, path, std::move(file), forWriting));
  pages->pageCount_ = static_cast<PageNumber>(std::min<std::uint64_t>(size / kPageSize, kMaximumPages));
  pages->committedPages_ = pages->pagesInFile_ = pages->pageCount_;
  pages->frames_.resize(pages->pageCount_);
  pages->recover();
  const bool whole = size % kPageSize == 0 || !pages->unsaved_.empty();
  if (!whole || pages->pageCount_ < 3 || size > std::uint64_t{kMaximumPages} * kPageSize) {
    throw AccessFileError(provider_number::kUnspecified,
                          path + ": the file is not an Access database, or a part of it is missing.");
  }
  if (!pages->unsaved_.empty() && forWriting) pages->sweep();
  return pages;
}

std::unique_ptr<PageFile> PageFile::create(FileSystem& files, const std::string& path) {
  auto file = files.open(path, OpenKind::kCreateNew);
  return std::unique_ptr<PageFile>(new PageFile(files, path, std::move(file), true));
}

PageFile::~PageFile() {
  if (!writable_ || broken_) return;
  try {
    rollback();
    sweep();
    if (log_) log_->close();
  } catch (...) {
    // What is finished stands in the side file; the next open repeats it.
    broken_ = true;
  }
}

void PageFile::abandon() {
  broken_ = true;
  file_.reset();
  log_.reset();
}

void PageFile::openLog() {
  const Page& header = page(0);
  log_ = std::make_unique<RedoLog>(files_, RedoLog::pathFor(path_), ByteView(header).subspan(header_at::kUserSlots));
}

void PageFile::recover() {
  if (!files_.exists(RedoLog::pathFor(path_)) || pageCount_ == 0) return;
  openLog();
  const auto applyLength = [this](PageNumber count) {
    pageCount_ = std::clamp<PageNumber>(count, pageCount_, kMaximumPages);
    frames_.resize(pageCount_);
  };
  const auto applyRange = [this](PageNumber number, std::size_t offset, ByteView bytes) {
    if (number >= pageCount_ || offset + bytes.size() > kPageSize) fail(number, "the side file is damaged");
    const bool isNew = number >= committedPages_ && !frames_[number];
    Frame& target = isNew ? newFrame(number) : frame(number);
    std::copy(bytes.begin(), bytes.end(), target.page.begin() + static_cast<std::ptrdiff_t>(offset));
    markUnsaved(number, target);
  };
  const FileHeader header = at(0, [this] { return FileHeader::read(page(0)); });
  scramblingKey_ = header.scramblingKey;
  const auto pageInFile = [this](PageNumber number) { return number < pagesInFile_ ? &frame(number).page : nullptr; };
  try {
    log_->recover(pageInFile, applyRange, applyLength);
  } catch (...) {
    // The side file stays for whoever has the database that it belongs to.
    abandon();
    throw;
  }
  committedPages_ = pageCount_;
}

const Page& PageFile::page(PageNumber number) { return frame(number).page; }

PageFile::Frame& PageFile::frame(PageNumber number) {
  if (number >= pageCount_) fail(number, "a pointer leads to this page, which is past the end of the file");
  if (!file_) throw AccessFileError(provider_number::kUnspecified, path_ + ": the database is closed.");
  auto& slot = frames_[number];
  if (!slot && number == lastLoaded_ + 1 && ++loadedInOrder_ > kInOrder) loadRun(number);
  if (!slot) {
    auto loaded = takeFrame();
    load(number, loaded->page);
    slot = std::move(loaded);
    ++cached_;
    if (number != lastLoaded_ + 1) loadedInOrder_ = 0;
    lastLoaded_ = number;
  }
  slot->used = true;
  return *slot;
}

PageFile::Frame& PageFile::newFrame(PageNumber number) {
  frames_[number] = takeFrame();
  frames_[number]->page.fill(Byte{0});
  ++cached_;
  return *frames_[number];
}

std::unique_ptr<PageFile::Frame> PageFile::takeFrame() {
  if (spareFrames_.empty()) return std::make_unique_for_overwrite<Frame>();
  auto frame = std::move(spareFrames_.back());
  spareFrames_.pop_back();
  return frame;
}

/// Only of a page that is neither unsaved nor changed.
void PageFile::dropFrame(std::unique_ptr<Frame>& slot) {
  slot->used = false;
  if (spareFrames_.size() < kSpareFrames) spareFrames_.push_back(std::move(slot));
  slot.reset();
  --cached_;
}

void PageFile::load(PageNumber number, Page& page) {
  file_->read(std::uint64_t{number} * kPageSize, page);
  decode(number, page);
}

/// Whoever reads some pages in their order reads on.
void PageFile::loadRun(PageNumber first) {
  std::array<Byte, kRun * kPageSize> bytes;
  PageNumber count = 0;
  while (count < kRun && first + count < committedPages_ && !frames_[first + count]) ++count;
  if (count < 2) return;
  file_->read(std::uint64_t{first} * kPageSize, ByteSpan(bytes).first(count * kPageSize));
  for (PageNumber i = 0; i < count; ++i) {
    auto loaded = takeFrame();
    std::memcpy(loaded->page.data(), bytes.data() + i * kPageSize, kPageSize);
    decode(first + i, loaded->page);
    frames_[first + i] = std::move(loaded);
  }
  cached_ += count;
  lastLoaded_ = first + count - 1;
}

void PageFile::decode(PageNumber number, Page& page) const {
  if (scramblingKey_ == 0 || number == 0) return;
  Byte key[4];
  putU32(key, 0, scramblingKey_ ^ number);
  Rc4(key).apply(page);
}

void PageFile::store(PageNumber number, const Page& page) {
  if (scramblingKey_ == 0 || number == 0) return file_->write(std::uint64_t{number} * kPageSize, page);
  Page coded = page;
  Byte key[4];
  putU32(key, 0, scramblingKey_ ^ number);
  Rc4(key).apply(coded);
  file_->write(std::uint64_t{number} * kPageSize, coded);
}

PageFile::Frame& PageFile::startChange(PageNumber number) {
  if (!writable_ || broken_) {
    throw AccessFileError(provider_number::kUnspecified, path_ + ": the database is open for reading only.");
  }
  ++version_;
  Frame& target = frame(number);
  if (!target.changed) {
    target.changed = true;
    changed_.push_back(number);
#ifndef NDEBUG
    wholes_[number] = target.page;
#endif
    if (!target.unsaved && number < pagesInFile_) bases_.emplace_back(number, RedoLog::checksumOf(number, target.page));
  }
  return target;
}

void PageFile::keep(PageNumber number, Frame& target, ByteRange part) {
  if (target.isKept) return;
  const std::size_t offset = part.offset / RedoLog::kUnit * RedoLog::kUnit;
  const std::size_t end = (part.offset + part.size + RedoLog::kUnit - 1) / RedoLog::kUnit * RedoLog::kUnit;
  kept_.push_back({number, {offset, end - offset}, keptBytes_.size()});
  access::append(keptBytes_, ByteView(target.page).subspan(offset, end - offset));
  target.keptBytes += end - offset;
  target.isKept = end - offset == kPageSize;
}

PageNumber PageFile::append() {
  if (pageCount_ >= kMaximumPages) {
    throw AccessFileError(provider_number::kUnspecified, path_ + ": the database has reached the largest size, 2 GB.");
  }
  const PageNumber number = pageCount_++;
  frames_.resize(pageCount_);
  newFrame(number);
  change(number);
  return number;
}

void PageFile::markUnsaved(PageNumber number, Frame& target) {
  if (target.unsaved) return;
  target.unsaved = true;
  unsaved_.push_back(number);
}

#ifndef NDEBUG
bool PageFile::keepsEnough() const {
  std::map<PageNumber, Page> restored;
  for (const auto& whole : wholes_) restored[whole.first] = frames_[whole.first]->page;
  for (auto kept = kept_.rbegin(); kept != kept_.rend(); ++kept) {
    std::memcpy(&restored[kept->page][kept->part.offset], &keptBytes_[kept->at], kept->part.size);
  }
  return restored == wholes_;
}
#endif

void PageFile::commit() {
  if (changed_.empty()) return;
  assert(keepsEnough());
  if (!log_) openLog();
  for (const auto& [number, sum] : bases_) log_->addBase(number, sum);
  for (const Kept& kept : kept_) {
    const ByteView before = ByteView(keptBytes_).subspan(kept.at, kept.part.size);
    log_->addChange(kept.page, kept.part.offset, before,
                    ByteView(frames_[kept.page]->page).subspan(kept.part.offset, kept.part.size));
  }
  try {
    log_->commit(pageCount_);
    if (holding_ == 0 || log_->waiting() > kMostWaiting) log_->write();
  } catch (...) {
    log_->discard();
    broken_ = broken_ || log_->waiting() > 0;
    throw;
  }
  for (const PageNumber number : changed_) markUnsaved(number, *frames_[number]);
  endTransaction();
  committedPages_ = pageCount_;
  if (sweepIsDue()) sweep();
  trim();
}

void PageFile::letGo() {
  if (--holding_ > 0 || !log_ || broken_) return;
  try {
    log_->write();
  } catch (...) {
    broken_ = true;
    throw;
  }
}

void PageFile::endTransaction() {
  for (const PageNumber number : changed_) {
    Frame& ended = *frames_[number];
    ended.changed = ended.isKept = false;
    ended.keptBytes = 0;
  }
  changed_.clear();
  kept_.clear();
  keptBytes_.clear();
  if (keptBytes_.capacity() > kUsualTransaction) {
    keptBytes_.shrink_to_fit();
    kept_.shrink_to_fit();
  }
  bases_.clear();
#ifndef NDEBUG
  wholes_.clear();
#endif
}

/// Backwards, because a later part may have been kept in a state that the transaction had made itself.
void PageFile::rollback() {
  ++version_;
  assert(keepsEnough());
  for (auto kept = kept_.rbegin(); kept != kept_.rend(); ++kept) {
    std::memcpy(&frames_[kept->page]->page[kept->part.offset], &keptBytes_[kept->at], kept->part.size);
  }
  endTransaction();
  for (PageNumber number = committedPages_; number < pageCount_; ++number) cached_ -= frames_[number] ? 1 : 0;
  pageCount_ = committedPages_;
  frames_.resize(pageCount_);
}

bool PageFile::sweepIsDue() const {
  return unsaved_.size() >= kUnsavedPages || log_->length() >= kLogLength ||
         std::chrono::steady_clock::now() - lastSweep_ >= kSweepInterval;
}

void PageFile::sweep() {
  assert(changed_.empty());
  if (unsaved_.empty()) return;
  try {
    if (log_) log_->beginSweep(committedPages_);
    std::sort(unsaved_.begin(), unsaved_.end());
    for (const PageNumber number : unsaved_) store(number, frames_[number]->page);
    file_->sync();
    log_->restart();
  } catch (...) {
    // The file may be half written now; the side file repairs it at the next open.
    broken_ = true;
    throw;
  }
  pagesInFile_ = committedPages_;
  for (const PageNumber number : unsaved_) frames_[number]->unsaved = false;
  unsaved_.clear();
  lastSweep_ = std::chrono::steady_clock::now();
}

void PageFile::trim() {
  if (cached_ <= kCachedPages || pageCount_ == 0) return;
  ++version_;
  // Second chance: a page goes when it was not used since the hand last passed.
  for (PageNumber steps = 2 * pageCount_; steps > 0 && cached_ > kCachedPages - kCachedPages / 8; --steps) {
    trimHand_ = trimHand_ + 1 < pageCount_ ? trimHand_ + 1 : 0;
    auto& slot = frames_[trimHand_];
    if (!slot || slot->unsaved || slot->changed) continue;
    if (slot->used) {
      slot->used = false;
    } else {
      dropFrame(slot);
    }
  }
}

void PageFile::fail(PageNumber page, const std::string& fault) const {
  throw AccessFileError(provider_number::kUnspecified, path_ + ", page " + std::to_string(page) + ": " + fault + ".",
                        page);
}

}  // namespace orva::access
