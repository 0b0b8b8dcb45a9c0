#include "platform/xls/xls_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <unordered_map>

#include "platform/values/date.h"
#include "platform/values/text.h"
#include "platform/xls/cell_text.h"
#include "platform/xls/compound_writer.h"
#include "platform/xls/record_writer.h"
#include "platform/xls/refusal.h"

namespace orva::xls {
namespace {

constexpr std::size_t kMaxRows = 65536, kMaxColumns = 256, kMaxCharacters = 32767, kMaxSheetName = 31;
constexpr std::size_t kWidestColumn = 50;  // characters
constexpr unsigned kStyleFormats = 15;     // Excel expects so many before the first cell format
constexpr unsigned kPlainFormat = kStyleFormats, kDateFormat = kStyleFormats + 1;
constexpr unsigned kDateNumberFormat = 164;  // the first that a workbook defines itself

using Rows = std::vector<std::vector<OutputCell>>;

/// A text as the sheet keeps it: its length is limited, and no pair is cut in two.
std::u16string limited(std::string_view text, std::size_t most) {
  std::u16string units = toUtf16(text);
  if (units.size() <= most) return units;
  const bool withinPair = units[most] >= 0xDC00 && units[most] < 0xE000;
  units.resize(withinPair ? most - 1 : most);
  return units;
}

std::optional<double> numberOf(std::string_view text) {
  text = trim(text);
  double value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

/// The day number of a date. Before 1 March 1900 the sheet's calendar is a day
/// off, and before 1900 it has none.
std::optional<double> serialOf(std::string_view text) {
  constexpr int kFirstCommonDay = 61;
  const std::optional<Date> date = Date::parseDayMonthYear(text);
  if (!date || date->dayNumber() < 2) return std::nullopt;
  return date->dayNumber() < kFirstCommonDay ? date->dayNumber() - 1 : date->dayNumber();
}

/// The shared texts, each kept once.
class SharedTexts {
 public:
  std::uint32_t add(const std::string& text) {
    ++uses_;
    const auto [place, isNew] = numbers_.try_emplace(text, static_cast<std::uint32_t>(order_.size()));
    if (isNew) order_.push_back(&place->first);
    return place->second;
  }
  void write(RecordWriter& out) const {
    out.begin(kSst).u32(uses_).u32(static_cast<std::uint32_t>(order_.size()));
    for (const std::string* text : order_) out.text(limited(*text, kMaxCharacters));
  }

 private:
  std::unordered_map<std::string, std::uint32_t> numbers_;
  std::vector<const std::string*> order_;
  std::uint32_t uses_ = 0;
};

class SheetWriter {
 public:
  SheetWriter(RecordWriter& out, SharedTexts& texts) : out_(out), texts_(texts) {}

  void cell(std::size_t row, std::size_t column, const OutputCell& cell) {
    place_ = {row, column};
    if (cell.text.empty() || cell.kind == CellKind::kBlank) return;
    if (!(cell.kind == CellKind::kNumber && number(kPlainFormat, numberOf(cell.text))) &&
        !(cell.kind == CellKind::kDate && number(kDateFormat, serialOf(cell.text))) &&
        !(cell.kind == CellKind::kBoolean && boolean(cell.text)) &&
        !(cell.kind == CellKind::kError && error(cell.text))) {
      begin(kLabelSst, kPlainFormat).u32(texts_.add(cell.text));
    }
  }

 private:
  RecordWriter& begin(RecordType type, unsigned format) {
    return out_.begin(type)
        .u16(static_cast<unsigned>(place_.row))
        .u16(static_cast<unsigned>(place_.column))
        .u16(format);
  }
  bool number(unsigned format, std::optional<double> value) {
    if (value) begin(kNumber, format).number(*value);
    return value.has_value();
  }
  bool boolean(std::string_view text) {
    const bool isTrue = equalsNoCase(text, "TRUE");
    if (!isTrue && !equalsNoCase(text, "FALSE")) return false;
    begin(kBoolErr, kPlainFormat).u8(isTrue ? 1 : 0).u8(0);
    return true;
  }
  bool error(std::string_view text) {
    const std::optional<std::uint8_t> code = errorCode(text);
    if (code) begin(kBoolErr, kPlainFormat).u8(*code).u8(1);
    return code.has_value();
  }

  struct {
    std::size_t row = 0, column = 0;
  } place_;
  RecordWriter& out_;
  SharedTexts& texts_;
};

void writeBof(RecordWriter& out, unsigned part) {
  out.begin(kBof).u16(0x0600).u16(part).u16(0x0DBB).u16(0x07CC).u32(0x41).u32(6);
}

void writeFormats(RecordWriter& out) {
  for (int i = 0; i < 4; ++i) {
    out.begin(kFont).u16(200).u16(0).u16(0x7FFF).u16(400).u16(0).u32(0).name(u"Arial");
  }
  out.begin(kFormat).u16(kDateNumberFormat).text(u"dd/mm/yyyy");
  for (unsigned format = 0; format <= kDateFormat; ++format) {
    const bool isStyle = format < kStyleFormats;
    out.begin(kXf).u16(0).u16(format == kDateFormat ? kDateNumberFormat : 0).u16(isStyle ? 0xFFF5 : 0x0001);
    out.u8(0x20).u8(0).u8(0).u8(isStyle ? 0xF4 : 0x00).u32(0).u32(0).u16(0x20C0);
  }
  out.begin(kStyle).u16(0x8000).u8(0).u8(0xFF);
}

std::size_t widthOf(const Rows& rows) {
  std::size_t width = 0;
  for (const std::vector<OutputCell>& row : rows) width = std::max(width, row.size());
  return width;
}

/// Columns as wide as their longest text, so that no date shows as "####".
void writeColumnWidths(RecordWriter& out, const Rows& rows) {
  std::vector<std::size_t> longest(widthOf(rows), 8);
  for (const std::vector<OutputCell>& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      longest[i] = std::max(longest[i], std::min(characterCount(row[i].text), kWidestColumn));
    }
  }
  for (std::size_t i = 0; i < longest.size(); ++i) {
    const auto column = static_cast<unsigned>(i);
    out.begin(kColInfo).u16(column).u16(column).u16(static_cast<unsigned>(longest[i] + 2) * 256);
    out.u16(kPlainFormat).u16(0).u16(0);
  }
}

/// The sheet's records; the shared texts are collected on the way.
Bytes sheetBytes(const Rows& rows, SharedTexts& texts) {
  RecordWriter out;
  writeBof(out, 0x0010);
  writeColumnWidths(out, rows);
  out.begin(kDimensions).u32(0).u32(static_cast<std::uint32_t>(rows.size()));
  out.u16(0).u16(static_cast<unsigned>(widthOf(rows))).u16(0);
  SheetWriter sheet(out, texts);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) sheet.cell(row, column, rows[row][column]);
  }
  out.begin(kWindow2).u16(0x06B6).u16(0).u16(0).u32(0x40).u16(0).u16(0).u32(0);
  out.begin(kEof);
  return out.take();
}

}  // namespace

Bytes workbookBytes(std::string_view sheetName, const Rows& rows) {
  if (rows.size() > kMaxRows || widthOf(rows) > kMaxColumns) {
    throw Refusal(WorkbookFault::kCannotOpen,
                  "cannot be written: an Excel 97-2003 sheet holds at most 65536 rows and 256 columns.");
  }
  SharedTexts texts;
  const Bytes sheet = sheetBytes(rows, texts);
  RecordWriter out;
  writeBof(out, 0x0005);
  out.begin(kCodePage).u16(1200);
  out.begin(kWindow1).u16(0).u16(0).u16(0x3FCF).u16(0x2A4E).u16(0x38).u16(0).u16(0).u16(1).u16(0x258);
  writeFormats(out);
  const std::size_t atOffset = out.size() + 4;
  out.begin(kBoundSheet).u32(0).u16(0).name(limited(sheetName, kMaxSheetName));
  texts.write(out);
  out.begin(kEof);
  out.patch(atOffset, static_cast<std::uint32_t>(out.size()));
  Bytes stream = out.take();
  stream.insert(stream.end(), sheet.begin(), sheet.end());
  return compoundFileOf(std::move(stream));
}

}  // namespace orva::xls
