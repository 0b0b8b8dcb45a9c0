#pragma once

namespace orva {

class DatabaseRegistry;
class Dialogs;
class EventLoop;
class Files;
class Shell;
class Workbooks;

/// The services that screens ask. Wired once at start; none is owned.
struct Services {
  DatabaseRegistry& databases;
  Workbooks& workbooks;
  Files& files;
  Dialogs& dialogs;
  Shell& shell;
  EventLoop& eventLoop;
};

}  // namespace orva
