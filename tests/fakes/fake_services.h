#pragma once

#include "fakes/fake_desktop.h"
#include "fakes/fake_dialogs.h"
#include "fakes/fake_files.h"
#include "fakes/fake_workbooks.h"
#include "platform/database.h"
#include "platform/services.h"

namespace orva {

/// Every service as a fake, wired together; adapters are registered by the test.
struct FakeServices {
  DatabaseRegistry databases;
  FakeWorkbooks workbooks;
  FakeFiles files;
  FakeDialogs dialogs;
  FakeShell shell;
  FakeEventLoop eventLoop;
  Services services{databases, workbooks, files, dialogs, shell, eventLoop};
};

}  // namespace orva
