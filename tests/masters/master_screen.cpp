#include "masters/master_screen.h"

#include <gtest/gtest.h>

#include "wizard/results.h"

namespace orva {
namespace {

constexpr const char* kPath = "c:\\books\\masters.xls";

}  // namespace

MasterScreen::MasterScreen(SqlDialect dialect) : RealCompany(dialect) {
  prepare({"insert into Dept (Deptcode, DeptName) values ('0007', 'Stores')",
           "insert into Costcentre (CentreCode, CentreName) values ('0007', 'Works')",
           "insert into Vendor (Vendorcode, VendorName) values ('0007', 'O''Neil & Sons')",
           "insert into Users (Usedby, Username) values ('0007', 'Rao')",
           "insert into Location (cocd, recordid, MainLocation, SubLocation, PhysicalLocation) "
           "values ('K1', 12, 'Pune', 'Plant 1', 'Bay 1')",
           "insert into MisMaster (MName) values ('Project')", "insert into MisMaster (MName) values ('Funding')",
           "insert into MisData (Master, Code, MName) values ('M1', '0007', 'Expansion')"});
  screen.Load();
}

void MasterScreen::read(MasterKindId kind, const Sheet2D& rows, const std::string& miscellaneous) {
  screen.cmdHome_Click();
  screen.cmdSkip_Click();
  if (!miscellaneous.empty()) screen.cmbMisc.setText(miscellaneous);
  screen.optMaster_Click(kind);
  fakes.workbooks.putTexts(kPath, "Master", rows);
  screen.txtExcel.setText(kPath);
  for (int line = 0; line < screen.lstFields.count(); ++line) {
    const FieldRow& field = screen.catalogue()[static_cast<std::size_t>(line)];
    const bool isThere = std::find(rows[0].begin(), rows[0].end(), field.excelName) != rows[0].end();
    screen.lstFields_ItemCheck(line, isThere);
  }
  screen.cmdNext_Click(WizardPage::kSelection);
}

std::vector<std::string> MasterScreen::findings(MasterKindId kind, const Sheet2D& rows,
                                                const std::string& miscellaneous) {
  read(kind, rows, miscellaneous);
  std::vector<std::string> lines;
  const FlexGrid& grid = screen.grid1;
  const int first = grid.findColumn(kErrorHeading);
  for (int row = 1; row < grid.rowCount(); ++row) {
    std::string line = std::string(grid.text(row, first)) + "|" + std::string(grid.text(row, first + 1)) + "|" +
                       std::string(grid.text(row, first + 2));
    lines.push_back(first < 0 || line == "||" ? std::string() : line);
  }
  return lines;
}

void MasterScreen::finish() {
  screen.cmdNext_Click(WizardPage::kResults);
  screen.cmdContinue_Click(WizardPage::kFinish);
}

void MasterScreen::import(MasterKindId kind, const Sheet2D& rows, const std::string& miscellaneous) {
  read(kind, rows, miscellaneous);
  EXPECT_EQ(screen.errorCount(), 0) << screen.grid1.text(1, screen.grid1.columnCount() - 1);
  finish();
}

}  // namespace orva
