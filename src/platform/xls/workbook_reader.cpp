#include "platform/xls/workbook_reader.h"

#include <algorithm>

#include "platform/values/text.h"
#include "platform/xls/appearance.h"
#include "platform/xls/sheet_reader.h"

namespace orva::xls {
namespace {

constexpr std::uint16_t kBiff8 = 0x0600;
constexpr std::uint8_t kWorksheet = 0;

StreamBytes workbookStream(ByteView file) {
  if (!CompoundFile::hasSignature(file)) throw foreignFile(file);
  const CompoundFile container(file);
  if (auto stream = container.stream("Workbook")) return std::move(*stream);
  throw foreignContainer(container);
}

void checkVersion(const Record& record) {
  if ((record.type & 0x00FF) != 0x09 || record.body.size() < 4) throw damaged("the workbook has no beginning");
  if (record.type != kBof || u16At(record.body, 0) < kBiff8) throw oldFormat();
  if (u16At(record.body, 0) != kBiff8) throw damaged("the workbook is of an unknown version");
}

}  // namespace

WorkbookReader::WorkbookReader(ByteView file) : stream_(workbookStream(file)) { readGlobals(); }

void WorkbookReader::readGlobals() {
  RecordStream records(stream_.view(), 0);
  checkVersion(records.next());
  for (Record record = records.next(); record.type != kEof; record = records.next()) readGlobal(records, record);
}

void WorkbookReader::readGlobal(RecordStream& records, const Record& record) {
  const ByteView body = record.body;
  auto need = [&](std::size_t size) {
    if (body.size() < size) throw damaged("a record of the workbook is cut off");
  };
  switch (record.type) {
    case kFilePass:
      throw encrypted();
    case kDateMode:
      need(2);
      dates_ = u16At(body, 0) == 1 ? DateSystem::k1904 : DateSystem::k1900;
      break;
    case kBoundSheet:
      need(8);
      readSheetEntry(body);
      break;
    case kFormat:
      need(4);
      formats_.addNumberFormat(u16At(body, 0), readName(body.subspan(4), u16At(body, 2)));
      break;
    case kXf:
      need(4);
      formats_.addCellFormat(u16At(body, 2));
      break;
    case kSst:
      need(8);
      texts_->addShared(records, body);
      break;
    default:
      break;
  }
}

void WorkbookReader::readSheetEntry(ByteView body) {
  if (body[5] != kWorksheet) return;
  sheets_.push_back({readName(body.subspan(7), body[6]), u32At(body, 0)});
}

const SheetEntry& WorkbookReader::find(std::string_view name) const {
  auto sheet =
      std::find_if(sheets_.begin(), sheets_.end(), [&](const SheetEntry& entry) { return entry.name == name; });
  if (sheet == sheets_.end()) {
    sheet = std::find_if(sheets_.begin(), sheets_.end(),
                         [&](const SheetEntry& entry) { return equalsNoCase(trim(entry.name), trim(name)); });
  }
  if (sheet != sheets_.end()) return *sheet;
  throw noSuchSheet(name);
}

/// Tells the sheets that are there; of very many only the first.
Refusal WorkbookReader::noSuchSheet(std::string_view name) const {
  constexpr std::size_t kMostNames = 20;
  std::string text = "has no sheet named \"" + std::string(name) + "\". ";
  if (sheets_.empty()) return {WorkbookFault::kNoSuchSheet, text + "It holds no worksheet."};
  text += "The sheets in it are: ";
  for (std::size_t i = 0; i < std::min(sheets_.size(), kMostNames); ++i) {
    text += (i == 0 ? "\"" : ", \"") + sheets_[i].name + "\"";
  }
  return {WorkbookFault::kNoSuchSheet, text + (sheets_.size() > kMostNames ? " and others." : ".")};
}

CellTable WorkbookReader::read(const SheetEntry& sheet) {
  CellTable cells(texts_, dates_);
  const std::vector<bool> dates = formats_.datesByCellFormat();
  SheetReader(*texts_, cells, dates).read(RecordStream(stream_.view(), sheet.offset));
  cells.finish();
  return cells;
}

}  // namespace orva::xls
