#include "fakes/fake_desktop.h"
#include "fakes/temporary_folder.h"
#include "platform/xls/xls_workbooks.h"
#include "wizard/staging.h"

namespace orva {
namespace {

FieldRow field(const char* excelName) {
  return {.label = excelName, .excelName = excelName, .type = "Text", .size = {}, .ticked = true, .position = {}};
}

/// Rows of the table joined with "|".
std::vector<std::string> texts(const TextTable& table) {
  std::vector<std::string> rows;
  for (int row = 0; row < table.rowCount(); ++row) {
    rows.emplace_back();
    for (int column = 0; column < table.columnCount(); ++column) {
      rows.back() += std::string(table.cell(row, column)) + "|";
    }
  }
  return rows;
}

TEST(RealWorkbook, IsStagedFromAPathInCapitals) {
  TemporaryFolder folder;
  XlsWorkbooks workbooks;
  workbooks.write(folder.file("BOOK.XLS"), " asset ",
                  {{{CellKind::kText, "Cost"}, {CellKind::kText, "VCHRDATE"}, {CellKind::kText, " qty "}},
                   {{CellKind::kNumber, "1234567.5"}, {CellKind::kDate, "31/03/2005"}, {CellKind::kNumber, "2.5"}},
                   {{CellKind::kNumber, "0.125"}, {CellKind::kText, "O'Neil"}, {}},
                   {{}, {CellKind::kText, "  "}, {}}});
  Label message("lblStatus"), current("lblCurrentStatus");
  ProgressBar bar("ProgressBar1");
  FakeEventLoop eventLoop;
  RunProgress progress({message, current, bar, eventLoop});
  ASSERT_TRUE(workbookPathFault(folder.file("BOOK.XLS")).empty());
  const std::unique_ptr<Sheet> sheet = openAssetSheet(workbooks, folder.file("BOOK.XLS"));
  const Catalogue catalogue{field("QTY"), field("COST"), field("VCHRDATE")};
  const Staged staged = DumpExlData(*sheet, {.catalogue = catalogue, .countsUnits = true}, progress);
  EXPECT_EQ(texts(staged.table),
            (std::vector<std::string>{"COST|VCHRDATE|QTY|", "1234567.50|31/03/2005|2|", "0.125|O'Neil||"}));
  EXPECT_EQ(staged.units, 3);
  EXPECT_FALSE(staged.failure.has_value());
}

TEST(RealWorkbook, ThatIsNoneIsNamedInTheMessage) {
  TemporaryFolder folder;
  XlsWorkbooks workbooks;
  folder.write("page.xls", "<html><table></table></html>");
  folder.write("empty.xls", "");
  for (const std::string name : {"page.xls", "empty.xls", "missing.xls"}) {
    try {
      openAssetSheet(workbooks, folder.file(name));
      ADD_FAILURE() << name << " was opened";
    } catch (const WorkbookError& error) {
      EXPECT_NE(sheetFaultText(error).find(name), std::string::npos) << sheetFaultText(error);
    }
  }
}

}  // namespace
}  // namespace orva
