#pragma once

#include <algorithm>

#include "platform/xls/bytes.h"

namespace orva::xls {

/// Record types that the reader or the writer knows.
enum RecordType : std::uint16_t {
  kFormula = 0x0006,
  kEof = 0x000A,
  kDateMode = 0x0022,
  kFilePass = 0x002F,
  kFont = 0x0031,
  kContinue = 0x003C,
  kWindow1 = 0x003D,
  kCodePage = 0x0042,
  kColInfo = 0x007D,
  kBoundSheet = 0x0085,
  kMulRk = 0x00BD,
  kMulBlank = 0x00BE,
  kRString = 0x00D6,
  kXf = 0x00E0,
  kSst = 0x00FC,
  kLabelSst = 0x00FD,
  kDimensions = 0x0200,
  kBlank = 0x0201,
  kNumber = 0x0203,
  kLabel = 0x0204,
  kBoolErr = 0x0205,
  kString = 0x0207,
  kArray = 0x0221,
  kTable = 0x0236,
  kWindow2 = 0x023E,
  kRk = 0x027E,
  kStyle = 0x0293,
  kFormat = 0x041E,
  kShrFmla = 0x04BC,
  kBof = 0x0809,
};

constexpr std::size_t kMaxRecordBody = 8224;

struct Record {
  std::uint16_t type = 0;
  ByteView body;
};

/// Walks the records of a stream from an offset on.
class RecordStream {
 public:
  RecordStream(ByteView stream, std::size_t offset) : stream_(stream), at_(std::min(offset, stream.size())) {}

  /// The next record. Throws `Refusal` (damaged) when the stream ends: every
  /// part of a workbook ends with an EOF record, so the caller stops before.
  Record next();
  /// When the next record is a CONTINUE: consumes it, gives its body, returns true.
  bool nextContinue(ByteView& body);
  /// Bytes from here to the end of the stream.
  std::size_t remaining() const { return stream_.size() - at_; }

 private:
  ByteView stream_;
  std::size_t at_;
};

/// Reads a body that may go on in CONTINUE records. Fields are read as if there
/// were no cut; characters have their own rule (see `TextReader`).
class ContinuedBody {
 public:
  ContinuedBody(RecordStream& records, ByteView body) : records_(records), rest_(body) {}

  /// True when nothing is left, neither here nor in a CONTINUE.
  bool atEnd();
  std::uint8_t u8();
  std::uint16_t u16();
  std::uint32_t u32();
  void skip(std::size_t count);
  /// What is left of the piece at hand, without going on to the next.
  ByteView piece() const { return rest_; }
  void consume(std::size_t count) { rest_ = rest_.subspan(count); }
  /// Goes on to the next piece; throws `Refusal` when there is none.
  void nextPiece();

 private:
  RecordStream& records_;
  ByteView rest_;
};

}  // namespace orva::xls
