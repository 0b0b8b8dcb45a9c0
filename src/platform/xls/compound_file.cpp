#include "platform/xls/compound_file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/values/text.h"
#include "platform/xls/refusal.h"

namespace orva::xls {
namespace {

constexpr std::array<std::uint8_t, 8> kSignature = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
constexpr std::size_t kHeaderSize = 512;
constexpr std::size_t kEntrySize = 128;
constexpr std::uint32_t kLastSector = 0xFFFFFFFA;  // numbers above are marks: end of chain, free, FAT, DIFAT
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;

// Places in the header and in a directory entry.
constexpr std::size_t kAtSectorShift = 30, kAtMiniShift = 32, kAtDirectory = 48, kAtMiniCutoff = 56, kAtMiniFat = 60,
                      kAtDifat = 68, kAtFirstFatSectors = 76;
constexpr std::size_t kAtNameLength = 64, kAtKind = 66, kAtLeft = 68, kAtRight = 72, kAtChild = 76, kAtStart = 116,
                      kAtSize = 120;
constexpr std::size_t kFirstFatSectors = 109;
constexpr std::uint8_t kStreamKind = 2;

}  // namespace

bool CompoundFile::hasSignature(ByteView file) {
  return file.size() >= kSignature.size() && std::equal(kSignature.begin(), kSignature.end(), file.begin());
}

CompoundFile::CompoundFile(ByteView file) : file_(file) {
  readHeader();
  readFatSectors();
  readDirectory();
  readMiniStream(u32At(file_, kAtMiniFat));
}

void CompoundFile::readHeader() {
  if (!hasSignature(file_) || file_.size() < kHeaderSize) throw damaged("the file's header is cut off");
  const unsigned shift = u16At(file_, kAtSectorShift);
  const unsigned miniShift = u16At(file_, kAtMiniShift);
  if (shift < 7 || shift > 16 || miniShift < 2 || miniShift >= shift) throw damaged("impossible sector size");
  sectorSize_ = std::size_t{1} << shift;
  miniSectorSize_ = std::size_t{1} << miniShift;
  miniCutoff_ = u32At(file_, kAtMiniCutoff);
  // The header fills the first sector; the last sector may be short.
  sectorCount_ = file_.size() <= sectorSize_
                     ? 0
                     : static_cast<std::uint32_t>((file_.size() - 1) / sectorSize_);  // files are under 4 GB
}

/// Finds the sectors of the allocation table: 109 in the header, the others in
/// a chain of sectors. No more are taken than the file's sectors need.
void CompoundFile::readFatSectors() {
  const std::size_t perSector = sectorSize_ / 4;
  const std::size_t needed = (sectorCount_ + perSector - 1) / perSector;
  auto take = [&](std::size_t at) {
    const std::uint32_t sector = u32At(file_, at);
    if (sector < kLastSector && fatSectors_.size() < needed) fatSectors_.push_back(sector);
  };
  for (std::size_t i = 0; i < kFirstFatSectors; ++i) take(kAtFirstFatSectors + 4 * i);
  std::uint32_t next = u32At(file_, kAtDifat);
  for (std::uint32_t steps = 0; next < kLastSector && fatSectors_.size() < needed; ++steps) {
    const std::size_t at = sectorOffset(next);
    if (steps >= sectorCount_ || at + sectorSize_ > file_.size()) throw damaged("the allocation table is cut off");
    for (std::size_t i = 0; i + 1 < perSector; ++i) take(at + 4 * i);
    next = u32At(file_, at + sectorSize_ - 4);
  }
}

std::size_t CompoundFile::sectorOffset(std::uint32_t sector) const {
  if (sector >= sectorCount_) throw damaged("a part lies beyond the end of the file");
  return (std::size_t{sector} + 1) * sectorSize_;
}

std::uint32_t CompoundFile::nextSector(std::uint32_t sector) const {
  const std::size_t perSector = sectorSize_ / 4;
  const std::size_t index = sector / perSector;
  if (index >= fatSectors_.size()) throw damaged("the allocation table is too short");
  const std::size_t at = sectorOffset(fatSectors_[index]) + 4 * (sector % perSector);
  if (at + 4 > file_.size()) throw damaged("the allocation table is cut off");
  return u32At(file_, at);
}

/// The pieces of a chain, neighbours joined; with a size, exactly so many bytes.
std::vector<CompoundFile::Piece> CompoundFile::chain(std::uint32_t start, std::optional<std::uint64_t> size) const {
  std::vector<Piece> pieces;
  std::uint64_t left = size.value_or(std::numeric_limits<std::uint64_t>::max());
  std::uint32_t steps = 0;
  for (std::uint32_t sector = start; sector < kLastSector && left > 0; sector = nextSector(sector)) {
    if (++steps > sectorCount_) throw damaged("a chain of sectors has no end");
    const std::size_t offset = sectorOffset(sector);
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, sectorSize_));
    const std::size_t there = std::min(wanted, file_.size() - offset);
    if (there < wanted && size) throw damaged("the file is cut off");
    if (!pieces.empty() && pieces.back().offset + pieces.back().size == offset) {
      pieces.back().size += there;
    } else {
      pieces.push_back({offset, there});
    }
    left -= wanted;
  }
  if (size && left > 0) throw damaged("a stream is cut off");
  return pieces;
}

StreamBytes CompoundFile::gather(const std::vector<Piece>& pieces) const {
  if (pieces.empty()) return StreamBytes(ByteView{});
  if (pieces.size() == 1) return StreamBytes(file_.subspan(pieces[0].offset, pieces[0].size));
  std::size_t total = 0;
  for (const Piece& piece : pieces) total += piece.size;
  Bytes bytes;
  bytes.reserve(total);
  for (const Piece& piece : pieces) {
    const ByteView part = file_.subspan(piece.offset, piece.size);
    bytes.insert(bytes.end(), part.begin(), part.end());
  }
  return StreamBytes(std::move(bytes));
}

void CompoundFile::readDirectory() {
  const StreamBytes directory = gather(chain(u32At(file_, kAtDirectory), std::nullopt));
  const ByteView bytes = directory.view();
  for (std::size_t at = 0; at + kEntrySize <= bytes.size(); at += kEntrySize) {
    entries_.push_back(readEntry(bytes.subspan(at, kEntrySize)));
  }
  if (entries_.empty()) throw damaged("the directory of streams is missing");
}

/// Stream names that matter are Latin; other characters become "?".
CompoundFile::Entry CompoundFile::readEntry(ByteView bytes) const {
  Entry entry;
  const std::size_t nameBytes = std::min<std::size_t>(u16At(bytes, kAtNameLength), 64);
  for (std::size_t at = 0; at + 2 <= nameBytes && u16At(bytes, at) != 0; at += 2) {
    const std::uint16_t character = u16At(bytes, at);
    entry.name.push_back(character < 0x80 ? static_cast<char>(character) : '?');
  }
  entry.isStream = bytes[kAtKind] == kStreamKind;
  entry.left = u32At(bytes, kAtLeft);
  entry.right = u32At(bytes, kAtRight);
  entry.child = u32At(bytes, kAtChild);
  entry.start = u32At(bytes, kAtStart);
  // The upper half of the size is only kept, and only clean, with large sectors.
  entry.size = sectorSize_ > 512 ? u64At(bytes, kAtSize) : u32At(bytes, kAtSize);
  return entry;
}

void CompoundFile::readMiniStream(std::uint32_t miniFatStart) {
  const Entry& root = entries_.front();
  if (miniFatStart >= kLastSector || root.start >= kLastSector) return;
  miniFat_ = gather(chain(miniFatStart, std::nullopt));
  miniSectors_ = gather(chain(root.start, std::nullopt));
}

StreamBytes CompoundFile::miniStream(const Entry& entry) const {
  const ByteView fat = miniFat_.view();
  const ByteView sectors = miniSectors_.view();
  if (entry.size > sectors.size()) throw damaged("a small stream is cut off");
  Bytes bytes;
  std::uint32_t sector = entry.start;
  while (bytes.size() < entry.size) {
    const std::size_t at = std::size_t{sector} * miniSectorSize_;
    const std::size_t wanted = std::min<std::size_t>(entry.size - bytes.size(), miniSectorSize_);
    if (sector >= kLastSector || at + wanted > sectors.size()) throw damaged("a small stream is cut off");
    bytes.insert(bytes.end(), sectors.begin() + at, sectors.begin() + at + wanted);
    if (bytes.size() >= entry.size) break;
    if (std::size_t{sector} * 4 + 4 > fat.size()) throw damaged("the table of small streams is cut off");
    sector = u32At(fat, std::size_t{sector} * 4);
  }
  return StreamBytes(std::move(bytes));
}

/// Numbers of the entries in the top storage, from the tree that hangs on the
/// root. A branch that points outside or runs in a circle is left out.
std::vector<std::uint32_t> CompoundFile::topEntries() const {
  std::vector<std::uint32_t> found;
  std::vector<bool> seen(entries_.size(), false);
  std::vector<std::uint32_t> open{entries_.front().child};
  while (!open.empty()) {
    const std::uint32_t number = open.back();
    open.pop_back();
    if (number == kNoEntry || number >= entries_.size() || seen[number]) continue;
    seen[number] = true;
    found.push_back(number);
    open.push_back(entries_[number].left);
    open.push_back(entries_[number].right);
  }
  return found;
}

/// Embedded objects bring streams of the same names in storages of their own,
/// so the top storage counts first. Writers with a broken tree exist: then the
/// first entry of that name is taken.
const CompoundFile::Entry* CompoundFile::find(std::string_view name) const {
  auto matches = [&](const Entry& entry) { return entry.isStream && equalsNoCase(entry.name, name); };
  for (const std::uint32_t number : topEntries()) {
    if (matches(entries_[number])) return &entries_[number];
  }
  const auto entry = std::find_if(entries_.begin(), entries_.end(), matches);
  return entry == entries_.end() ? nullptr : &*entry;
}

std::optional<StreamBytes> CompoundFile::stream(std::string_view name) const {
  const Entry* entry = find(name);
  if (entry == nullptr) return std::nullopt;
  if (entry->size < miniCutoff_) return miniStream(*entry);
  return gather(chain(entry->start, entry->size));
}

}  // namespace orva::xls
