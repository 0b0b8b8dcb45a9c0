#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_services.h"
#include "fakes/faulty_adapter.h"
#include "fakes/scripted_database.h"
#include "wizard/frmImport.h"
#include "wizard/posting_run.h"

namespace orva {

/// The transaction wizard over a scripted company, with one test import behind every kind: a cell
/// "bad" is an error, "odd" a warning, "old" a backdated entry, and posting stores ASSETID and REMARKS into `Posted`.
struct WizardScreen {
  WizardScreen();

  /// On the selection page with a kind chosen.
  void choose(ImportKindId kind, AssetMode mode = AssetMode::kAdd);
  /// The chosen workbook gets these rows on its sheet "Asset".
  void putRows(const std::vector<std::vector<std::string>>& rows, const std::string& path = "c:\\books\\new.xls");
  void putCells(FakeSheet::Rows rows, const std::string& path = "c:\\books\\new.xls");
  /// A sale workbook, one cell text for each row's REMARKS.
  void putSales(const std::vector<std::string>& remarks);
  /// Chooses sales, reads and validates such a workbook.
  void validateSales(const std::vector<std::string>& remarks);
  /// Reads and validates the chosen workbook.
  void read() { screen.cmdNext_Click(WizardPage::kSelection); }

  int lineOf(const std::string& excelName) const;
  bool isTicked(const std::string& excelName) const { return screen.lstFields.line(lineOf(excelName)).ticked; }
  void tick(const std::string& excelName, bool ticked = true) { screen.lstFields_ItemCheck(lineOf(excelName), ticked); }
  /// Cells of a row of the results grid joined with "|".
  std::string row(int row) const;
  std::vector<std::string> rows() const;
  /// Text of the first cell of every posted row.
  std::vector<std::string> posted() const;

  FakeServices fakes;
  std::shared_ptr<ScriptedDatabase> database = std::make_shared<ScriptedDatabase>();
  std::shared_ptr<FaultyAdapter> faulty = std::make_shared<FaultyAdapter>(database);
  std::shared_ptr<ScriptedTable> parameter;
  std::shared_ptr<ScriptedTable> fieldNames;
  std::shared_ptr<ScriptedTable> postedRows;
  CompanyContext company;
  ImportRegistry registry;
  int closed = 0;
  frmImport screen{fakes.services, company, registry, {.onClose = [this] { ++closed; }}};
};

}  // namespace orva
