#include "platform/xls/compound_writer.h"

#include <algorithm>
#include <string_view>

namespace orva::xls {
namespace {

constexpr std::size_t kSector = 512, kPerSector = kSector / 4, kFirstFatSectors = 109;
constexpr std::size_t kSmallestStream = 4096;  // shorter streams would need the table of small ones
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE, kFree = 0xFFFFFFFF, kFatMark = 0xFFFFFFFD, kDifatMark = 0xFFFFFFFC;

std::size_t sectorsFor(std::size_t count, std::size_t perSector) { return (count + perSector - 1) / perSector; }

/// Order of the sectors: stream, directory, allocation table, then the list of
/// the table's sectors that do not fit into the header.
struct Layout {
  std::size_t stream = 0, directory = 1, fat = 0, difat = 0;

  explicit Layout(std::size_t streamSize) : stream(sectorsFor(streamSize, kSector)) {
    // The table describes its own sectors too: grow it until it covers all.
    for (std::size_t total = 0; total != all();) {
      total = all();
      fat = sectorsFor(total, kPerSector);
      difat = fat > kFirstFatSectors ? sectorsFor(fat - kFirstFatSectors, kPerSector - 1) : 0;
    }
  }
  std::size_t all() const { return stream + directory + fat + difat; }
  std::size_t fatStart() const { return stream + directory; }
  std::size_t difatStart() const { return fatStart() + fat; }
};

class Output {
 public:
  explicit Output(std::size_t size) { bytes_.reserve(size); }
  Output& u8(unsigned value) {
    bytes_.push_back(static_cast<std::uint8_t>(value));
    return *this;
  }
  Output& u16(unsigned value) { return u8(value & 0xFF).u8(value >> 8 & 0xFF); }
  Output& u32(std::size_t value) {
    return u16(static_cast<unsigned>(value & 0xFFFF)).u16(static_cast<unsigned>(value >> 16 & 0xFFFF));
  }
  Output& repeat(std::size_t count, std::uint32_t value) {
    for (std::size_t i = 0; i < count; ++i) u32(value);
    return *this;
  }
  Output& append(const Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
  }
  void padToSector(std::uint8_t filling) { bytes_.resize(sectorsFor(bytes_.size(), kSector) * kSector, filling); }
  Bytes take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};

void writeHeader(Output& out, const Layout& layout) {
  for (const unsigned byte : {0xD0U, 0xCFU, 0x11U, 0xE0U, 0xA1U, 0xB1U, 0x1AU, 0xE1U}) out.u8(byte);
  out.repeat(4, 0).u16(0x3E).u16(3).u16(0xFFFE).u16(9).u16(6).u16(0).repeat(2, 0);
  out.u32(layout.fat).u32(layout.stream).u32(0).u32(kSmallestStream);
  out.u32(kEndOfChain).u32(0);
  out.u32(layout.difat > 0 ? layout.difatStart() : kEndOfChain).u32(layout.difat);
  for (std::size_t i = 0; i < kFirstFatSectors; ++i) out.u32(i < layout.fat ? layout.fatStart() + i : kFree);
}

struct DirectoryEntry {
  std::string_view name;
  unsigned kind = 0;
  std::uint32_t child = kFree, start = 0;
  std::size_t size = 0;
};

void writeEntry(Output& out, const DirectoryEntry& entry) {
  for (std::size_t i = 0; i < 32; ++i) out.u16(i < entry.name.size() ? static_cast<unsigned char>(entry.name[i]) : 0);
  out.u16(entry.name.empty() ? 0 : static_cast<unsigned>(entry.name.size() + 1) * 2).u8(entry.kind).u8(1);
  out.u32(kFree).u32(kFree).u32(entry.child).repeat(9, 0);
  out.u32(entry.start).u32(entry.size).u32(0);
}

void writeChain(Output& out, std::size_t first, std::size_t count) {
  for (std::size_t i = 1; i < count; ++i) out.u32(first + i);
  if (count > 0) out.u32(kEndOfChain);
}

void writeTable(Output& out, const Layout& layout) {
  writeChain(out, 0, layout.stream);
  writeChain(out, layout.stream, layout.directory);
  out.repeat(layout.fat, kFatMark).repeat(layout.difat, kDifatMark);
  out.padToSector(0xFF);
  for (std::size_t sector = 0, next = kFirstFatSectors; sector < layout.difat; ++sector) {
    for (std::size_t i = 0; i + 1 < kPerSector; ++i, ++next) {
      out.u32(next < layout.fat ? layout.fatStart() + next : kFree);
    }
    out.u32(sector + 1 < layout.difat ? layout.difatStart() + sector + 1 : kEndOfChain);
  }
}

}  // namespace

Bytes compoundFileOf(Bytes workbookStream) {
  workbookStream.resize(std::max(workbookStream.size(), kSmallestStream));
  const Layout layout(workbookStream.size());
  Output out((layout.all() + 1) * kSector);
  writeHeader(out, layout);
  out.append(workbookStream);
  out.padToSector(0);
  writeEntry(out, {.name = "Root Entry", .kind = 5, .child = 1, .start = kEndOfChain});
  writeEntry(out, {.name = "Workbook", .kind = 2, .size = workbookStream.size()});
  writeEntry(out, {});
  writeEntry(out, {});
  writeTable(out, layout);
  return out.take();
}

}  // namespace orva::xls
