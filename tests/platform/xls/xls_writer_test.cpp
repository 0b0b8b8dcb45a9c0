#include <gtest/gtest.h>

#include "fakes/temporary_folder.h"
#include "platform/xls/xls_workbooks.h"

namespace orva::xls {
namespace {

using Rows = std::vector<std::vector<OutputCell>>;

std::string repeated(const std::string& part, std::size_t count) {
  std::string text;
  while (count-- > 0) text += part;
  return text;
}

/// What a workbook gives back for the rows written into it.
class XlsWriterTest : public testing::Test {
 protected:
  std::unique_ptr<Sheet> writtenAndRead(const Rows& rows, const std::string& sheetName = "Asset") {
    XlsWorkbooks().write(folder_.file("out.xls"), sheetName, rows);
    return XlsWorkbooks().openSheet(folder_.file("out.xls"), sheetName, HeaderRow::kNo);
  }
  TemporaryFolder folder_;
};

struct RoundTrip {
  OutputCell written;
  CellKind kind;
  std::string text;
};

TEST_F(XlsWriterTest, CellsComeBackAsWritten) {
  using enum CellKind;
  const RoundTrip cases[] = {
      {{kText, "O'Neil"}, kText, "O'Neil"},
      {{kText, "00123"}, kText, "00123"},
      {{kText, "संपत्ति 資產 😀 é€"}, kText, "संपत्ति 資產 😀 é€"},
      {{kText, "café"}, kText, "café"},
      {{kText, "bad \xC3 \xED\xA0\x80 byte"}, kText, "bad \uFFFD \uFFFD\uFFFD\uFFFD byte"},
      {{kText, repeated("é", 30000)}, kText, repeated("é", 30000)},
      {{kText, repeated("資", 32767)}, kText, repeated("資", 32767)},
      {{kText, repeated("a", 32766) + "😀"}, kText, repeated("a", 32766)},
      {{kNumber, "1234.56"}, kNumber, "1234.56"},
      {{kNumber, "-0.0001"}, kNumber, "-0.0001"},
      {{kNumber, "twelve"}, kText, "twelve"},
      {{kNumber, "1e999"}, kText, "1e999"},
      {{kDate, "05/11/2026"}, kDate, "05/11/2026"},
      {{kDate, "28/02/1900"}, kDate, "28/02/1900"},
      {{kDate, "01/03/1900"}, kDate, "01/03/1900"},
      {{kDate, "01/01/1900"}, kDate, "01/01/1900"},
      {{kDate, "31/12/1899"}, kText, "31/12/1899"},
      {{kDate, "31/12/9999"}, kDate, "31/12/9999"},
      {{kDate, "31/02/2005"}, kText, "31/02/2005"},
      {{kBoolean, "true"}, kBoolean, "TRUE"},
      {{kBoolean, "yes"}, kText, "yes"},
      {{kError, "#N/A"}, kError, "#N/A"},
      {{kError, "#BAD"}, kText, "#BAD"},
      {{kBlank, "unseen"}, kBlank, ""},
      {{kText, ""}, kBlank, ""},
  };
  Rows rows;
  for (const RoundTrip& trip : cases) rows.push_back({{}, trip.written});
  const auto sheet = writtenAndRead(rows);
  int row = 0;
  for (const RoundTrip& trip : cases) {
    EXPECT_EQ(sheet->text(row, 1), trip.text) << trip.written.text.substr(0, 40);
    EXPECT_EQ(sheet->kind(row++, 1), trip.kind) << trip.written.text.substr(0, 40);
  }
}

/// Sizes around the ends of sectors, records and of the table in the header.
TEST_F(XlsWriterTest, EverySizeComesBackWhole) {
  for (const int count : {0, 1, 100, 3000, 65536}) {
    Rows rows;
    for (int row = 0; row < count; ++row) {
      rows.push_back({{CellKind::kText, "Asset " + std::to_string(row)}, {CellKind::kNumber, std::to_string(row)}});
      for (int column = 0; count == 65536 && column < 5; ++column) rows.back().push_back(rows.back()[1]);
    }
    const auto sheet = writtenAndRead(rows);
    ASSERT_EQ(sheet->rowCount(), count);
    for (int row = 0; row < count; ++row) {
      ASSERT_EQ(sheet->text(row, 0), "Asset " + std::to_string(row));
      ASSERT_EQ(sheet->text(row, 1), std::to_string(row));
    }
  }
}

TEST_F(XlsWriterTest, SheetNames) {
  for (const std::string name : {"मास्टर", "Asset", "Büro"})
    EXPECT_NO_THROW(writtenAndRead({{{CellKind::kText, "x"}}}, name));
}

TEST_F(XlsWriterTest, AFailedWriteLeavesTheOldFile) {
  const std::string path = folder_.write("old.xls", "precious");
  EXPECT_THROW(XlsWorkbooks().write(path, "Asset", Rows(65537)), WorkbookError);
  EXPECT_THROW(XlsWorkbooks().write(path, "Asset", {std::vector<OutputCell>(257)}), WorkbookError);
  std::filesystem::create_directory(path + ".tmp");  // the temporary file cannot be made
  EXPECT_THROW(XlsWorkbooks().write(path, "Asset", {{{CellKind::kText, "x"}}}), WorkbookError);
  EXPECT_EQ(folder_.read("old.xls"), "precious");
  EXPECT_THROW(XlsWorkbooks().write(folder_.file("nowhere/new.xls"), "Asset", {}), WorkbookError);
}

TEST_F(XlsWriterTest, AFinishedWriteReplacesTheOldFileAndLeavesNoOther) {
  folder_.write("out.xls", "old");
  EXPECT_EQ(writtenAndRead({{{CellKind::kText, "new"}}})->text(0, 0), "new");
  const std::filesystem::path folder = folder_.path();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

}  // namespace
}  // namespace orva::xls
