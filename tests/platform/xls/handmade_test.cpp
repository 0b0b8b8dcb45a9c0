#include <gtest/gtest.h>

#include <functional>

#include "platform/xls/cell_text.h"
#include "platform/xls/compound_writer.h"
#include "platform/xls/record_writer.h"
#include "platform/xls/refusal.h"
#include "platform/xls/workbook_reader.h"

namespace orva::xls {
namespace {

using Records = std::function<void(RecordWriter&)>;

RecordWriter& cell(RecordWriter& out, RecordType type, unsigned row, unsigned column, unsigned format = 0) {
  return out.begin(type).u16(row).u16(column).u16(format);
}

/// A workbook of one sheet with these records; before it stand `globals`.
Bytes workbookOf(const Records& sheet, const Records& globals = {}) {
  RecordWriter out;
  out.begin(kBof).u16(0x0600).u16(5).u32(0);
  const std::size_t atOffset = out.size() + 4;
  out.begin(kBoundSheet).u32(0).u16(0).name(u"Asset");
  if (globals) globals(out);
  out.begin(kEof);
  out.patch(atOffset, static_cast<std::uint32_t>(out.size()));
  out.begin(kBof).u16(0x0600).u16(0x10).u32(0);
  sheet(out);
  out.begin(kEof);
  return compoundFileOf(out.take());
}

/// All cells as "row,column text", separated by "|"; or why the file is refused.
std::string read(const Bytes& file) {
  try {
    WorkbookReader workbook(file);
    const CellTable table = workbook.read(workbook.find("Asset"));
    std::string out;
    for (const Cell& found : table.cells()) {
      out += (out.empty() ? "" : "|") + std::to_string(found.row()) + "," + std::to_string(found.column()) + " " +
             cellText(table, found);
    }
    return out;
  } catch (const Refusal& refusal) {
    return refusal.reason();
  }
}

struct SheetCase {
  std::string name;
  Records records;
  std::string reads;
};

const SheetCase kSheets[] = {
    {"cells out of order; of two at one place the last counts",
     [](RecordWriter& out) {
       cell(out, kNumber, 2, 1).number(21);
       cell(out, kNumber, 0, 3).number(3);
       cell(out, kNumber, 2, 0).number(20);
       cell(out, kNumber, 0, 3).number(33);
     },
     "0,3 33|2,0 20|2,1 21"},
    {"cells of a chart in the sheet are not the sheet's",
     [](RecordWriter& out) {
       cell(out, kNumber, 0, 0).number(1);
       out.begin(kBof).u16(0x0600).u16(0x20).u32(0);
       cell(out, kNumber, 0, 0).number(99);
       out.begin(kBof).u16(0x0600).u16(0x20).u32(0);
       out.begin(kEof);
       cell(out, kNumber, 5, 5).number(99);
       out.begin(kEof);
       cell(out, kNumber, 1, 0).number(2);
     },
     "0,0 1|1,0 2"},
    {"a text of a formula behind the parts of an array",
     [](RecordWriter& out) {
       cell(out, kFormula, 0, 0).u32(0).u16(0).u16(0xFFFF).u32(0).u32(0);
       out.begin(kArray).u32(0);
       out.begin(kString).text(u"found");
     },
     "0,0 found"},
    {"empty texts without flags",
     [](RecordWriter& out) {
       cell(out, kLabel, 0, 0).u16(0);
       cell(out, kFormula, 1, 0).u32(0).u16(0).u16(0xFFFF).u32(0).u32(0);
       out.begin(kString).u16(0);
       cell(out, kNumber, 2, 0).number(3);
     },
     "2,0 3"},
    {"a text of a formula that is missing",
     [](RecordWriter& out) { cell(out, kFormula, 0, 0).u32(0).u16(0).u16(0xFFFF).u32(0).u32(0); },
     "is damaged or incomplete (the text of a formula is missing)."},
    {"a number of many cells that leaves the sheet",
     [](RecordWriter& out) { cell(out, kMulRk, 0, 255).u32(2).u16(0).u32(2).u16(256); },
     "is damaged or incomplete (a cell lies outside the sheet)."},
    {"a column beyond the sheet", [](RecordWriter& out) { cell(out, kNumber, 0, 256).number(1); },
     "is damaged or incomplete (a cell lies outside the sheet)."},
    {"a cell that names no text", [](RecordWriter& out) { cell(out, kLabelSst, 0, 0).u32(0); },
     "is damaged or incomplete (a cell names a text that is not there)."},
    {"a cell that is cut off", [](RecordWriter& out) { cell(out, kNumber, 0, 0).u32(1); },
     "is damaged or incomplete (a cell is cut off)."},
    {"a text with lone halves of pairs",
     [](RecordWriter& out) {
       cell(out, kLabel, 0, 0).text(std::u16string{u'a', 0xD83D, u'b', 0xDE00, 0xD83D, 0xDE00, 0xD83D});
     },
     "0,0 a\uFFFDb\uFFFD😀\uFFFD"},
    {"a text that is longer than its record", [](RecordWriter& out) { cell(out, kLabel, 0, 0).u16(9).u8(0).u8('a'); },
     "is damaged or incomplete (a text is cut off)."},
    {"numbers that are none", [](RecordWriter& out) { cell(out, kNumber, 0, 0).u32(0).u32(0x7FF00000); }, "0,0 #NUM!"},
};

TEST(HandmadeTest, SheetsOutOfTheOrdinary) {
  for (const SheetCase& sheet : kSheets) EXPECT_EQ(read(workbookOf(sheet.records)), sheet.reads) << sheet.name;
}

struct DateCase {
  std::u16string format;
  double serial;
  std::string shows1900, shows1904;
};

TEST(HandmadeTest, NumbersAreDatesByTheirFormat) {
  const DateCase cases[] = {
      {u"dd/mm/yyyy", 38061, "15/03/2004", "16/03/2008"},
      {u"dd/mm/yyyy", 38061.75, "15/03/2004", "16/03/2008"},
      {u"dd/mm/yyyy", 38060.999999, "15/03/2004", "16/03/2008"},
      {u"dd/mm/yyyy", 1, "01/01/1900", "02/01/1904"},
      {u"dd/mm/yyyy", 59, "28/02/1900", "29/02/1904"},
      {u"dd/mm/yyyy", 60, "29/02/1900", "01/03/1904"},
      {u"dd/mm/yyyy", 61, "01/03/1900", "02/03/1904"},
      {u"dd/mm/yyyy", 0, "00:00:00", "01/01/1904"},
      {u"hh:mm", 0.25, "06:00:00", "06:00:00"},
      {u"dd/mm/yyyy", 2957003, "30/12/9995", "31/12/9999"},
      {u"dd/mm/yyyy", 2957004, "31/12/9995", "2957004"},
      {u"dd/mm/yyyy", 2958465.9999999, "2958465.9999999", "2958465.9999999"},
      {u"dd/mm/yyyy", -1, "-1", "-1"},
      {u"dd/mm/yyyy", 2.1e9, "2100000000", "2100000000"},
      {u"[h]:mm", 1.5, "01/01/1900", "02/01/1904"},
      {u"[Red][>100]0.00", 38061, "38061", "38061"},
      {u"#,##0\" days/month\"", 38061, "38061", "38061"},
      {u"0\\d_m*s", 38061, "38061", "38061"},
      {u"0;dd/mm/yyyy", 38061, "38061", "38061"},
      {u"[$-409]D-MMM-YY;@", 38061, "15/03/2004", "16/03/2008"},
      {u"\"unended d", 38061, "38061", "38061"},
      {u"[unended d", 38061, "38061", "38061"},
      {u"General", 38061, "38061", "38061"},
      {u"0.00\\", 38061, "38061", "38061"},
  };
  for (const DateCase& test : cases) {
    for (const bool is1904 : {false, true}) {
      const Bytes file = workbookOf([&](RecordWriter& out) { cell(out, kNumber, 0, 0, 0).number(test.serial); },
                                    [&](RecordWriter& out) {
                                      out.begin(kDateMode).u16(is1904 ? 1 : 0);
                                      out.begin(kXf).u16(0).u16(164);
                                      out.begin(kFormat).u16(164).text(test.format);
                                    });
      EXPECT_EQ(read(file), "0,0 " + (is1904 ? test.shows1904 : test.shows1900)) << is1904 << " " << test.serial;
    }
  }
}

/// A number of four bytes that is written over a place in the file.
struct Patch {
  std::size_t at;
  std::uint32_t number;
};

void apply(const std::vector<Patch>& patches, Bytes& file) {
  for (const Patch& patch : patches) {
    for (std::size_t i = 0; i < 4; ++i) file.at(patch.at + i) = static_cast<std::uint8_t>(patch.number >> 8 * i);
  }
}

struct ContainerCase {
  std::string name;
  std::vector<Patch> patches;
  std::string reads;
};

TEST(HandmadeTest, ContainersThatContradictThemselves) {
  const Bytes good = workbookOf([](RecordWriter& out) { cell(out, kNumber, 0, 0).number(7); });
  // The stream takes sectors 0 to 7, then come the directory and the table.
  const std::size_t root = 512 * 9, entry = root + 128, table = 512 * 10;
  const ContainerCase cases[] = {
      {"nothing changed", {{table + 4, 2}}, "0,0 7"},
      {"a chain in a circle", {{table + 4, 1}, {entry + 120, 0x20000}}, "(a chain of sectors has no end)."},
      {"a chain that leaves the file", {{table + 4, 5000}}, "(a part lies beyond the end of the file)."},
      {"a chain that ends early", {{table + 4, 0xFFFFFFFE}}, "(a stream is cut off)."},
      {"a stream larger than the file", {{entry + 120, 0x7FFFFFFF}}, "(a stream is cut off)."},
      {"sectors of no size", {{30, 0x00060000}}, "(impossible sector size)."},
      {"a directory outside the file", {{48, 77}}, "(a part lies beyond the end of the file)."},
      {"a directory in a circle", {{table + 4 * 8, 8}}, "(a chain of sectors has no end)."},
      {"a table outside the file", {{76, 77}}, "(a part lies beyond the end of the file)."},
      {"no table", {{76, 0xFFFFFFFF}}, "(the allocation table is too short)."},
      {"a list of tables outside the file", {{76, 0xFFFFFFFF}, {68, 77}}, "(a part lies beyond the end of the file)."},
      {"a tree without branches", {{root + 76, 0xFFFFFFFF}}, "0,0 7"},
      {"a tree that points outside", {{root + 76, 99}}, "0,0 7"},
      {"a tree in a circle", {{root + 76, 0}, {root + 68, 0}}, "0,0 7"},
      {"a small stream without table", {{entry + 120, 100}}, "(a small stream is cut off)."},
      {"a name longer than its field", {{entry + 64, 0x0102FFFF}}, "0,0 7"},
  };
  for (const ContainerCase& test : cases) {
    Bytes file = good;
    apply(test.patches, file);
    EXPECT_TRUE(read(file).ends_with(test.reads)) << test.name << ": " << read(file);
  }
}

/// Streams under 4,096 bytes lie in pieces of 64 within the stream of the root.
TEST(HandmadeTest, SmallStreams) {
  const std::size_t root = 512 * 9, entry = root + 128, table = 512 * 10, pieces = 512 * 11;
  const std::size_t rootStart = root + 116, size = entry + 120;
  Bytes good = workbookOf([](RecordWriter& out) { cell(out, kNumber, 0, 0).number(7); });
  good.resize(512 * 12, 0xFF);
  apply({{rootStart, 0}, {size, 150}, {60, 10}, {table + 4 * 10, 0xFFFFFFFE}}, good);
  apply({{pieces, 1}, {pieces + 4, 2}, {pieces + 8, 0xFFFFFFFE}}, good);
  const ContainerCase cases[] = {
      {"three pieces", {}, "0,0 7"},
      {"a chain that ends early", {{pieces, 0xFFFFFFFE}}, "(a small stream is cut off)."},
      {"a chain that leaves the pieces", {{pieces, 500}}, "(a small stream is cut off)."},
      {"a chain in a circle", {{pieces, 0}}, "(a record is cut off)."},
      {"more bytes than there are pieces", {{size, 4095}}, "(a small stream is cut off)."},
      {"no table", {{60, 0xFFFFFFFE}}, "(a small stream is cut off)."},
  };
  for (const ContainerCase& test : cases) {
    Bytes file = good;
    apply(test.patches, file);
    EXPECT_TRUE(read(file).ends_with(test.reads)) << test.name << ": " << read(file);
  }
}

}  // namespace
}  // namespace orva::xls
