#include "wizard/summary.h"

#include <string>

namespace orva {
namespace {

bool asks(Dialogs& dialogs, const std::string& text, MessageIcon icon) {
  const Message question{.text = text, .title = "ORVA ExcelImport", .icon = icon, .buttons = MessageButtons::kYesNo};
  return dialogs.show(question) == Answer::kYes;
}

bool acceptsBackdated(int rows, Dialogs& dialogs) {
  return asks(dialogs, "There are " + std::to_string(rows) + "  backdated entries. Do you still want to import ?",
              MessageIcon::kInformation);
}

}  // namespace

RunTotals totalsOf(const Findings& findings, int records, bool backdatedTicked, Dialogs& dialogs) {
  RunTotals totals{.records = records,
                   .errors = findings.errorRows(),
                   .warnings = findings.warningRows(),
                   .backdated = findings.backdatedRows()};
  if (totals.backdated == 0) return totals;
  totals.backdatedAccepted = backdatedTicked && acceptsBackdated(totals.backdated, dialogs);
  (totals.backdatedAccepted ? totals.warnings : totals.errors) += totals.backdated;
  return totals;
}

bool offersErrorFile(const RunTotals& totals) { return totals.errors > 0 || totals.backdated > 0; }

bool asksForErrorFile(int errors, Dialogs& dialogs) {
  return asks(dialogs,
              "Error found in " + std::to_string(errors) +
                  " entries.\nError descriptions are given in the Error file.\nDo you want to open the error file?",
              MessageIcon::kQuestion);
}

}  // namespace orva
