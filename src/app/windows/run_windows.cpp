#include "app/windows/run_windows.h"

#include <QApplication>
#include <QMetaObject>
#include <iostream>
#include <memory>

#include "app/windows/entry_window.h"
#include "app/windows/import_window.h"
#include "app/wiring.h"
#include "imports/asset/lease_dates.h"
#include "platform/qt/look.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_shell.h"
#include "startup/company_context.h"
#include "startup/scrEntry.h"
#include "wizard/frmImport.h"

namespace orva {
namespace {

constexpr int kNoDisplay = 2;

/// The screens of one run and their windows. The start screen makes room for the wizard and
/// comes back when that is closed.
class Windows {
 public:
  Windows(const std::string& programFolder, const std::string& commandLine)
      : services_(wiring_.with(dialogs_, shell_, eventLoop_)),
        entry_(services_, company_,
               {.showTransactionImport = [this] { showImport(); },
                .showMasterImport = {},
                .endProgram = [] { QCoreApplication::quit(); }}),
        entryWindow_(entry_) {
    company_.programFolder = programFolder;
    company_.commandLineCompany = commandLineCompany(commandLine);
    entry_.optMaster.setEnabled(false);
    entry_.optMaster.setToolTip("The master import is not part of this version.");
  }

  void start() {
    entryWindow_.show();
    later([this] {
      entry_.Load();
      entry_.Activate();
    });
  }

 private:
  /// Runs when the handler that is under way has returned, as a screen must not go while
  /// one of its handlers runs.
  template <class Action>
  static void later(Action action) {
    QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
  }

  void showImport() {
    import_ = std::make_unique<frmImport>(services_, company_, wiring_.importKinds(),
                                          ImportCallbacks{
                                              .onClose = [this] { later([this] { closeImport(); }); },
                                              .onCalcLeaseDate = [this] { calculateLeaseDates(dialogs_, company_); },
                                          });
    import_->Load();
    importWindow_ = std::make_unique<ImportWindow>(*import_);
    importWindow_->show();
    entryWindow_.hide();
  }

  void closeImport() {
    importWindow_.reset();
    import_.reset();
    entryWindow_.show();
  }

  Wiring wiring_;
  QtDialogs dialogs_;
  QtShell shell_;
  QtEventLoop eventLoop_;
  Services services_;
  CompanyContext company_;
  scrEntry entry_;
  EntryWindow entryWindow_;
  std::unique_ptr<frmImport> import_;
  std::unique_ptr<ImportWindow> importWindow_;
};

/// The toolkit would end the program without a word that a user understands.
bool hasDisplay() {
#ifdef Q_OS_LINUX
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    if (!qEnvironmentVariableIsEmpty(name)) return true;
  }
  return false;
#else
  return true;
#endif
}

}  // namespace

int runWindows(int argc, char** argv, const std::string& programFolder, const std::string& commandLine) {
  if (!hasDisplay()) {
    std::cerr << "[ORVA] There is no display for the windows. 'orva-import --help' lists the commands." << std::endl;
    return kNoDisplay;
  }
  QApplication application(argc, argv);
  QApplication::setApplicationName("ORVA Import");
  // The start screen is hidden while an import is open, so the last window is not the end.
  QApplication::setQuitOnLastWindowClosed(false);
  qt::applyLook(application);
  Windows windows(programFolder, commandLine);
  windows.start();
  return QApplication::exec();
}

}  // namespace orva
