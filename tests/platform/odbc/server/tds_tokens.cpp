#include "platform/odbc/server/tds_tokens.h"

#include <cmath>
#include <cstring>

#include "platform/values/text.h"

namespace orva::tds {
namespace {

constexpr unsigned kIntN = 0x26;
constexpr unsigned kBitN = 0x68;
constexpr unsigned kFloatN = 0x6D;
constexpr unsigned kMoneyN = 0x6E;
constexpr unsigned kDateTimeN = 0x6F;
constexpr unsigned kDateTime2N = 0x2A;
constexpr unsigned kDecimalN = 0x6A;
constexpr unsigned kNumericN = 0x6C;
constexpr unsigned kNVarChar = 0xE7;
constexpr unsigned kNChar = 0xEF;
constexpr unsigned kVarChar = 0xA7;
constexpr unsigned kChar = 0xAF;
constexpr unsigned kNText = 0x63;
constexpr unsigned kText = 0x23;
constexpr std::string_view kCollation("\x09\x04\xD0\x00\x34", 5);
constexpr std::int32_t kServerDayZero = 2;  // 01/01/1900 as a day number of this program
constexpr unsigned kNull16 = 0xFFFF;

unsigned nvarcharBytes(const FieldInfo& field) {
  return field.size > 0 && field.size <= 4000 ? static_cast<unsigned>(field.size) * 2 : 8000;
}

void writeType(Writer& out, const FieldInfo& field) {
  const auto fixed = [&out](unsigned type, unsigned length) {
    out.u8(type);
    out.u8(length);
  };
  switch (field.type) {
    case FieldType::kInteger:
      return fixed(kIntN, 8);
    case FieldType::kBoolean:
      return fixed(kBitN, 1);
    case FieldType::kCurrency:
      return fixed(kMoneyN, 8);
    case FieldType::kDouble:
      return fixed(kFloatN, 8);
    case FieldType::kDate:
    case FieldType::kTimestamp:
      return fixed(kDateTimeN, 4);
    case FieldType::kMemo:
      out.u8(kNText);
      out.u32(0x7FFFFFFE);
      out.raw(kCollation);
      out.u8(1);
      return out.longText("T");
    default:
      out.u8(kNVarChar);
      out.u16(nvarcharBytes(field));
      out.raw(kCollation);
  }
}

void writeNText(Writer& out, const std::string& text) {
  const std::string bytes = wideBytes(text);
  out.u8(16);
  out.raw(std::string(24, '\x01'));
  out.u32(static_cast<std::uint32_t>(bytes.size()));
  out.raw(bytes);
}

void writeValue(Writer& out, const FieldInfo& field, const Value& value) {
  const bool isText = field.type == FieldType::kVarChar || field.type == FieldType::kOther;
  if (value.isNull()) return isText ? out.u16(kNull16) : out.u8(0);
  switch (field.type) {
    case FieldType::kInteger:
      out.u8(8);
      return out.u64(static_cast<std::uint64_t>(value.toInteger().value_or(0)));
    case FieldType::kBoolean:
      out.u8(1);
      return out.u8(value.toBoolean() ? 1 : 0);
    case FieldType::kCurrency: {
      const auto units = static_cast<std::uint64_t>(value.toCurrency().value_or(Currency()).units());
      out.u8(8);
      out.u32(static_cast<std::uint32_t>(units >> 32));
      return out.u32(static_cast<std::uint32_t>(units));
    }
    case FieldType::kDouble: {
      const auto* number = std::get_if<double>(&value.storage());
      const double stored = number ? *number : static_cast<double>(value.toInteger().value_or(0));
      std::uint64_t bits = 0;
      std::memcpy(&bits, &stored, sizeof bits);
      out.u8(8);
      return out.u64(bits);
    }
    case FieldType::kDate:
    case FieldType::kTimestamp:
      out.u8(4);
      out.u16(static_cast<unsigned>(value.toDate().value_or(Date()).dayNumber() - kServerDayZero));
      return out.u16(0);
    case FieldType::kMemo:
      return writeNText(out, value.toText());
    default: {
      const std::string bytes = wideBytes(value.toText());
      out.u16(static_cast<unsigned>(bytes.size()));
      out.raw(bytes);
    }
  }
}

std::string dateLiteral(std::int64_t dayNumber) {
  return "'" + Date::fromDayNumber(static_cast<std::int32_t>(dayNumber)).toMonthDayYear() + "'";
}

std::string decimalText(std::string_view bytes, unsigned scale) {
  std::uint64_t units = 0;
  for (std::size_t i = bytes.size(); i-- > 1;) units = units << 8 | static_cast<unsigned char>(bytes[i]);
  std::string digits = std::to_string(units);
  if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
  if (scale > 0) digits.insert(digits.size() - scale, ".");
  return (bytes[0] == 0 ? "-" : "") + digits;
}

/// Days since the year 1 behind a time of day.
std::string dateText(std::string_view bytes) {
  constexpr std::int32_t kDayOfYearOne = -693'593;
  return dateLiteral(static_cast<std::int64_t>(Reader(bytes.substr(bytes.size() - 3)).number(3)) + kDayOfYearOne);
}

std::string realText(std::string_view bytes) {
  double number = 0;
  std::memcpy(&number, bytes.data(), sizeof number);
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", number);
  return text;
}

std::string wholeText(std::string_view bytes) {
  const std::uint64_t value = Reader(bytes).number(bytes.size());
  if (bytes.size() == 1) return std::to_string(value);
  const unsigned unused = 64 - 8 * static_cast<unsigned>(bytes.size());
  return std::to_string(static_cast<std::int64_t>(value << unused) >> unused);
}

void setText(Parameter& parameter, const std::string& text) {
  parameter.value = text;
  parameter.literal = sqlQuote(text);
}

void readText(Reader& in, unsigned type, Parameter& parameter) {
  const bool isLong = type == kNText || type == kText;
  const std::size_t most = isLong ? in.u32() : in.u16();
  in.raw(kCollation.size());
  const bool isChunked = !isLong && most == kNull16;
  const bool isWide = type == kNVarChar || type == kNChar || type == kNText;
  std::string bytes;
  if (isChunked) {
    if (in.number(8) == ~std::uint64_t{0}) return;
    for (std::uint32_t part = in.u32(); part > 0; part = in.u32()) bytes += in.raw(part);
  } else {
    const std::size_t length = isLong ? in.u32() : in.u16();
    if (length == (isLong ? 0xFFFFFFFF : kNull16)) return;
    bytes = in.raw(length);
  }
  setText(parameter, isWide ? fromWideBytes(bytes) : bytes);
}

void readNumber(unsigned type, unsigned scale, std::string_view bytes, Parameter& parameter) {
  switch (type) {
    case kIntN:
    case kBitN:
      parameter.literal = wholeText(bytes);
      break;
    case kFloatN:
      parameter.literal = realText(bytes);
      break;
    case kDecimalN:
    case kNumericN:
      parameter.literal = decimalText(bytes, scale);
      break;
    case kDateTime2N:
      parameter.literal = dateText(bytes);
      break;
    default:
      throw std::runtime_error("a parameter of type " + std::to_string(type));
  }
  parameter.value = parameter.literal;
}

}  // namespace

void writeColumns(Writer& out, const std::vector<FieldInfo>& fields) {
  out.u8(0x81);
  out.u16(static_cast<unsigned>(fields.size()));
  for (const FieldInfo& field : fields) {
    out.u32(0);
    out.u16(0x09);  // may be null, may be changed
    writeType(out, field);
    out.shortText(field.name);
  }
}

void writeRow(Writer& out, const std::vector<FieldInfo>& fields, const std::vector<Value>& row) {
  out.u8(0xD1);
  for (std::size_t i = 0; i < fields.size(); ++i) writeValue(out, fields[i], row[i]);
}

void writeDone(Writer& out, Done token, unsigned status, std::uint64_t rows) {
  out.u8(static_cast<unsigned>(token));
  out.u16(status);
  out.u16(0xC1);
  out.u64(rows);
}

void writeMessage(Writer& out, const ServerError& error, unsigned severity) {
  Writer body;
  body.u32(static_cast<std::uint32_t>(error.number));
  body.u8(1);
  body.u8(severity);
  body.longText(error.text);
  body.shortText("TEST");
  body.shortText("");
  body.u32(1);
  out.u8(severity > 10 ? 0xAA : 0xAB);
  out.u16(static_cast<unsigned>(body.bytes().size()));
  out.raw(body.bytes());
}

void writeReturnStatus(Writer& out) {
  out.u8(0x79);
  out.u32(0);
}

void writeHandle(Writer& out, int handle) {
  out.u8(0xAC);
  out.u16(0);
  out.shortText("");
  out.u8(1);
  out.u32(0);
  out.u16(0);
  out.u8(kIntN);
  out.u8(4);
  out.u8(4);
  out.u32(static_cast<std::uint32_t>(handle));
}

void writeLogin(Writer& out, const std::string& catalog) {
  const auto change = [&](unsigned kind, const std::string& body) {
    out.u8(0xE3);
    out.u16(static_cast<unsigned>(body.size() + 1));
    out.u8(kind);
    out.raw(body);
  };
  Writer database;
  database.shortText(catalog);
  database.shortText("master");
  change(1, database.take());
  Writer collation;
  collation.u8(static_cast<unsigned>(kCollation.size()));
  collation.raw(kCollation);
  collation.u8(0);
  change(7, collation.take());
  writeMessage(out, {5701, "Changed database context to '" + catalog + "'."}, 10);
  Writer body;
  body.u8(1);
  body.raw(std::string_view("\x74\x00\x00\x04", 4));
  body.shortText("Microsoft SQL Server");
  body.raw(std::string_view("\x0A\x00\x06\x40", 4));
  out.u8(0xAD);
  out.u16(static_cast<unsigned>(body.bytes().size()));
  out.raw(body.bytes());
}

Parameter readParameter(Reader& in) {
  Parameter parameter{.name = {}, .literal = "null", .value = {}};
  parameter.name = in.text(in.u8());
  in.u8();
  const unsigned type = in.u8();
  if (type == kNVarChar || type == kNChar || type == kVarChar || type == kChar || type == kNText || type == kText) {
    readText(in, type, parameter);
    return parameter;
  }
  unsigned scale = 0;
  in.u8();
  if (type == kDecimalN || type == kNumericN) {
    in.u8();
    scale = in.u8();
  }
  const unsigned length = in.u8();
  if (length > 0) readNumber(type, scale, in.raw(length), parameter);
  return parameter;
}

}  // namespace orva::tds
