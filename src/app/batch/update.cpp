#include "app/batch/commands.h"
#include "updates/bulk_update_screen.h"

namespace orva {

Exit runUpdate(Session& session, const BulkUpdate& update, const UpdateOptions& options) {
  if (!session.open(options.company)) return Exit::kFailed;
  session.dialogs().setAnswerRule([](const Message&) { return Answer::kYes; });
  BulkUpdateScreen screen(update, session.services(), session.company());
  session.eventLoop().onInterrupt([&] { screen.requestClose(); });
  screen.txtExcel.setText(options.workbook);
  screen.btnImport_Click();
  if (!screen.errorCount()) return Exit::kFailed;
  session.out() << "Total Records with Errors : " << *screen.errorCount() << '\n'
                << "Records updated : " << screen.updatedCount() << '\n';
  return *screen.errorCount() > 0 ? Exit::kRowsInError : Exit::kDone;
}

}  // namespace orva
