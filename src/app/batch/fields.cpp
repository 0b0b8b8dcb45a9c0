#include "app/batch/commands.h"
#include "platform/database.h"
#include "startup/shared_error_report.h"
#include "wizard/catalogue/builders.h"

namespace orva {
namespace {

void printLine(std::ostream& out, const FieldRow& field) {
  out << tabbed({field.label, field.excelName, field.type, field.size, std::string(requirementText(field.requirement)),
                 field.ticked ? "x" : ""})
      << '\n';
}

}  // namespace

Exit runFields(Session& session, const ImportChoice& choice) {
  const auto selection = selectionOf(session, choice);
  if (!selection || !session.open(choice.company)) return Exit::kFailed;
  try {
    for (const FieldRow& field : buildCatalogue(*selection, session.company())) printLine(session.out(), field);
  } catch (const ProviderError& error) {
    reportError(session.dialogs(), error);
    return Exit::kFailed;
  }
  return Exit::kDone;
}

}  // namespace orva
