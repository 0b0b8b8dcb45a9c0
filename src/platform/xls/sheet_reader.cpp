#include "platform/xls/sheet_reader.h"

#include "platform/xls/refusal.h"

namespace orva::xls {
namespace {

constexpr std::size_t kPlaceSize = 6;
constexpr std::size_t kSmallestCell = 14;  // bytes of a single number or text, its header included

double rkNumber(std::uint32_t rk) {
  const bool hundredths = (rk & 1) != 0;
  const bool integer = (rk & 2) != 0;
  const double value = integer ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
                               : std::bit_cast<double>(std::uint64_t{rk & ~3U} << 32);
  return hundredths ? value / 100 : value;
}

}  // namespace

void SheetReader::read(RecordStream records) {
  if (records.next().type != kBof) throw damaged("a sheet does not begin where the workbook says");
  cells_.reserve(records.remaining() / kSmallestCell);
  // Charts within the sheet are parts of their own and hold cells of their own.
  for (int depth = 1; depth > 0;) {
    const Record record = records.next();
    if (record.type == kBof) {
      ++depth;
    } else if (record.type == kEof) {
      --depth;
    } else if (depth == 1) {
      readRecord(records, record);
    }
  }
}

void SheetReader::readRecord(RecordStream& records, const Record& record) {
  const ByteView body = record.body;
  switch (record.type) {
    case kNumber:
      return addNumber(placeOf(body, 14), doubleAt(body, kPlaceSize));
    case kRk:
      return addNumber(placeOf(body, 10), rkNumber(u32At(body, kPlaceSize)));
    case kLabelSst:
      return addText(placeOf(body, 10), u32At(body, kPlaceSize));
    case kMulRk:
      return readMulRk(body);
    case kFormula:
      return readFormula(records, body);
    case kBoolErr:
      return addTruthOrError(placeOf(body, 8), body[kPlaceSize], body[kPlaceSize + 1] != 0);
    case kLabel:
    case kRString: {
      const Place place = placeOf(body, 8);
      if (u16At(body, kPlaceSize) == 0) return;  // some writers end an empty text here, without its flags
      return addText(place, texts_.add(records, body.subspan(kPlaceSize)));
    }
    default:
      return;  // formatted cells without value, and all that is no cell
  }
}

SheetReader::Place SheetReader::placeOf(ByteView body, std::size_t minimum) const {
  if (body.size() < minimum) throw damaged("a cell is cut off");
  const std::uint16_t column = u16At(body, 2);
  if (column > 255) throw damaged("a cell lies outside the sheet");
  return {u16At(body, 0), static_cast<std::uint8_t>(column), u16At(body, 4)};
}

void SheetReader::addNumber(Place place, double value) {
  const bool showsDate = place.format < datesByFormat_.size() && datesByFormat_[place.format];
  const bool isDate = showsDate && dateTimeOf(value, cells_.dateSystem()).has_value();
  cells_.add(place.row, place.column, isDate ? Cell::date(value) : Cell::number(value));
}

void SheetReader::addText(Place place, TextNumber number) {
  if (number >= texts_.size()) throw damaged("a cell names a text that is not there");
  if (!texts_[number].empty()) cells_.add(place.row, place.column, Cell::text(number));
}

void SheetReader::addTruthOrError(Place place, std::uint8_t value, bool isError) {
  cells_.add(place.row, place.column, isError ? Cell::error(value) : Cell::boolean(value != 0));
}

/// Row, first column, then six bytes a cell, then the last column.
void SheetReader::readMulRk(ByteView body) {
  Place place = placeOf(body, 12);
  const std::size_t count = (body.size() - kPlaceSize) / 6;
  if (place.column + count > 256) throw damaged("a cell lies outside the sheet");
  for (std::size_t i = 0; i < count; ++i) {
    place.format = u16At(body, 4 + 6 * i);
    addNumber(place, rkNumber(u32At(body, 6 + 6 * i)));
    ++place.column;
  }
}

/// The result that was stored with the formula: a number, or with 0xFFFF at its
/// end what the first byte says.
void SheetReader::readFormula(RecordStream& records, ByteView body) {
  enum ResultKind : std::uint8_t { kTextResult, kBooleanResult, kErrorResult, kEmptyText };
  const Place place = placeOf(body, 14);
  if (u16At(body, 12) != 0xFFFF) return addNumber(place, doubleAt(body, kPlaceSize));
  switch (body[kPlaceSize]) {
    case kTextResult:
      return readFormulaText(records, place);
    case kBooleanResult:
      return addTruthOrError(place, body[8], false);
    case kErrorResult:
      return addTruthOrError(place, body[8], true);
    case kEmptyText:
      return;
    default:
      throw damaged("a formula has a result of unknown kind");
  }
}

void SheetReader::readFormulaText(RecordStream& records, Place place) {
  // The formula may go on, and its shared or array part may stand in between.
  for (Record record = records.next();; record = records.next()) {
    switch (record.type) {
      case kString:
        if (record.body.size() < 2) throw damaged("the text of a formula is cut off");
        if (u16At(record.body, 0) == 0) return;
        return addText(place, texts_.add(records, record.body));
      case kShrFmla:
      case kArray:
      case kTable:
      case kContinue:
        continue;
      default:
        throw damaged("the text of a formula is missing");
    }
  }
}

}  // namespace orva::xls
