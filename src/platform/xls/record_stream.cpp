#include "platform/xls/record_stream.h"

#include "platform/xls/refusal.h"

namespace orva::xls {

Record RecordStream::next() {
  if (remaining() < 4) throw damaged("the records end early");
  const std::size_t size = u16At(stream_, at_ + 2);
  if (remaining() - 4 < size) throw damaged("a record is cut off");
  const Record record{u16At(stream_, at_), stream_.subspan(at_ + 4, size)};
  at_ += 4 + size;
  return record;
}

bool RecordStream::nextContinue(ByteView& body) {
  if (remaining() < 4 || u16At(stream_, at_) != kContinue) return false;
  body = next().body;
  return true;
}

bool ContinuedBody::atEnd() {
  while (rest_.empty()) {
    if (!records_.nextContinue(rest_)) return true;
  }
  return false;
}

void ContinuedBody::nextPiece() {
  rest_ = {};
  if (atEnd()) throw damaged("a text is cut off");
}

std::uint8_t ContinuedBody::u8() {
  if (rest_.empty()) nextPiece();
  const std::uint8_t value = rest_.front();
  consume(1);
  return value;
}

std::uint16_t ContinuedBody::u16() {
  const std::uint16_t low = u8();
  return static_cast<std::uint16_t>(low | u8() << 8);
}

std::uint32_t ContinuedBody::u32() {
  const std::uint32_t low = u16();
  return low | static_cast<std::uint32_t>(u16()) << 16;
}

void ContinuedBody::skip(std::size_t count) {
  while (count > 0) {
    if (rest_.empty()) nextPiece();
    const std::size_t part = std::min(count, rest_.size());
    consume(part);
    count -= part;
  }
}

}  // namespace orva::xls
