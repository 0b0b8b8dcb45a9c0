#include "masters/master_import.h"

namespace orva {

void validateMasters(ImportRun& run, const MasterChoice& choice) {
  MasterRow row(run, choice.master);
  walkRows(row, masterKind(choice.kind).rules, WalkPolicy::kAllRules, [](MasterRow&) {});
}

PostResult postMasters(ImportRun& run, const MasterChoice& choice) {
  MasterRow row(run, choice.master);
  return postResult(runPosting(row, masterKind(choice.kind).plan));
}

}  // namespace orva
