#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/controls.h"
#include "platform/services.h"
#include "startup/company_context.h"
#include "wizard/catalogue/field_row.h"
#include "wizard/control_totals.h"
#include "wizard/findings.h"
#include "wizard/progress.h"
#include "wizard/selection.h"

namespace orva {

/// What a validator or poster works on. Row 0 of the grid holds the headings
/// (the Excel names of the staged columns in the workbook's order, then the
/// kind's own columns), each further row one workbook row. Validators add
/// findings and may fill the kind's own columns; they touch no colour.
struct ImportRun {
  const Services& services;
  CompanyContext& company;
  const Selection& selection;
  const Catalogue& catalogue;
  FlexGrid& grid;
  Findings& findings;
  RunProgress& progress;
  /// `flxSave`: posted rows become visible here.
  FlexGrid& saved;

  int rowCount() const { return grid.rowCount() - 1; }
  Connection& connection() const { return *company.connection; }
  const DialectTokens& dialect() const { return company.dialect(); }
};

/// How a posting run ended.
struct PostResult {
  /// Every row was written.
  bool finished = false;
  int rowsPosted = 0;
  /// What the user is told; "Imported successfully" when all went well.
  std::string text;
  /// Records that the rows became, where a row may become several (assets of a quantity); else 0.
  std::int64_t recordsStored = 0;
  /// What the company keeps of the posted rows, for a kind with control totals; nothing when it could not be read.
  std::optional<ControlTotals> controlTotals = {};
};

}  // namespace orva
