#include "wizard/posting_run.h"

namespace orva {

void PostingRow::openRecord(std::string_view query) {
  record_ = run().connection().open(query, CursorKind::kKeyset, LockKind::kPessimistic);
}

PostResult postResult(const PostingEnd& end) {
  PostResult result{.finished = end.finished(), .rowsPosted = end.rowsPosted, .text = {}};
  if (result.finished) result.text = "Imported successfully";
  if (end.failure) result.text = end.failure->description();
  return result;
}

PostingLoop::PostingLoop(PostingRow& row) : row_(row) { row.run().progress.begin({}, row.run().rowCount()); }

void PostingLoop::rowDone(int row) {
  ImportRun& run = row_.run();
  if (run.progress.repaintDue()) run.saved.showRow(row);
  run.progress.rowDone(row);
  end_.stopped = !end_.failure && row < run.rowCount() && run.progress.stopRequested();
}

void PostingLoop::fail(const ProviderError& error) {
  end_.failure = error;
  if (!row_.isOpen()) return;
  try {
    row_.record().cancel();
  } catch (const ProviderError&) {
    // A lost connection cannot drop the record either; the first failure is the one to tell.
  }
}

PostingEnd PostingLoop::finish() {
  row_.run().progress.finish({});
  return end_;
}

}  // namespace orva
