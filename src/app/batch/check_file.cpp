#include <algorithm>

#include "app/batch/commands.h"
#include "platform/access/structure_check.h"
#include "platform/local/path_lookup.h"

namespace orva {

Exit runCheckFile(Session& session, const CheckFileOptions& options) {
  const std::vector<access::StructureFault> faults = access::checkFile(pathText(findPath(options.file)));
  for (const access::StructureFault& fault : faults) {
    session.out() << (fault.isHarmless ? "Harmless: " : "") << fault.toText() << '\n';
  }
  const bool isSound = access::isSound(faults);
  if (isSound) session.out() << options.file << " is sound.\n";
  if (faults.size() == access::kMostFaults) session.out() << "There may be more; the check ended here.\n";
  return isSound ? Exit::kDone : Exit::kRowsInError;
}

}  // namespace orva
