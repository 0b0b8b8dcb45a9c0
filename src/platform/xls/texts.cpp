#include "platform/xls/texts.h"

#include <algorithm>
#include <limits>

#include "platform/xls/refusal.h"

namespace orva::xls {
namespace {

constexpr std::uint8_t kWide = 0x01, kPhonetic = 0x04, kRuns = 0x08;
constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t code) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | code >> 6));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else if (code < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | code >> 12));
    out.push_back(static_cast<char>(0x80 | (code >> 6 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | code >> 18));
    out.push_back(static_cast<char>(0x80 | (code >> 12 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code >> 6 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

/// Turns UTF-16 units into UTF-8. A pair may be cut by a record's end, so the
/// first half is remembered between calls.
class Utf8Writer {
 public:
  explicit Utf8Writer(std::string& out) : out_(out) {}
  ~Utf8Writer() { flush(); }
  Utf8Writer(const Utf8Writer&) = delete;
  Utf8Writer& operator=(const Utf8Writer&) = delete;

  void narrow(ByteView bytes) {
    const auto ascii = std::find_if(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte >= 0x80; });
    if (ascii != bytes.begin()) flush();
    out_.append(bytes.begin(), ascii);
    for (const std::uint8_t byte : bytes.subspan(static_cast<std::size_t>(ascii - bytes.begin()))) unit(byte);
  }
  void wide(ByteView bytes) {
    for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) unit(u16At(bytes, at));
  }

 private:
  void unit(std::uint16_t unit) {
    if (unit < 0x80 && first_ == 0) {
      out_.push_back(static_cast<char>(unit));
    } else if (first_ != 0 && unit >= 0xDC00 && unit < 0xE000) {
      appendUtf8(out_, 0x10000 + ((char32_t{first_} - 0xD800) << 10) + (unit - 0xDC00));
      first_ = 0;
    } else {
      flush();
      if (unit >= 0xD800 && unit < 0xDC00) {
        first_ = unit;
      } else {
        appendUtf8(out_, unit >= 0xDC00 && unit < 0xE000 ? kReplacement : char32_t{unit});
      }
    }
  }
  void flush() {
    if (first_ != 0) appendUtf8(out_, kReplacement);
    first_ = 0;
  }

  std::string& out_;
  std::uint16_t first_ = 0;
};

/// Reads `count` characters. Where a record ends among them the next one begins
/// with a new width flag.
void readCharacters(ContinuedBody& body, std::size_t count, bool wide, std::string& out) {
  Utf8Writer writer(out);
  while (count > 0) {
    if (body.piece().empty()) {
      body.nextPiece();
      wide = (body.u8() & kWide) != 0;
    }
    const std::size_t width = wide ? 2 : 1;
    const std::size_t here = std::min(count, body.piece().size() / width);
    if (here == 0 && !body.piece().empty()) throw damaged("a text is cut within a character");
    const ByteView bytes = body.piece().first(here * width);
    wide ? writer.wide(bytes) : writer.narrow(bytes);
    body.consume(bytes.size());
    count -= here;
  }
}

}  // namespace

std::string_view TextTable::operator[](TextNumber number) const {
  const std::size_t start = number == 0 ? 0 : ends_[number - 1];
  return std::string_view(block_).substr(start, ends_[number] - start);
}

void TextTable::append(ContinuedBody& body) {
  const std::size_t characters = body.u16();
  const std::uint8_t flags = body.u8();
  const std::size_t runs = (flags & kRuns) != 0 ? body.u16() : 0;
  const std::size_t phonetic = (flags & kPhonetic) != 0 ? body.u32() : 0;
  readCharacters(body, characters, (flags & kWide) != 0, block_);
  body.skip(runs * 4);
  body.skip(phonetic);
  if (block_.size() > std::numeric_limits<std::uint32_t>::max()) throw damaged("too much text");
  ends_.push_back(static_cast<std::uint32_t>(block_.size()));
}

void TextTable::addShared(RecordStream& records, ByteView body) {
  ContinuedBody shared(records, body);
  shared.u32();  // how often the texts are used
  const std::uint32_t announced = shared.u32();
  for (std::uint32_t i = 0; i < announced && !shared.atEnd(); ++i) append(shared);
}

TextNumber TextTable::add(RecordStream& records, ByteView body) {
  ContinuedBody text(records, body);
  append(text);
  return static_cast<TextNumber>(ends_.size() - 1);
}

std::string readName(ByteView body, std::size_t characters) {
  if (body.empty()) {
    if (characters > 0) throw damaged("a name is cut off");
    return {};
  }
  const bool wide = (body[0] & kWide) != 0;
  const std::size_t size = characters * (wide ? 2 : 1);
  if (body.size() - 1 < size) throw damaged("a name is cut off");
  std::string name;
  {
    Utf8Writer writer(name);
    wide ? writer.wide(body.subspan(1, size)) : writer.narrow(body.subspan(1, size));
  }
  return name;
}

}  // namespace orva::xls
