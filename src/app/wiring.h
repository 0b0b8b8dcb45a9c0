#pragma once

#include <string>

#include "platform/database.h"
#include "platform/local/local_clock.h"
#include "platform/local/local_files.h"
#include "platform/services.h"
#include "platform/xls/xls_workbooks.h"
#include "wizard/import_kinds.h"

namespace orva {

/// The services and import kinds of a run, whichever user interface it has. The services
/// that `with` returns must not outlive it.
class Wiring {
 public:
  Wiring();
  Wiring(const Wiring&) = delete;
  Wiring& operator=(const Wiring&) = delete;

  Services with(Dialogs& dialogs, Shell& shell, EventLoop& eventLoop);
  const ImportRegistry& importKinds() const { return importKinds_; }
  Clock& clock() { return clock_; }

 private:
  DatabaseRegistry databases_;
  XlsWorkbooks workbooks_;
  LocalFiles files_;
  LocalClock clock_;
  ImportRegistry importKinds_;
};

/// The folder of the running program, where its configuration files stand. `programName`
/// is what the program was called by.
std::string ownProgramFolder(const std::string& programName);

}  // namespace orva
