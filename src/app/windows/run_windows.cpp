#include "app/windows/run_windows.h"

#include <QApplication>
#include <QMetaObject>
#include <iostream>
#include <memory>

#include "app/windows/bulk_update_window.h"
#include "app/windows/entry_window.h"
#include "app/windows/import_window.h"
#include "app/windows/master_window.h"
#include "app/wiring.h"
#include "imports/asset/lease_dates.h"
#include "platform/qt/look.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_shell.h"
#include "startup/company_context.h"
#include "startup/scrEntry.h"
#include "updates/frmUpdateLEOD.h"
#include "updates/frmUpdateRateAndMethod.h"

namespace orva {
namespace {

constexpr int kNoDisplay = 2;

/// The screens of one run and their windows. The start screen makes room for a wizard and
/// comes back when that is closed; a bulk update stands in front of the wizard.
class Windows {
 public:
  Windows(const std::string& programFolder, const std::string& commandLine)
      : services_(wiring_.with(dialogs_, shell_, eventLoop_)),
        entry_(services_, company_,
               {.showTransactionImport = [this] { showImport(); },
                .showMasterImport = [this] { showMasterImport(); },
                .endProgram = [] { QCoreApplication::quit(); }}),
        entryWindow_(entry_) {
    company_.programFolder = programFolder;
    company_.commandLineCompany = commandLineCompany(commandLine);
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
    auto screen = std::make_unique<frmImport>(
        services_, company_, wiring_.importKinds(),
        ImportCallbacks{
            .onClose = [this] { later([this] { closeWizard(); }); },
            .onUpdateLeod = [this] { showUpdate(std::make_unique<frmUpdateLEOD>(services_, company_)); },
            .onUpdateRateMethod = [this] { showUpdate(std::make_unique<frmUpdateRateAndMethod>(services_, company_)); },
            .onCalcLeaseDate = [this] { calculateLeaseDates(dialogs_, company_); }});
    screen->Load();
    wizardWindow_ = std::make_unique<ImportWindow>(*screen);
    showWizard(std::move(screen));
  }

  void showMasterImport() {
    auto screen = std::make_unique<frmMasterImport>(services_, company_, [this] { later([this] { closeWizard(); }); });
    screen->Load();
    wizardWindow_ = std::make_unique<MasterWindow>(*screen);
    showWizard(std::move(screen));
  }

  void showWizard(std::unique_ptr<ImportWizard> screen) {
    wizard_ = std::move(screen);
    wizardWindow_->show();
    entryWindow_.hide();
  }

  void closeWizard() {
    wizardWindow_.reset();
    wizard_.reset();
    entryWindow_.show();
  }

  void showUpdate(std::unique_ptr<BulkUpdateScreen> screen) {
    update_ = std::move(screen);
    update_->onClose([this] { later([this] { closeUpdate(); }); });
    updateWindow_ = std::make_unique<BulkUpdateWindow>(*update_, wizardWindow_.get());
    updateWindow_->show();
  }

  void closeUpdate() {
    updateWindow_.reset();
    update_.reset();
  }

  Wiring wiring_;
  QtDialogs dialogs_;
  QtShell shell_;
  QtEventLoop eventLoop_;
  Services services_;
  CompanyContext company_;
  scrEntry entry_;
  EntryWindow entryWindow_;
  std::unique_ptr<ImportWizard> wizard_;
  std::unique_ptr<WizardWindow> wizardWindow_;
  std::unique_ptr<BulkUpdateScreen> update_;
  std::unique_ptr<BulkUpdateWindow> updateWindow_;
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
