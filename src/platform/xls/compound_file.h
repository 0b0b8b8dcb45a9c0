#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/xls/bytes.h"

namespace orva::xls {

/// The bytes of one stream: a view into the file when the stream lies in one
/// piece, else a copy that is put together.
class StreamBytes {
 public:
  explicit StreamBytes(ByteView inPlace) : view_(inPlace) {}
  explicit StreamBytes(Bytes copied) : copied_(std::move(copied)), view_(copied_) {}
  StreamBytes(StreamBytes&& other) noexcept = default;
  StreamBytes& operator=(StreamBytes&& other) noexcept = default;

  ByteView view() const { return view_; }

 private:
  Bytes copied_;
  ByteView view_;
};

/// The container of a workbook: a small file system of sectors and chains.
/// Nothing in it is trusted: every sector number is checked and no chain is
/// followed further than the file has sectors. Throws `Refusal`.
class CompoundFile {
 public:
  /// Reads header and directory. `file` must stay alive with this object.
  explicit CompoundFile(ByteView file);

  static bool hasSignature(ByteView file);

  /// The stream of that name in the top storage, compared without regard to
  /// case; nothing when there is none.
  std::optional<StreamBytes> stream(std::string_view name) const;
  bool hasStream(std::string_view name) const { return find(name) != nullptr; }

 private:
  struct Entry {
    std::string name;
    bool isStream = false;
    std::uint32_t left = 0, right = 0, child = 0;
    std::uint32_t start = 0;
    std::uint64_t size = 0;
  };
  struct Piece {
    std::size_t offset = 0;
    std::size_t size = 0;
  };

  void readHeader();
  void readFatSectors();
  void readDirectory();
  void readMiniStream(std::uint32_t miniFatStart);
  Entry readEntry(ByteView bytes) const;
  const Entry* find(std::string_view name) const;
  std::vector<std::uint32_t> topEntries() const;

  std::size_t sectorOffset(std::uint32_t sector) const;
  std::uint32_t nextSector(std::uint32_t sector) const;
  std::vector<Piece> chain(std::uint32_t start, std::optional<std::uint64_t> size) const;
  StreamBytes miniStream(const Entry& entry) const;
  StreamBytes gather(const std::vector<Piece>& pieces) const;

  ByteView file_;
  std::size_t sectorSize_ = 512;
  std::size_t miniSectorSize_ = 64;
  std::uint32_t sectorCount_ = 0;
  std::uint32_t miniCutoff_ = 4096;
  std::vector<std::uint32_t> fatSectors_;
  std::vector<Entry> entries_;
  StreamBytes miniFat_{ByteView{}};
  StreamBytes miniSectors_{ByteView{}};
};

}  // namespace orva::xls
